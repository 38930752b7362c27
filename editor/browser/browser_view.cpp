// Pointer and keys of the sound browser.
#include "editor/browser/browser_view.h"

#include <algorithm>
#include <utility>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kHeartReach = 16;  // of the pointer, more than is drawn
const CPoint kNowhere(-1, -1);

constexpr struct {
    VirtualKey key;
    Walk step;
} kWalkKeys[] = {
    {VirtualKey::Up, Walk::kUp},
    {VirtualKey::Down, Walk::kDown},
    {VirtualKey::Left, Walk::kLeft},
    {VirtualKey::Right, Walk::kRight},
    {VirtualKey::Home, Walk::kFirst},
    {VirtualKey::End, Walk::kLast},
    {VirtualKey::PageUp, Walk::kPreviousFamily},
    {VirtualKey::PageDown, Walk::kNextFamily},
};

constexpr struct {
    char32_t letter;
    bool shift;
    SoundBrowser::Action action;
} kCommandKeys[] = {
    {'c', false, SoundBrowser::kCopy},      {'v', false, SoundBrowser::kPaste},
    {'d', false, SoundBrowser::kFavourite}, {'r', false, SoundBrowser::kRevert},
    {'k', false, SoundBrowser::kKeep},      {'s', false, SoundBrowser::kSaveSound},
    {'s', true, SoundBrowser::kSaveBank},
};

// Names are read more easily in a paler colour than that of a short display.
BrowserColors paler(BrowserColors colors) {
    const auto half = [](std::uint8_t part) { return static_cast<std::uint8_t>((part + 255) / 2); };
    if (colors.back.red + colors.back.green + colors.back.blue < 3 * 128) {
        colors.text =
            CColor(half(colors.text.red), half(colors.text.green), half(colors.text.blue));
    }
    return colors;
}

}  // namespace

CBrowserView::CBrowserView(const CPoint& frame, SoundBrowser& browser, const BrowserColors& colors,
                           std::function<void()> done, OnKey otherKey)
    : CView(CRect(CPoint(), frame)),
      browser_(browser),
      colors_(paler(colors)),
      done_(std::move(done)),
      otherKey_(std::move(otherKey)),
      pointer_(kNowhere) {
    setWantsFocus(true);
    setWantsIdle(true);
    showSelected();
}

void CBrowserView::onIdle() {
    if (browser_.follow()) changed();
}

void CBrowserView::changed() {
    scrolled_ = std::clamp(scrolled_, 0.0, layout().mostScrolled());
    hovered_ = placeAt(pointer_);  // what is there may have moved
    invalid();
}

// Scrolls as little as possible.
void CBrowserView::showSelected() {
    const BrowserLayout now = layout();
    const int selected = browser_.selected();
    const auto& columns = browser_.columns();
    for (std::size_t i = 0; i < columns.size() && selected >= 0; ++i) {
        const int inColumn = selected - columns[i].first;
        if (inColumn < 0 || inColumn >= columns[i].count) continue;
        const CRect row = now.row(static_cast<int>(i), inColumn, scrolled_);
        const CCoord above = inColumn == 0 ? BrowserLayout::kHeading : 0;
        scrolled_ += std::max(row.bottom - now.grid.bottom, 0.0);
        scrolled_ -= std::max(now.grid.top - (row.top - above), 0.0);
    }
    changed();
}

CBrowserView::Place CBrowserView::placeAt(const CPoint& where) const {
    const BrowserLayout now = layout();
    if (!now.panel.pointInside(where)) return {Place::kOutside, 0};
    if (now.close.pointInside(where)) return {Place::kClose, 0};
    if (now.search.pointInside(where)) return {Place::kSearch, 0};
    for (int i = 0; i < BrowserLayout::kTabs; ++i) {
        if (now.tabs[i].pointInside(where)) return {Place::kTab, i};
    }
    for (std::size_t i = 0; i < now.buttons.size(); ++i) {
        if (now.buttons[i].area.pointInside(where)) return {Place::kButton, static_cast<int>(i)};
    }
    if (!now.grid.pointInside(where)) return {};
    const auto& columns = browser_.columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        for (int row = 0; row < columns[i].count; ++row) {
            const CRect area = now.row(static_cast<int>(i), row, scrolled_);
            if (!area.pointInside(where)) continue;
            const bool onHeart =
                browser_.page() != SoundBrowser::kFiles && where.x >= area.right - kHeartReach;
            return {onHeart ? Place::kHeart : Place::kItem, columns[i].first + row};
        }
    }
    return {};
}

CMouseEventResult CBrowserView::onMouseDown(CPoint& where, const CButtonState& buttons) {
    const SharedPointer<CView> keep(this);  // a press may close the browser
    if (buttons.isLeftButton()) press(placeAt(where), buttons.isDoubleClick());
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

void CBrowserView::press(const Place& place, bool twice) {
    switch (place.kind) {
        case Place::kOutside:
        case Place::kClose:
            return finish();
        case Place::kTab:
            browser_.show(static_cast<SoundBrowser::Page>(place.index));
            scrolled_ = 0;
            showSelected();
            break;
        case Place::kButton: {
            browser_.run(layout().buttons[place.index].action);
            showSelected();
            break;
        }
        case Place::kHeart:
            browser_.toggleFavourite(place.index);
            break;
        case Place::kItem: {
            const bool opens = browser_.items()[place.index].opensAtOnce();
            if (!twice && !opens) {
                browser_.select(place.index);
            } else if (browser_.choose(place.index)) {
                return finish();
            }
            if (opens) scrolled_ = 0;
            break;
        }
        case Place::kSearch:
        case Place::kNothing:
            break;
    }
    changed();
}

void CBrowserView::finish() {
    if (isAttached()) done_();  // a message may have outlived the editor
}

CMouseEventResult CBrowserView::onMouseMoved(CPoint& where, const CButtonState&) {
    pointer_ = where;
    if (!(placeAt(where) == hovered_)) changed();
    return kMouseEventHandled;
}

CMouseEventResult CBrowserView::onMouseExited(CPoint&, const CButtonState&) {
    pointer_ = kNowhere;
    changed();
    return kMouseEventHandled;
}

void CBrowserView::onMouseWheelEvent(MouseWheelEvent& event) {
    constexpr CCoord kRowsOfNotch = 3;
    const BrowserLayout now = layout();
    scrolled_ -= event.deltaY * kRowsOfNotch * now.rowHeight;
    changed();
    event.consumed = true;
}

void CBrowserView::onKeyboardEvent(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown) return;
    const SharedPointer<CView> keep(this);  // a key may close the browser
    event.consumed = useKey(event);
    if (event.consumed) return changed();
    otherKey_(event);
    if (browser_.follow()) changed();
}

void CBrowserView::walk(Walk step) {
    browser_.walk(step);
    showSelected();
}

bool CBrowserView::useKey(const KeyboardEvent& event) {
    for (const auto& row : kWalkKeys) {
        if (event.virt != row.key) continue;
        walk(row.step);
        return true;
    }
    switch (event.virt) {
        case VirtualKey::Return:
        case VirtualKey::Enter:
            if (browser_.finishTyping()) finish();
            return true;
        case VirtualKey::Escape:
            if (!browser_.cancelTyping()) finish();
            return true;
        case VirtualKey::Back:
            browser_.eraseLetter();
            return true;
        case VirtualKey::Tab: {
            constexpr int kPages = BrowserLayout::kTabs;
            const int by = event.modifiers.has(ModifierKey::Shift) ? kPages - 1 : 1;
            browser_.show(static_cast<SoundBrowser::Page>((browser_.page() + by) % kPages));
            scrolled_ = 0;
            showSelected();
            return true;
        }
        case VirtualKey::Space:
            browser_.type(' ');
            return true;
        default:
            break;
    }
    if (event.modifiers.has(ModifierKey::Control)) {
        return useCommand(event.character | 0x20, event.modifiers.has(ModifierKey::Shift));
    }
    if (event.character == 0 || event.modifiers.has(ModifierKey::Alt)) return false;
    browser_.type(event.character);
    showSelected();
    return true;
}

bool CBrowserView::useCommand(char32_t letter, bool shift) {
    for (const auto& row : kCommandKeys) {
        if (row.letter != letter || row.shift != shift) continue;
        browser_.run(row.action);
        showSelected();
        return true;
    }
    return false;
}

}  // namespace editor
