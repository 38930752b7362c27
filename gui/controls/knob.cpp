// Knobs: CKnob draws a handle on a circle, CAnimKnob the frame of a strip that matches the value.
#include "gui/controls/knob.h"
#include "gui/views/frame.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr CCoord kLineInset = 3;
constexpr CCoord kHandleMargin = 2.5;

CCoord insetFor(const CBitmap* handle) {
    return handle ? handle->getWidth() / 2 + kHandleMargin : kLineInset;
}

// The last bits of sine and cosine differ between systems. Rounding keeps them from changing a
// pixel.
CCoord snapped(CCoord coordinate) {
    constexpr CCoord kSteps = 1 << 20;
    return std::floor(coordinate * kSteps + 0.5) / kSteps;
}

}  // namespace

CKnobBase::CKnobBase(const CRect& size, IControlListener* listener, int32_t tag,
                     CBitmap* background, CCoord inset)
    : DragControl(size, listener, tag, background),
      startAngle_(135 * kPi / 180),
      rangeAngle_(270 * kPi / 180),
      inset_(inset) {
    setWantsFocus(true);
}

void CKnobBase::setStartAngle(float angle) {
    startAngle_ = angle;
    setDirty();
}

void CKnobBase::setRangeAngle(float angle) {
    rangeAngle_ = angle;
    setDirty();
}

void CKnobBase::setKnobRange(float pixels) {
    if (pixels > 0) knobRange_ = pixels;
}

void CKnobBase::setZoomFactor(float factor) {
    if (factor > 0) zoomFactor_ = factor;
}

void CKnobBase::setInsetValue(CCoord inset) {
    inset_ = inset;
    setDirty();
}

CPoint CKnobBase::handlePoint() const {
    const double alpha = startAngle_ + getValueNormalized() * rangeAngle_;
    const CCoord halfWidth = getWidth() / 2;
    const CCoord halfHeight = getHeight() / 2;
    return {snapped(halfWidth + std::cos(alpha) * (halfWidth - inset_) + 0.5),
            snapped(halfHeight + std::sin(alpha) * (halfHeight - inset_) + 0.5)};
}

CMouseEventResult CKnobBase::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    const bool wanted = getFrame() && getFrame()->getKnobMode() == kLinearMode;
    linear_ = wanted != ((buttons & kAlt) != 0);
    beginDrag();
    anchor_ = where;
    anchorValue_ = linear_ ? getValue() : normalizedAt(where);
    anchorFine_ = (buttons & kShift) != 0;
    return kMouseEventHandled;
}

CMouseEventResult CKnobBase::onMouseMoved(CPoint& where, const CButtonState& buttons) {
    if (!isDragging()) return kMouseEventNotHandled;
    if (linear_ && getFrame()) getFrame()->hidePointer();
    linear_ ? dragLinear(where, (buttons & kShift) != 0) : dragCircular(where);
    reportChange();
    return kMouseEventHandled;
}

void CKnobBase::dragLinear(const CPoint& where, bool fine) {
    const double pixels = (anchor_.y - where.y) + (where.x - anchor_.x);
    const double range = anchorFine_ ? double{knobRange_} * zoomFactor_ : double{knobRange_};
    setValue(static_cast<float>(anchorValue_ + pixels * getRange() / range));
    if (fine == anchorFine_) return;
    anchor_ = where;
    anchorValue_ = getValue();
    anchorFine_ = fine;
}

void CKnobBase::dragCircular(const CPoint& where) {
    const float wanted = normalizedAt(where);
    const float step = wanted - anchorValue_;
    // A step of more than half the range has crossed the gap. Stay at the end where it started.
    if (std::abs(step) > 0.5f) return setValueNormalized(step < 0 ? 1.f : 0.f);
    anchorValue_ = wanted;
    setValueNormalized(wanted);
}

float CKnobBase::normalizedAt(const CPoint& where) const {
    const CPoint from = where - getViewSize().getCenter();
    const double span = std::abs(rangeAngle_);
    if (span == 0) return 0;
    double turned = std::atan2(from.y, from.x) - startAngle_;
    if (rangeAngle_ < 0) turned = -turned;
    turned -= std::floor(turned / (2 * kPi)) * 2 * kPi;
    if (turned <= span) return static_cast<float>(turned / span);
    const double middleOfGap = (span + 2 * kPi) / 2;
    return turned < middleOfGap ? 1.f : 0.f;
}

void CKnobBase::onMouseWheelEvent(MouseWheelEvent& event) {
    if (event.deltaY == 0) return;
    turnWheel(event.deltaY, event.modifiers.has(ModifierKey::Shift));
    event.consumed = true;
}

CKnob::CKnob(const CRect& size, IControlListener* listener, int32_t tag, CBitmap* background,
             CBitmap* handle, const CPoint& offset, int32_t)
    : CKnobBase(size, listener, tag, background, insetFor(handle)),
      handle_(handle),
      offset_(offset) {}

void CKnob::setHandleBitmap(CBitmap* handle) {
    handle_ = handle;
    setInsetValue(insetFor(handle));
}

void CKnob::setColorHandle(const CColor& color) {
    handleColor_ = color;
    setDirty();
}

void CKnob::setColorShadowHandle(const CColor& color) {
    shadowColor_ = color;
    setDirty();
}

void CKnob::setHandleLineWidth(CCoord width) {
    lineWidth_ = width;
    setDirty();
}

void CKnob::draw(CDrawContext* context) {
    const CRect& view = getViewSize();
    if (CBitmap* const background = getDrawBackground()) background->draw(context, view, offset_);

    const CPoint point = handlePoint() + view.getTopLeft();
    if (handle_) {
        const CPoint corner(std::floor(point.x - handle_->getWidth() / 2),
                            std::floor(point.y - handle_->getHeight() / 2));
        handle_->draw(context, CRect(corner, handle_->getSize()));
    } else {
        const CPoint middle = view.getCenter();
        const auto drawLine = [&](const CColor& color, const CPoint& shift) {
            context->setFrameColor(color);
            context->drawLine(point + shift, middle + shift);
        };
        context->setLineWidth(lineWidth_);
        context->setDrawMode(kAntiAliasing | kNonIntegralMode);
        drawLine(shadowColor_, CPoint(-1, 0));
        drawLine(handleColor_, CPoint(0, -1));
    }
    setDirty(false);
}

CAnimKnob::CAnimKnob(const CRect& size, IControlListener* listener, int32_t tag, int32_t frames,
                     CCoord frameHeight, CBitmap* strip, const CPoint&)
    : CKnobBase(size, listener, tag, nullptr, 0), frames_(frames), frameHeight_(frameHeight) {
    CAnimKnob::setBackground(strip);
}

void CAnimKnob::setBackground(CBitmap* strip) {
    CKnobBase::setBackground(strip);
    if (strip && frameHeight_ >= 1)
        frames_ = static_cast<int32_t>(strip->getHeight() / frameHeight_);
}

void CAnimKnob::setInverseBitmap(bool inverse) {
    inverse_ = inverse;
    setDirty();
}

void CAnimKnob::draw(CDrawContext* context) {
    if (CBitmap* const strip = getDrawBackground()) {
        const float value = getValueNormalized();
        const double normalized = inverse_ ? 1.0f - value : value;
        CCoord y = 0;
        if (frameHeight_ >= 1 && frames_ > 0) {
            y = std::floor(normalized * frameHeight_ * (frames_ - 1));
            y -= std::fmod(y, frameHeight_);
        }
        strip->draw(context, getViewSize(), CPoint(0, y));
    }
    setDirty(false);
}

}  // namespace VSTGUI
