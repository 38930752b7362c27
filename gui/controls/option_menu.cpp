// A pop-up menu: either a control that shows its current entry, or a menu opened at a point.
#include "gui/controls/option_menu.h"
#include "gui/controls/menu_view.h"
#include "gui/views/frame.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {

COptionMenu::COptionMenu(const CRect& size, IControlListener* listener, int32_t tag,
                         CBitmap* background, CBitmap* backgroundWhenOpen, int32_t style)
    : CParamDisplay(size, background, style), backgroundWhenOpen_(backgroundWhenOpen) {
    setListener(listener);
    setTag(tag);
    setWantsFocus(true);
}

COptionMenu::COptionMenu() : COptionMenu(CRect(), nullptr, -1) {}

CMenuItem* COptionMenu::addEntry(CMenuItem* item, int32_t index) {
    const bool inside = index >= 0 && index < getNbEntries();
    const auto at = inside ? entries_.begin() + index : entries_.end();
    return *entries_.insert(at, owned(item));
}

CMenuItem* COptionMenu::addEntry(const UTF8String& title, int32_t index, int32_t flags) {
    if (title == "-") return addSeparator(index);
    return addEntry(new CMenuItem(title, flags), index);
}

CMenuItem* COptionMenu::addSeparator(int32_t index) {
    return addEntry(new CMenuItem("", CMenuItem::kSeparator), index);
}

bool COptionMenu::removeAllEntry() {
    entries_.clear();
    current_ = -1;
    CControl::setValue(0);
    setDirty();
    return true;
}

CMenuItem* COptionMenu::getEntry(int32_t index) const {
    return index >= 0 && index < getNbEntries() ? entries_[index].get() : nullptr;
}

bool COptionMenu::setCurrent(int32_t index) {
    if (!getEntry(index)) return false;
    current_ = index;
    CControl::setValue(static_cast<float>(index));
    setDirty();
    return true;
}

bool COptionMenu::checkEntry(int32_t index, bool checked) {
    CMenuItem* const item = getEntry(index);
    if (item) item->setChecked(checked);
    return item != nullptr;
}

bool COptionMenu::checkEntryAlone(int32_t index) {
    for (const auto& entry : entries_) entry->setChecked(false);
    return checkEntry(index, true);
}

void COptionMenu::setValue(float value) {
    const float index = std::round(value);
    if (!(index >= 0 && index < static_cast<float>(entries_.size()))) return;
    current_ = static_cast<int32_t>(index);
    CControl::setValue(index);
}

float COptionMenu::getMax() const {
    return static_cast<float>(std::max(getNbEntries() - 1, 0));
}

bool COptionMenu::popup(const PopupCallback& callback) {
    if (!getFrame()) return false;
    CPoint corner = getViewSize().getTopLeft();
    getParentView()->localToFrame(corner);
    return show(*getFrame(), CRect(corner, getViewSize().getSize()), callback);
}

bool COptionMenu::popup(CFrame* frame, const CPoint& where, const PopupCallback& callback) {
    return frame && show(*frame, CRect(where, CPoint(getWidth(), 0)), callback);
}

bool COptionMenu::show(CFrame& frame, const CRect& around, const PopupCallback& callback) {
    if (entries_.empty() || openIn_) return false;
    const auto self = shared(this);
    const auto whenClosed = [self, callback](int32_t chosen) { self->closed(chosen, callback); };
    auto* const view = new MenuView(*this, frame.getViewSize().getSize(), around, whenClosed);
    const auto session = frame.beginModalViewSession(view);
    if (!session) {
        view->abandon();
        view->forget();
        return false;
    }
    openIn_ = &frame;
    session_ = *session;
    view->setSession(*session);
    lastResult_ = -1;
    setDirty();
    return true;
}

void COptionMenu::closed(int32_t chosen, const PopupCallback& callback) {
    openIn_ = nullptr;
    lastResult_ = chosen;
    setDirty();
    if (chosen >= 0) choose(chosen);
    if (callback) callback(this);
}

void COptionMenu::choose(int32_t index) {
    CMenuItem* const item = getEntry(index);
    if (item && (getStyle() & kMultipleCheckStyle)) item->setChecked(!item->isChecked());
    beginEdit();
    setValue(static_cast<float>(index));
    valueChanged();
    endEdit();
    setDirty();
}

void COptionMenu::draw(CDrawContext* context) {
    if (!(getStyle() & kNoDrawStyle)) {
        drawBack(context, openIn_ ? backgroundWhenOpen_.get() : nullptr);
        if (const CMenuItem* const item = getCurrent()) drawPlatformText(context, item->getTitle());
    }
    setDirty(false);
}

CMouseEventResult COptionMenu::onMouseDown(CPoint&, const CButtonState& buttons) {
    if (!buttons.isLeftButton() && !buttons.isRightButton()) return kMouseEventNotHandled;
    const auto self = shared(this);
    if (getFrame()) getFrame()->doAfterEventProcessing([self] { self->popup(); });
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

void COptionMenu::onKeyboardEvent(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown || !event.modifiers.empty()) return;
    if (event.virt == VirtualKey::Return || event.virt == VirtualKey::Enter) {
        event.consumed = popup();
        return;
    }
    const bool up = event.virt == VirtualKey::Up;
    if (!up && event.virt != VirtualKey::Down) return;
    event.consumed = true;
    int32_t index = current_ + (up ? -1 : 1);
    while (getEntry(index) && !getEntry(index)->isUsable()) index += up ? -1 : 1;
    if (getEntry(index)) choose(index);
}

bool COptionMenu::removed(CView* parent) {
    if (openIn_) openIn_->endModalViewSession(session_);
    return CParamDisplay::removed(parent);
}

}  // namespace VSTGUI
