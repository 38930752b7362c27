// Shows the peaks of the output on a scale in decibels, and a lamp that remembers clipping.
#include "editor/views/peak_meter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr double kSilent = -std::numeric_limits<double>::infinity();
constexpr double kTicksPerSecond = 30;          // of onIdle
constexpr double kFall = 26 / kTicksPerSecond;  // dB per tick
constexpr int kHoldTicks = static_cast<int>(1.5 * kTicksPerSecond);

double decibels(float peak) {
    return peak > 0 ? 20 * std::log10(static_cast<double>(peak)) : kSilent;
}

}  // namespace

float peakOf(const OutputPeaks& peaks, MeterSide side) {
    if (side == MeterSide::kLeft) return peaks.left;
    if (side == MeterSide::kRight) return peaks.right;
    return std::max(peaks.left, peaks.right);
}

CPeakMeter::CPeakMeter(const CRect& size, const EditorHost& host, CBitmap* lit, CBitmap* dark,
                       const Scale& scale, MeterSide side)
    : CView(size),
      host_(host),
      lit_(lit),
      dark_(dark),
      scale_(scale),
      side_(side),
      level_(scale.from),
      held_(scale.from) {
    setWantsIdle(true);
}

// Keeps the peak until the meter's own idle, which may come more rarely.
void CPeakMeter::feed(const OutputPeaks& peaks) {
    newest_ = std::max(newest_, peakOf(peaks, side_));
}

// A lamp is lit from the middle of its part of the scale.
int CPeakMeter::lampsAt(double level) const {
    const double share = (level - scale_.from) / (scale_.to - scale_.from);
    return static_cast<int>(std::clamp(share, 0.0, 1.0) * scale_.lamps + 0.5);
}

void CPeakMeter::onIdle() {
    ++turns_;
    if (host_.heldNotes() == 0 && !rest_.isDue()) return;
    const int turns = std::exchange(turns_, 0);
    const double fall = turns * kFall;
    const double peak = decibels(std::exchange(newest_, 0.0f));
    level_ = std::clamp(peak, std::max(level_ - fall, scale_.from), scale_.to);
    if (level_ >= held_) {
        held_ = level_;
        holdTicks_ = kHoldTicks;
    } else if (holdTicks_ > 0) {
        holdTicks_ -= turns;
    } else {
        held_ = std::max(held_ - fall, level_);
    }
    const int lamps = lampsAt(level_);
    const int held = lampsAt(held_);
    invalidateLamps(std::min(lamps, shown_), std::max(lamps, shown_));
    if (held != shownHeld_) {
        invalidateLamps(held - 1, held);
        invalidateLamps(shownHeld_ - 1, shownHeld_);
    }
    shown_ = lamps;
    shownHeld_ = held;
}

// The level falls from lamp to lamp, far below the peak that is held.
void CPeakMeter::invalidateLamps(int first, int last) {
    if (first < last && last > 0) invalidRect(lampArea(std::max(first, 0), last));
}

// The area of the lamps first .. last - 1, counted from the quiet end.
CRect CPeakMeter::lampArea(int first, int last) const {
    CRect area = getViewSize();
    const auto edge = [this](int lamp, double length) {
        return std::trunc(lamp * length / scale_.lamps);
    };
    if (scale_.horizontal) {
        const double length = area.getWidth();
        area.right = area.left + edge(last, length);
        area.left += edge(first, length);
    } else {
        const double length = area.getHeight();
        const CCoord bottom = area.top + edge(scale_.lamps - first, length);
        area.top += edge(scale_.lamps - last, length);
        area.bottom = bottom;
    }
    return area;
}

void CPeakMeter::draw(CDrawContext* context) {
    const auto drawLamps = [&](CBitmap* picture, int first, int last) {
        if (!picture || first >= last) return;
        const CRect area = lampArea(first, last);
        picture->draw(context, area, area.getTopLeft() - getViewSize().getTopLeft());
    };
    drawLamps(lit_, 0, shown_);
    drawLamps(dark_, shown_, scale_.lamps);
    if (shownHeld_ > shown_) drawLamps(lit_, shownHeld_ - 1, shownHeld_);
    setDirty(false);
}

CMouseEventResult CPeakMeter::onMouseDown(CPoint&, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    if (clicked_) clicked_();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CClipLamp::CClipLamp(const CRect& size, CBitmap* states, MeterSide side)
    : CView(size), states_(states), side_(side) {
    setWantsFocus(true);
}

void CClipLamp::onKeyboardEvent(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown || event.virt != VirtualKey::Return || !clicked_) return;
    event.consumed = true;
    clicked_();
}

void CClipLamp::feed(const OutputPeaks& peaks) {
    if (lit_ || peakOf(peaks, side_) < 1.0f) return;
    lit_ = true;
    invalid();
}

void CClipLamp::reset() {
    if (!std::exchange(lit_, false)) return;
    invalid();
}

void CClipLamp::draw(CDrawContext* context) {
    states_->draw(context, getViewSize(), CPoint(0, lit_ ? getHeight() : 0));
    setDirty(false);
}

CMouseEventResult CClipLamp::onMouseDown(CPoint&, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    if (clicked_) clicked_();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

}  // namespace editor
