// An open menu. It is a modal view in the frame, and scrolls if the frame is too small for it.
#include "gui/controls/menu_view.h"
#include "gui/graphics/text.h"
#include "gui/views/frame.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {
namespace {

// Neutral and dark, to suit both light and dark skins.
constexpr CColor kBackColor(35, 34, 33);
constexpr CColor kEdgeColor(116, 112, 107);
constexpr CColor kTextColor(240, 236, 228);
constexpr CColor kDisabledColor(140, 136, 130);
constexpr CColor kRuleColor(74, 72, 69);
constexpr CColor kHighlightColor(236, 228, 212);
constexpr CColor kHighlightedTextColor(24, 22, 20);

constexpr CCoord kRowMargin = 8;    // added to the font's size
constexpr CCoord kRuleHeight = 9;   // of a separator, unless the menu scrolls
constexpr CCoord kMarkColumn = 18;  // left of the titles
constexpr CCoord kRightMargin = 12;
constexpr CCoord kBarWidth = 4;
constexpr CCoord kEdge = 1;
constexpr CCoord kDragStart = 4;  // pixels of movement that make a press a drag through the menu

char32_t folded(char32_t letter) {
    return letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A') : letter;
}

char32_t firstLetter(const UTF8String& title) {
    size_t position = 0;
    return folded(utf8::next(title.getString(), position));
}

}  // namespace

MenuView::MenuView(COptionMenu& menu, const CPoint& frameSize, const CRect& around,
                   const Closed& closed)
    : CView(CRect()),
      menu_(menu),
      closed_(closed),
      rowHeight_(std::max(std::ceil(menu.getFont()->getSize()), 1.0) + kRowMargin) {
    const int32_t rows = menu.getNbEntries();
    CCoord width = around.getWidth();
    for (int32_t i = 0; i < rows; ++i) {
        const auto& title = menu.getEntry(i)->getTitle().getString();
        const CCoord text = textWidth(*menu.getFont(), title);
        width = std::max(width, std::ceil(text) + kMarkColumn + kRightMargin);
    }
    const auto fitting = static_cast<int32_t>((frameSize.y - 2 * kEdge) / rowHeight_);
    visibleRows_ = std::clamp(rows, 1, std::max(fitting, 1));
    const int32_t current = menu.getCurrentIndex();
    scrollTo(current - visibleRows_ / 2);
    const CPoint size(std::min(width, frameSize.x), topOf(firstRow_ + visibleRows_) + 2 * kEdge);
    const bool overCurrent = (menu.getStyle() & COptionMenu::kPopupStyle) && current >= 0;
    const CCoord top = overCurrent ? around.top - topOf(current) - kEdge : around.bottom;
    const CPoint corner(std::clamp(around.left, 0.0, std::max(frameSize.x - size.x, 0.0)),
                        std::clamp(top, 0.0, std::max(frameSize.y - size.y, 0.0)));
    setViewSize(CRect(corner, size), false);
    if (isUsable(current)) highlighted_ = current;
    setWantsIdle(true);
}

bool MenuView::attached(CView* parent) {
    if (!CView::attached(parent)) return false;
    getFrame()->getCurrentMouseLocation(pointerAtOpening_);
    pointer_ = pointerAtOpening_;
    return true;
}

bool MenuView::removed(CView* parent) {
    const bool was = CView::removed(parent);
    if (const auto closed = std::exchange(closed_, nullptr)) closed(-1);
    return was;
}

void MenuView::finish(int32_t chosen) {
    const auto alive = shared(this);
    const auto closed = std::exchange(closed_, nullptr);
    if (!closed) return;
    getFrame()->endModalViewSession(session_);
    closed(chosen);
}

bool MenuView::isUsable(int32_t index) const {
    const CMenuItem* const item = menu_.getEntry(index);
    return item && item->isUsable();
}

CCoord MenuView::topOf(int32_t index) const {
    CCoord top = 0;
    for (int32_t i = firstRow_; i < index; ++i) {
        const bool isLow = !scrolls() && menu_.getEntry(i)->isSeparator();
        top += isLow ? std::min(kRuleHeight, rowHeight_) : rowHeight_;
    }
    return top;
}

int32_t MenuView::entryAt(const CPoint& where) const {
    CRect rows = getViewSize();
    rows.inset(kEdge, kEdge);
    if (!rows.pointInside(where)) return -1;
    int32_t index = firstRow_;
    while (topOf(index + 1) <= where.y - rows.top) ++index;
    return index;
}

void MenuView::scrollTo(int32_t firstRow) {
    const int32_t last = std::max(menu_.getNbEntries() - visibleRows_, 0);
    const int32_t wanted = std::clamp(firstRow, 0, last);
    if (wanted == firstRow_) return;
    firstRow_ = wanted;
    setDirty();
}

void MenuView::highlight(int32_t index) {
    const int32_t wanted = isUsable(index) ? index : -1;
    if (wanted == highlighted_) return;
    highlighted_ = wanted;
    setDirty();
}

// Highlights the next usable entry in that direction and scrolls to it.
void MenuView::step(int32_t from, int32_t by) {
    int32_t index = from + by;
    while (menu_.getEntry(index) && !isUsable(index)) index += by;
    if (!isUsable(index)) return;
    highlight(index);
    if (index < firstRow_) scrollTo(index);
    if (index >= firstRow_ + visibleRows_) scrollTo(index - visibleRows_ + 1);
}

void MenuView::jumpTo(char32_t letter) {
    const int32_t rows = menu_.getNbEntries();
    for (int32_t i = 1; i <= rows; ++i) {
        const int32_t index = (highlighted_ + i) % rows;
        if (!isUsable(index) || firstLetter(menu_.getEntry(index)->getTitle()) != folded(letter))
            continue;
        return step(index - 1, 1);
    }
}

CMouseEventResult MenuView::onMouseDown(CPoint& where, const CButtonState&) {
    if (!getViewSize().pointInside(where)) {
        finish(-1);
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }
    releaseChooses_ = true;
    pointer_ = where;
    highlight(entryAt(where));
    return kMouseEventHandled;
}

CMouseEventResult MenuView::onMouseMoved(CPoint& where, const CButtonState&) {
    const CPoint moved = where - pointerAtOpening_;
    if (std::abs(moved.x) > kDragStart || std::abs(moved.y) > kDragStart) releaseChooses_ = true;
    pointer_ = where;
    highlight(entryAt(where));
    return kMouseEventHandled;
}

CMouseEventResult MenuView::onMouseUp(CPoint& where, const CButtonState&) {
    const int32_t index = entryAt(where);
    if (releaseChooses_ && isUsable(index)) finish(index);
    return kMouseEventHandled;
}

void MenuView::onMouseWheelEvent(MouseWheelEvent& event) {
    event.consumed = true;
    if (!scrolls() || event.deltaY == 0) return;
    scrollTo(firstRow_ + (event.deltaY > 0 ? -1 : 1));
    highlight(entryAt(event.mousePosition));
}

void MenuView::onKeyboardEvent(KeyboardEvent& event) {
    event.consumed = true;
    if (event.type != EventType::KeyDown) return;
    const int32_t rows = menu_.getNbEntries();
    switch (event.virt) {
        case VirtualKey::Up:
            return step(highlighted_ < 0 ? rows : highlighted_, -1);
        case VirtualKey::Down:
            return step(highlighted_, 1);
        case VirtualKey::Home:
            return step(-1, 1);
        case VirtualKey::End:
            return step(rows, -1);
        case VirtualKey::Escape:
            return finish(-1);
        case VirtualKey::Return:
        case VirtualKey::Enter:
            if (isUsable(highlighted_)) finish(highlighted_);
            return;
        default:
            break;
    }
    if (event.character) jumpTo(event.character);
}

// Scrolls while the pointer rests in the outermost half row. This also works during a drag.
void MenuView::onIdle() {
    if (!scrolls() || !getViewSize().pointInside(pointer_)) return;
    const CCoord zone = rowHeight_ / 2;
    const bool upper = pointer_.y < getViewSize().top + zone;
    const bool lower = pointer_.y >= getViewSize().bottom - zone;
    if (!releaseChooses_ || upper == lower) return;
    scrollTo(firstRow_ + (upper ? -1 : 1));
    highlight(entryAt(pointer_));
}

void MenuView::draw(CDrawContext* context) {
    const CRect& view = getViewSize();
    context->setFillColor(kBackColor);
    context->setFrameColor(kEdgeColor);
    context->drawRect(view, kDrawFilledAndStroked);
    const CCoord first = view.top + kEdge;
    for (int32_t i = firstRow_; i < firstRow_ + visibleRows_; ++i) {
        drawRow(
            context, i,
            CRect(view.left + kEdge, first + topOf(i), view.right - kEdge, first + topOf(i + 1)));
    }
    if (scrolls()) drawScrollBar(context);
    setDirty(false);
}

void MenuView::drawRow(CDrawContext* context, int32_t index, const CRect& row) const {
    const CMenuItem* const item = menu_.getEntry(index);
    if (!item) return;
    if (item->isSeparator()) {
        const CCoord middle = std::floor(row.getCenter().y);
        context->setFillColor(kRuleColor);
        context->drawRect(CRect(row.left + 4, middle, row.right - 4, middle + 1), kDrawFilled);
        return;
    }
    CColor color = item->isUsable() ? kTextColor : kDisabledColor;
    if (index == highlighted_) {
        context->setFillColor(kHighlightColor);
        context->drawRect(row, kDrawFilled);
        color = kHighlightedTextColor;
    }
    const bool current = index == menu_.getCurrentIndex();
    if (item->isChecked() || (current && (menu_.getStyle() & COptionMenu::kCheckStyle))) {
        CRect dot(CPoint(), CPoint(6, 6));
        dot.moveTo(row.left + 6, std::floor(row.getCenter().y) - 3);
        context->setDrawMode(kAntiAliasing);
        context->setFillColor(color);
        context->drawEllipse(dot, kDrawFilled);
    }
    context->setFont(menu_.getFont());
    context->setFontColor(color);
    context->drawString(item->getTitle(),
                        CRect(row.left + kMarkColumn, row.top, row.right, row.bottom), kLeftText);
}

void MenuView::drawScrollBar(CDrawContext* context) const {
    CRect bar = getViewSize();
    bar.inset(kEdge, kEdge);
    bar.left = bar.right - kBarWidth;
    const CCoord perRow = bar.getHeight() / menu_.getNbEntries();
    const CCoord top = bar.top + firstRow_ * perRow;
    context->setFillColor(kRuleColor);
    context->drawRect(bar, kDrawFilled);
    context->setFillColor(kEdgeColor);
    context->drawRect(CRect(bar.left, top, bar.right, top + visibleRows_ * perRow), kDrawFilled);
}

}  // namespace VSTGUI
