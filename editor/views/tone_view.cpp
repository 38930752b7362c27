// Draws what high-pass and brightness do to each frequency.
#include "editor/views/tone_view.h"

#include <algorithm>
#include <cmath>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr double kTop = 18;      // dB
constexpr double kBottom = -42;  // dB
constexpr CCoord kLineWidth = 2;
constexpr CCoord kLabelWidth = 24;
constexpr CCoord kLabelHeight = 10;
constexpr uint8_t kLabelAlpha = 200;  // quieter than the curve
constexpr uint8_t kFill = 36;         // alpha below the line

}  // namespace

CToneView::CToneView(const CRect& size, EditorHost& host)
    : CView(size), host_(host), shown_(host.toneCurve()) {
    setWantsIdle(true);
}

void CToneView::onIdle() {
    if (!looks_.isDue()) return;
    const state::ToneCurve& now = host_.toneCurve();
    if (now.decibels == shown_.decibels) return;
    shown_ = now;
    looks_.becomeOften();
    invalid();
}

CCoord CToneView::height(double decibels) const {
    const double share = (kTop - std::clamp(decibels, kBottom, kTop)) / (kTop - kBottom);
    return getViewSize().top + share * (getHeight() - kLineWidth) + kLineWidth / 2;
}

CCoord CToneView::place(double hertz) const {
    using state::ToneCurve;
    const double share = std::log(hertz / ToneCurve::kLowestHertz) /
                         std::log(ToneCurve::kHighestHertz / ToneCurve::kLowestHertz);
    return getViewSize().left + share * getWidth();
}

void CToneView::drawGrid(CDrawContext& context) const {
    const CRect& view = getViewSize();
    context.setDrawMode(kAliasing);
    context.setFillColor(baseColor_);
    const CCoord zero = std::floor(height(0));
    context.drawRect(CRect(view.left, zero, view.right, zero + 1), kDrawFilled);
    context.setFont(kNormalFontVerySmall);
    CColor label = lineColor_;
    label.alpha = kLabelAlpha;
    context.setFontColor(label);
    constexpr std::pair<double, const char*> kDecades[] = {
        {100, "100"}, {1000, "1k"}, {10000, "10k"}};
    for (const auto& [hertz, name] : kDecades) {
        const CCoord x = std::floor(place(hertz));
        context.drawRect(CRect(x, view.top, x + 1, view.bottom), kDrawFilled);
        context.drawString(
            name, CRect(x + 3, view.bottom - kLabelHeight, x + 3 + kLabelWidth, view.bottom),
            kLeftText);
    }
}

void CToneView::draw(CDrawContext* context) {
    drawGrid(*context);
    const CRect& view = getViewSize();
    CColor below = lineColor_;
    below.alpha = kFill;
    context->setFillColor(below);
    const double columns = view.getWidth();
    const auto& curve = shown_.decibels;
    for (int column = 0; column < static_cast<int>(columns); ++column) {
        const double at = (column + 0.5) / columns * (curve.size() - 1);
        const auto point = static_cast<std::size_t>(at);
        const double part = at - static_cast<double>(point);
        const double decibels = curve[point] + part * (curve[point + 1] - curve[point]);
        const CCoord x = view.left + column;
        context->drawRect(CRect(x, height(decibels), x + 1, view.bottom), kDrawFilled);
    }
    context->setDrawMode(kAntiAliasing | kNonIntegralMode);
    context->setLineWidth(kLineWidth);
    context->setFrameColor(lineColor_);
    const auto line = owned(context->createGraphicsPath());
    if (!line) return;
    bool isOpen = false;
    for (std::size_t i = 1; i < curve.size(); ++i) {
        const bool isBelow = std::max(curve[i - 1], curve[i]) < kBottom;
        const auto at = [&](std::size_t point) {
            const double share = static_cast<double>(point) / (curve.size() - 1);
            return CPoint(view.left + share * columns, height(curve[point]));
        };
        if (!isOpen && !isBelow) line->beginSubpath(at(i - 1));
        if (!isBelow) line->addLine(at(i));
        isOpen = !isBelow;
    }
    context->drawGraphicsPath(line, CDrawContext::kPathStroked);
    setDirty(false);
}

}  // namespace editor
