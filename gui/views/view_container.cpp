// A view that holds other views, draws them in order and passes mouse events to them.
#include "gui/views/view_container.h"
#include "gui/views/frame.h"

#include <algorithm>

namespace VSTGUI {
namespace {

// Shifts an event into a container's coordinates while its children see it.
class ShiftedEvent {
  public:
    ShiftedEvent(MousePositionEvent& event, const CPoint& where)
        : event_(event), before_(event.mousePosition) {
        event.mousePosition = where;
    }
    ~ShiftedEvent() { event_.mousePosition = before_; }

  private:
    MousePositionEvent& event_;
    CPoint before_;
};

}  // namespace

bool CViewContainer::addView(CView* view, CView* before) {
    if (!view || isChild(view)) return false;
    const auto at = std::find(children_.begin(), children_.end(), before);
    children_.insert(at, owned(view));
    childMoved();
    if (!isAttached()) return true;
    view->attached(this);
    view->invalid();
    return true;
}

bool CViewContainer::removeView(CView* view, bool withForget) {
    const auto at = std::find(children_.begin(), children_.end(), view);
    if (!view || at == children_.end()) return false;
    if (!withForget) view->remember();
    const SharedPointer<CView> alive = *at;
    view->invalid();
    children_.erase(at);
    childMoved();
    if (pressed_ == view) pressed_ = nullptr;
    if (view->isAttached()) view->removed(this);
    return true;
}

bool CViewContainer::removeAll(bool withForget) {
    while (!children_.empty()) removeView(children_.back(), withForget);
    return true;
}

CView* CViewContainer::getView(uint32_t index) const {
    return index < children_.size() ? children_[index].get() : nullptr;
}

void CViewContainer::forEachChild(const std::function<void(CView*)>& visit) const {
    const auto atStart = children_;  // the visitor may change the list
    for (const auto& child : atStart) visit(child);
}

bool CViewContainer::isChild(CView* view, bool deep) const {
    for (const auto& child : children_) {
        if (child == view) return true;
        const auto* const container = dynamic_cast<CViewContainer*>(child.get());
        if (deep && container && container->isChild(view, true)) return true;
    }
    return false;
}

CView* CViewContainer::getViewAt(const CPoint& where, const GetViewOptions& options) const {
    const CPoint inside = toChildren(where);
    for (auto it = children_.rbegin(); it != children_.rend(); ++it) {
        CView* const child = *it;
        if (!child->isVisible() && !options.getIncludeInvisible()) continue;
        if (!child->getMouseEnabled() && options.getMouseEnabled()) continue;
        if (!child->getViewSize().pointInside(inside)) continue;
        const auto* const container = dynamic_cast<CViewContainer*>(child);
        if (!container) return child;
        CView* const found = options.getDeep() ? container->getViewAt(inside, options) : nullptr;
        if (found) return found;
        if (options.getIncludeViewContainer()) return child;
    }
    return nullptr;
}

void CViewContainer::setBackgroundColor(const CColor& color) {
    backgroundColor_ = color;
    setDirty();
}

void CViewContainer::draw(CDrawContext* context) {
    drawRect(context, getViewSize());
}

void CViewContainer::drawBackground(CDrawContext& context, CBitmap& picture) {
    picture.draw(&context, getViewSize());
}

void CViewContainer::notePlaces() {
    places_.clear();
    for (const auto& child : children_) places_.push_back(allPixelsTouched(child->getViewSize()));
}

void CViewContainer::drawRect(CDrawContext* context, const CRect& updateRect) {
    const CRect& size = getViewSize();
    if (CBitmap* const picture = getDrawBackground()) {
        drawBackground(*context, *picture);
    } else if (!getTransparency()) {
        context->setFillColor(backgroundColor_);
        context->drawRect(size, kDrawFilled);
    }
    CRect update = updateRect;
    update.offsetInverse(size.getTopLeft());
    if (!isAttached()) childMoved();  // children do not tell then
    const auto drawChildren = [&] {
        // Of many children, a small area meets few. Drawing may change the list.
        const IntRect touched = allPixelsTouched(update);
        for (size_t i = 0; i < children_.size(); ++i) {
            if (places_.size() != children_.size()) notePlaces();
            const IntRect& place = places_[i];
            if (place.left >= touched.right || place.right <= touched.left ||
                place.top >= touched.bottom || place.bottom <= touched.top)
                continue;
            if (!children_[i]->isVisible()) continue;
            CRect meeting = children_[i]->getViewSize();
            if (meeting.bound(update).isEmpty()) continue;
            const auto child = children_[i];
            const auto draw = [&] { child->drawRect(context, meeting); };
            context->drawInside(child->getViewSize(), child->getAlphaValue(), std::cref(draw));
        }
    };
    context->drawFrom(size.getTopLeft(), std::cref(drawChildren));
    setDirty(false);
}

void CViewContainer::invalidRect(const CRect& rect) {
    CRect area = rect;
    area.offset(getViewSize().getTopLeft()).bound(getViewSize());
    if (!area.isEmpty()) CView::invalidRect(area);
}

void CViewContainer::invalidateIfDirty() {
    if (!isVisible()) return;
    if (isDirty()) invalid();
    for (const auto& child : children_) child->invalidateIfDirty();
}

bool CViewContainer::attached(CView* parent) {
    if (!CView::attached(parent)) return false;
    childMoved();
    forEachChild([this](CView* child) { child->attached(this); });
    return true;
}

bool CViewContainer::removed(CView* parent) {
    forEachChild([this](CView* child) { child->removed(this); });
    return CView::removed(parent);
}

CPoint& CViewContainer::localToFrame(CPoint& point) const {
    return CView::localToFrame(point.offset(getViewSize().getTopLeft()));
}

CPoint& CViewContainer::frameToLocal(CPoint& point) const {
    return CView::frameToLocal(point).offsetInverse(getViewSize().getTopLeft());
}

void CViewContainer::collectMouseViewsAt(const CPoint& where, std::vector<CView*>& found) {
    const size_t before = found.size();
    CView::collectMouseViewsAt(where, found);
    if (found.size() == before) return;
    const CPoint inside = toChildren(where);
    for (auto it = children_.rbegin(); it != children_.rend(); ++it) {
        const size_t soFar = found.size();
        (*it)->collectMouseViewsAt(inside, found);
        if (found.size() > soFar) return;
    }
}

bool CViewContainer::takesMouse(CView* child, const MousePositionEvent& event) const {
    return child->isVisible() && child->getMouseEnabled() &&
           child->hitTest(event.mousePosition, event);
}

// Offers the event from the topmost child down, until one handles or blocks it.
bool CViewContainer::offerToChildren(MousePositionEvent& event, CView** taker) {
    const ShiftedEvent shifted(event, toChildren(event.mousePosition));
    const auto atStart = children_;  // a child may change the list
    for (auto it = atStart.rbegin(); it != atStart.rend(); ++it) {
        CView* const child = *it;
        if (!isChild(child) || !takesMouse(child, event)) continue;
        child->dispatchEvent(event);
        if (event.consumed) {
            if (taker) *taker = isChild(child) ? child : nullptr;
            return true;
        }
        if (!child->getTransparency()) return false;
    }
    return false;
}

void CViewContainer::onMouseDownEvent(MouseDownEvent& event) {
    CView* taker = nullptr;
    if (!offerToChildren(event, &taker) || !taker) return;
    if (taker->wantsFocus() && taker->getFrame()) taker->getFrame()->setFocusView(taker);
    if (!event.ignoreFollowUpMoveAndUpEvents() && isChild(taker)) pressed_ = taker;
}

void CViewContainer::onMouseMoveEvent(MouseMoveEvent& event) {
    if (!pressed_) {
        offerToChildren(event);
        return;
    }
    const ShiftedEvent shifted(event, toChildren(event.mousePosition));
    SharedPointer<CView>(pressed_)->dispatchEvent(event);
    if (event.ignoreFollowUpMoveAndUpEvents()) pressed_ = nullptr;
}

void CViewContainer::onMouseUpEvent(MouseUpEvent& event) {
    if (!pressed_) return;
    const ShiftedEvent shifted(event, toChildren(event.mousePosition));
    const auto pressed = std::move(pressed_);
    pressed->dispatchEvent(event);
}

void CViewContainer::onMouseCancelEvent(MouseCancelEvent& event) {
    if (!pressed_) return;
    const auto pressed = std::move(pressed_);
    pressed->dispatchEvent(event);
}

void CViewContainer::onMouseWheelEvent(MouseWheelEvent& event) {
    offerToChildren(event);
}

}  // namespace VSTGUI
