// A slider: a handle picture that travels along a track.
#include "gui/controls/slider.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {
namespace {

constexpr uint32_t kRampTime = 16;     // milliseconds per step
constexpr float kRampStep = 0.03125f;  // normalised: the whole range in half a second

}  // namespace

CSliderMode CSlider::globalMode = CSliderMode::FreeClick;

CSlider::CSlider(const CRect& size, IControlListener* listener, int32_t tag, int32_t minPos,
                 int32_t maxPos, CBitmap* handle, CBitmap* background, const CPoint& offset,
                 int32_t style)
    : DragControl(size, listener, tag, background),
      handle_(handle),
      offset_(offset),
      style_(style),
      firstPosition_(minPos - along(size.getTopLeft())),
      travel_(static_cast<CCoord>(maxPos) - minPos) {
    setWantsFocus(true);
}

CSliderMode CSlider::getEffectiveSliderMode() const {
    if (mode_ != CSliderMode::UseGlobal) return mode_;
    return globalMode == CSliderMode::UseGlobal ? CSliderMode::FreeClick : globalMode;
}

void CSlider::setZoomFactor(float factor) {
    if (factor > 0) zoomFactor_ = factor;
}

void CSlider::setBackgroundOffset(const CPoint& offset) {
    offset_ = offset;
    setDirty();
}

void CSlider::setHandle(CBitmap* handle) {
    handle_ = handle;
    setDirty();
}

CRect CSlider::handleRect() const {
    const double normalized = getValueNormalized();
    const double position = isInverse() ? 1 - normalized : normalized;
    const CCoord last = firstPosition_ + std::max(travel_, 0.0);
    const CCoord way = std::clamp(std::floor(position * travel_), firstPosition_, last);
    const CPoint corner = getViewSize().getTopLeft();
    const CPoint size = handle_ ? handle_->getSize() : CPoint();
    return {isHorizontal() ? corner + CPoint(way, 0) : corner + CPoint(0, way), size};
}

void CSlider::draw(CDrawContext* context) {
    if (CBitmap* const background = getDrawBackground())
        background->draw(context, getViewSize(), offset_);
    if (handle_) handle_->draw(context, handleRect());
    setDirty(false);
}

// The normalised value that puts the handle at the pointer.
float CSlider::targetAt(const CPoint& where) const {
    if (travel_ <= 0) return 0;
    const CSliderMode mode = getEffectiveSliderMode();
    if (mode == CSliderMode::Touch || mode == CSliderMode::RelativeTouch) {
        const double moved = (along(where) - along(anchor_)) / travel_;
        const double wanted = anchorNormalized_ + (isInverse() ? -moved : moved);
        return static_cast<float>(std::clamp(wanted, 0.0, 1.0));
    }
    const CCoord half = handle_ ? along(handle_->getSize()) / 2 : 0;
    const CCoord start = along(getViewSize().getTopLeft()) + half - 1;
    const double position = std::clamp((along(where) - start) / travel_, 0.0, 1.0);
    return static_cast<float>(isInverse() ? 1 - position : position);
}

void CSlider::follow(const CPoint& where, bool fine) {
    if (fine != anchorFine_) {
        anchor_ = where;
        anchorNormalized_ = getValueNormalized();
        anchorFine_ = fine;
    }
    const float target = targetAt(where);
    if (getEffectiveSliderMode() == CSliderMode::Ramp && !fine) return rampTo(target);
    stopRamp();
    const float step = (target - anchorNormalized_) / zoomFactor_;
    setValueNormalized(fine ? anchorNormalized_ + step : target);
    reportChange();
}

void CSlider::rampTo(float target) {
    rampTarget_ = target;
    if (ramp_) return;
    const auto advance = [this](CVSTGUITimer*) {
        const float now = getValueNormalized();
        setValueNormalized(now + std::clamp(rampTarget_ - now, -kRampStep, kRampStep));
        reportChange();
    };
    ramp_ = makeOwned<CVSTGUITimer>(advance, kRampTime);
}

CMouseEventResult CSlider::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    if (getEffectiveSliderMode() == CSliderMode::Touch && !handleRect().pointInside(where))
        return kMouseEventNotHandled;
    beginDrag();
    anchor_ = where;
    anchorNormalized_ = getValueNormalized();
    anchorFine_ = (buttons & kShift) != 0;
    if (!anchorFine_) follow(where, false);
    return kMouseEventHandled;
}

CMouseEventResult CSlider::onMouseMoved(CPoint& where, const CButtonState& buttons) {
    if (!isDragging()) return kMouseEventNotHandled;
    follow(where, (buttons & kShift) != 0);
    return kMouseEventHandled;
}

CMouseEventResult CSlider::onMouseUp(CPoint& where, const CButtonState& buttons) {
    stopRamp();
    return DragControl::onMouseUp(where, buttons);
}

CMouseEventResult CSlider::onMouseCancel() {
    stopRamp();
    return DragControl::onMouseCancel();
}

bool CSlider::removed(CView* parent) {
    stopRamp();
    return DragControl::removed(parent);
}

void CSlider::onMouseWheelEvent(MouseWheelEvent& event) {
    double notches = isHorizontal() ? -event.deltaX : event.deltaY;
    const bool opposite = (style_ & (isHorizontal() ? kRight : kTop)) != 0;
    if (opposite) notches = -notches;
    if (notches == 0) return;
    turnWheel(notches, event.modifiers.has(ModifierKey::Shift));
    event.consumed = true;
}

}  // namespace VSTGUI
