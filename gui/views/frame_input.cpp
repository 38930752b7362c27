// The input of one frame. It sends presses, moves, the wheel and keys to the right views.
#include "gui/views/frame_input.h"
#include "gui/base/clock.h"
#include "gui/views/frame.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {
namespace {

constexpr uint64_t kDoubleClickTime = 500;  // milliseconds
constexpr CCoord kDoubleClickReach = 4;     // pixels

template <typename Item>
bool contains(const std::vector<Item>& items, const Item& item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

template <typename Item>
void eraseFrom(std::vector<Item>& items, const Item& item) {
    items.erase(std::remove(items.begin(), items.end(), item), items.end());
}

bool isNear(const CPoint& a, const CPoint& b) {
    return std::abs(a.x - b.x) <= kDoubleClickReach && std::abs(a.y - b.y) <= kDoubleClickReach;
}

bool isWithin(const CView* view, const CView* ancestor) {
    for (; view; view = view->getParentView())
        if (view == ancestor) return true;
    return false;
}

}  // namespace

// Handles one event from outside. It keeps the frame alive until the event ends, and then runs the
// functions that were deferred.
template <typename Work>
void FrameInput::duringEvent(Work work) {
    const auto alive = shared(&frame_);
    frame_.serveTimersOfThisFrame();
    ++depth_;
    work();
    if (--depth_ > 0) return;
    while (!afterwards_.empty() && frame_.isOpen()) {
        const auto function = std::move(afterwards_.front());
        afterwards_.erase(afterwards_.begin());
        function();
    }
    if (!frame_.isOpen()) return;
    if (!dragged_) frame_.showPointer();
    updateHover();
}

IReference& FrameInput::owner() {
    return frame_;
}

void FrameInput::setFocusView(CView* view) {
    if (view == focus_ || (view && view->getFrame() != &frame_)) return;
    CView* const before = std::exchange(focus_, view);
    if (before) shared(before)->looseFocus();
    if (view && focus_ == view) view->takeFocus();
}

std::optional<ModalViewSessionID> FrameInput::beginModal(CView* view) {
    if (!frame_.isOpen() || !view || view->isAttached()) return std::nullopt;
    cancelDrag();
    endTextEntry();
    if (!frame_.addView(view)) return std::nullopt;
    modal_.push_back({++lastModalId_, view});
    return lastModalId_;
}

bool FrameInput::endModal(ModalViewSessionID id) {
    const auto isThat = [id](const ModalSession& session) { return session.id == id; };
    const auto at = std::find_if(modal_.begin(), modal_.end(), isThat);
    if (at == modal_.end()) return false;
    return frame_.removeView(at->view);  // calls forgetView
}

void FrameInput::removeObserver(IMouseObserver* observer) {
    eraseFrom(observers_, observer);
}

bool FrameInput::afterEvent(std::function<void()> function) {
    if (depth_ == 0) return false;
    afterwards_.push_back(std::move(function));
    return true;
}

void FrameInput::deliver(Event& event) {
    if (event.type == EventType::KeyDown || event.type == EventType::KeyUp) {
        keyChanged(castKeyboardEvent(event));
    } else {
        duringEvent([&] { mouseTarget()->dispatchEvent(event); });
    }
}

void FrameInput::forgetView(CView* view) {
    if (focus_ == view) setFocusView(nullptr);
    if (dragged_ == view) dragged_ = nullptr;
    if (contains(hovered_, view)) {
        eraseFrom(hovered_, view);
        enterOrLeave(view, false);
    }
    const auto isThat = [view](const ModalSession& session) { return session.view == view; };
    modal_.erase(std::remove_if(modal_.begin(), modal_.end(), isThat), modal_.end());
}

void FrameInput::finish() {
    setFocusView(nullptr);
    cancelDrag();
    while (!modal_.empty()) endModal(modal_.back().id);
    afterwards_.clear();
}

void FrameInput::noticePointer(CPoint where, CButtonState state) {
    position_ = CPoint(where.x / frame_.getZoom(), where.y / frame_.getZoom());
    buttons_ = state;
    pointerInside_ = true;
}

void FrameInput::scalePosition(double factor) {
    duringEvent([&] { position_ = CPoint(position_.x * factor, position_.y * factor); });
}

CView* FrameInput::mouseTarget() const {
    CView* const modal = modalView();
    return modal ? modal : &frame_;
}

void FrameInput::tellObservers(MouseEvent& event) {
    const auto atStart = observers_;
    for (IMouseObserver* const observer : atStart)
        if (contains(observers_, observer)) observer->onMouseEvent(event, &frame_);
}

void FrameInput::enterOrLeave(CView* view, bool enter) {
    const auto alive = shared(view);
    const auto tell = [&](MouseEvent&& event) {
        event.mousePosition = position_;
        if (CView* const parent = view->getParentView()) parent->frameToLocal(event.mousePosition);
        event.buttonState = buttonsOf(buttons_);
        event.modifiers = modifiersOf(buttons_);
        view->dispatchEvent(event);
    };
    enter ? tell(MouseEnterEvent()) : tell(MouseExitEvent());
    const auto atStart = observers_;
    for (IMouseObserver* const observer : atStart) {
        if (!contains(observers_, observer)) continue;
        enter ? observer->onMouseEntered(view, &frame_) : observer->onMouseExited(view, &frame_);
    }
}

// Does nothing during a drag: the dragged control stays the current one.
void FrameInput::updateHover() {
    if (dragged_) return;
    std::vector<CView*> now;
    if (pointerInside_) mouseTarget()->collectMouseViewsAt(position_, now);
    eraseFrom<CView*>(now, &frame_);

    std::vector<SharedPointer<CView>> left;
    for (auto it = hovered_.rbegin(); it != hovered_.rend(); ++it)
        if (!contains(now, *it)) left.emplace_back(*it);
    std::vector<SharedPointer<CView>> entered;
    for (CView* const view : now)
        if (!contains(hovered_, view)) entered.emplace_back(view);

    hovered_ = now;
    for (const auto& view : left) enterOrLeave(view, false);
    for (const auto& view : entered)
        if (contains(hovered_, view.get())) enterOrLeave(view, true);
}

void FrameInput::cancelDrag() {
    if (!dragged_) return;
    const auto dragged = std::move(dragged_);
    MouseCancelEvent event;
    dragged->dispatchEvent(event);
}

void FrameInput::endTextEntry(const CView* keptFor) {
    if (focus_ && focus_ != keptFor && focus_->losesFocusOnOutsidePress()) setFocusView(nullptr);
}

uint32_t FrameInput::countClick(CPoint where, int32_t button) {
    const uint64_t now = millisecondsNow();
    const bool second = lastClick_.count == 1 && lastClick_.button == button &&
                        now - lastClick_.time <= kDoubleClickTime &&
                        isNear(where, lastClick_.where);
    lastClick_ = {button, where, now, second ? 2u : 1u};
    return lastClick_.count;
}

void FrameInput::pointerPressed(CPoint where, CButtonState state) {
    duringEvent([&] {
        const int32_t held = buttons_.getButtonState();
        noticePointer(where, state | held);
        if (dragged_) return;  // another button during a drag
        updateHover();
        frame_.takeKeyboard();
        endTextEntry(hovered_.empty() ? nullptr : hovered_.back());

        MouseDownEvent event;
        event.mousePosition = position_;
        event.buttonState = buttonsOf(state);
        event.modifiers = modifiersOf(state);
        event.clickCount = countClick(position_, state.getButtonState());
        tellObservers(event);
        if (event.consumed) return;
        const auto target = shared(mouseTarget());
        target->dispatchEvent(event);
        if (!event.consumed || event.ignoreFollowUpMoveAndUpEvents() || !target->isAttached())
            return;
        dragged_ = target;
        dragButton_ = state.getButtonState();
    });
}

void FrameInput::pointerReleased(CPoint where, CButtonState state) {
    duringEvent([&] {
        const int32_t held = buttons_.getButtonState() & ~state.getButtonState();
        noticePointer(where, state.getModifierState() | held);
        if (dragged_ && state.getButtonState() != dragButton_) return;

        MouseUpEvent event;
        event.mousePosition = position_;
        event.buttonState = buttonsOf(state);
        event.modifiers = modifiersOf(state);
        tellObservers(event);
        const SharedPointer<CView> target = dragged_ ? std::move(dragged_) : shared(modalView());
        if (target && !event.consumed) target->dispatchEvent(event);
    });
}

void FrameInput::pointerMoved(CPoint where, CButtonState state) {
    duringEvent([&] {
        noticePointer(where, state);
        if (dragged_ && !(state & dragButton_)) cancelDrag();  // the release was lost
        if (dragged_ && !isNear(position_, lastClick_.where)) lastClick_ = {};  // a drag, no click
        updateHover();

        MouseMoveEvent event;
        event.mousePosition = position_;
        event.buttonState = buttonsOf(state);
        event.modifiers = modifiersOf(state);
        tellObservers(event);
        if (event.consumed) return;
        const auto target = shared(dragged_ ? dragged_.get() : mouseTarget());
        target->dispatchEvent(event);
        if (event.ignoreFollowUpMoveAndUpEvents()) dragged_ = nullptr;
    });
}

void FrameInput::pointerLeft() {
    duringEvent([this] { pointerInside_ = false; });
}

void FrameInput::pointerLost() {
    duringEvent([this] { cancelDrag(); });
}

void FrameInput::wheelTurned(CPoint where, double right, double up, CButtonState modifiers) {
    duringEvent([&] {
        noticePointer(where, modifiers | buttons_.getButtonState());
        MouseWheelEvent event;
        event.mousePosition = position_;
        event.modifiers = modifiersOf(modifiers);
        event.deltaX = right;
        event.deltaY = up;
        mouseTarget()->dispatchEvent(event);
    });
}

bool FrameInput::keyChanged(KeyboardEvent& event) {
    duringEvent([&] {
        CView* const modal = modalView();
        SharedPointer<CView> view(modal && !isWithin(focus_, modal) ? modal : focus_);
        while (view && !event.consumed) {
            const SharedPointer<CView> parent(view == modal ? nullptr : view->getParentView());
            view->dispatchEvent(event);
            view = parent;
        }
    });
    return event.consumed;
}

void FrameInput::keyboardLost() {
    duringEvent([this] { endTextEntry(); });
}

void FrameInput::drawPending() {
    frame_.redraw();
}

void FrameInput::exposed(const IntRect& area) {
    frame_.showAgain(area);
}

void FrameInput::ticked() {
    frame_.idle();
}

}  // namespace VSTGUI
