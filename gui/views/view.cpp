// A view: a rectangle that draws itself and handles the mouse, the wheel and keys.
#include "gui/views/view.h"
#include "gui/views/frame.h"

#include <algorithm>

namespace VSTGUI {
namespace {

void take(CMouseEventResult result, MouseDownUpMoveEvent& event) {
    switch (result) {
        case kMouseEventNotImplemented:
        case kMouseEventNotHandled:
            return;
        case kMouseEventHandled:
            event.consumed = true;
            return;
        case kMouseDownEventHandledButDontNeedMovedOrUpEvents:
        case kMouseMoveEventHandledButDontNeedMoreEvents:
            event.consumed = true;
            event.ignoreFollowUpMoveAndUpEvents(true);
    }
}

}  // namespace

void CView::draw(CDrawContext* context) {
    if (background_) background_->draw(context, size_);
    setDirty(false);
}

void CView::drawRect(CDrawContext* context, const CRect&) {
    draw(context);
}

void CView::setDirty(bool dirty) {
    dirty_ = dirty;
    if (dirty) mayBeDirty();
}

void CView::mayBeDirty() {
    if (frame_) frame_->expectDirtyViews();
}

void CView::setViewSize(const CRect& size, bool invalidate) {
    if (size_ == size) return;
    if (invalidate) invalid();
    size_ = size;
    if (parent_) parent_->childMoved();
    if (invalidate) setDirty();
}

bool CView::hitTest(const CPoint& where, const Event&) {
    return getMouseableArea().pointInside(where);
}

void CView::setTransparency(bool transparent) {
    if (transparent_ == transparent) return;
    transparent_ = transparent;
    setDirty();
}

void CView::setBackground(CBitmap* background) {
    background_ = background;
    setDirty();
}

void CView::setVisible(bool visible) {
    if (visible_ == visible) return;
    if (!visible) invalid();
    visible_ = visible;
    if (visible) setDirty();
}

void CView::setAlphaValue(float alpha) {
    if (alpha_ == alpha) return;
    invalid();
    alpha_ = alpha;
    setDirty();
}

void CView::invalid() {
    setDirty(false);
    if (parent_ && isVisible()) parent_->invalidRect(size_);
}

void CView::invalidRect(const CRect& rect) {
    if (parent_ && isVisible()) parent_->invalidRect(rect);
}

void CView::invalidateIfDirty() {
    if (isVisible() && isDirty()) invalid();
}

bool CView::attached(CView* parent) {
    if (isAttached()) return false;
    parent_ = parent;
    frame_ = parent->getFrame();
    if (frame_ && wantsIdle_) frame_->addIdleView(this);
    mayBeDirty();
    return true;
}

bool CView::removed(CView*) {
    if (!isAttached()) return false;
    frame_->forgetView(this);
    parent_ = nullptr;
    frame_ = nullptr;
    return true;
}

void CView::setWantsIdle(bool wanted) {
    if (wantsIdle_ == wanted) return;
    wantsIdle_ = wanted;
    if (!frame_) return;
    wanted ? frame_->addIdleView(this) : frame_->removeIdleView(this);
}

CPoint& CView::localToFrame(CPoint& point) const {
    return parent_ ? parent_->localToFrame(point) : point;
}

CPoint& CView::frameToLocal(CPoint& point) const {
    return parent_ ? parent_->frameToLocal(point) : point;
}

void CView::registerViewEventListener(IViewEventListener* listener) {
    listeners_.push_back(listener);
}

void CView::unregisterViewEventListener(IViewEventListener* listener) {
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), listener), listeners_.end());
}

void CView::collectMouseViewsAt(const CPoint& where, std::vector<CView*>& found) {
    if (isVisible() && mouseEnabled_ && hitTest(where)) found.push_back(this);
}

void CView::dispatchEvent(Event& event) {
    const auto alive = shared(this);
    if (event.type == EventType::MouseDown) {
        auto& press = castMouseDownEvent(event);
        if (!press.modifiers.empty() && swallowsModifiedPress(buttonStateFromMouseEvent(press))) {
            press.consumed = true;
            press.ignoreFollowUpMoveAndUpEvents(true);
            return;
        }
    }
    const auto atStart = listeners_;  // a listener may register and unregister
    for (auto it = atStart.rbegin(); it != atStart.rend(); ++it) {
        if (std::find(listeners_.begin(), listeners_.end(), *it) == listeners_.end()) continue;
        (*it)->viewOnEvent(this, event);
        if (event.consumed) return;
    }
    switch (event.type) {
        case EventType::MouseDown:
            return onMouseDownEvent(castMouseDownEvent(event));
        case EventType::MouseMove:
            return onMouseMoveEvent(castMouseMoveEvent(event));
        case EventType::MouseUp:
            return onMouseUpEvent(castMouseUpEvent(event));
        case EventType::MouseCancel:
            return onMouseCancelEvent(static_cast<MouseCancelEvent&>(event));
        case EventType::MouseEnter:
            return onMouseEnterEvent(static_cast<MouseEnterEvent&>(event));
        case EventType::MouseExit:
            return onMouseExitEvent(static_cast<MouseExitEvent&>(event));
        case EventType::MouseWheel:
            return onMouseWheelEvent(castMouseWheelEvent(event));
        case EventType::KeyDown:
        case EventType::KeyUp:
            return onKeyboardEvent(castKeyboardEvent(event));
        case EventType::Unknown:
            return;
    }
}

CMouseEventResult CView::onMouseDown(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseMoved(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseUp(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseCancel() {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseEntered(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

CMouseEventResult CView::onMouseExited(CPoint&, const CButtonState&) {
    return kMouseEventNotImplemented;
}

void CView::onMouseDownEvent(MouseDownEvent& event) {
    CPoint where = event.mousePosition;
    take(onMouseDown(where, buttonStateFromMouseEvent(event)), event);
}

void CView::onMouseMoveEvent(MouseMoveEvent& event) {
    CPoint where = event.mousePosition;
    take(onMouseMoved(where, buttonStateFromMouseEvent(event)), event);
}

void CView::onMouseUpEvent(MouseUpEvent& event) {
    CPoint where = event.mousePosition;
    take(onMouseUp(where, buttonStateFromMouseEvent(event)), event);
}

void CView::onMouseCancelEvent(MouseCancelEvent& event) {
    if (onMouseCancel() == kMouseEventHandled) event.consumed = true;
}

void CView::onMouseEnterEvent(MouseEnterEvent& event) {
    CPoint where = event.mousePosition;
    onMouseEntered(where, buttonStateFromMouseEvent(event));
}

void CView::onMouseExitEvent(MouseExitEvent& event) {
    CPoint where = event.mousePosition;
    onMouseExited(where, buttonStateFromMouseEvent(event));
}

}  // namespace VSTGUI
