// Draws the envelope that the four time controls describe.
#include "editor/views/envelope_view.h"

#include <algorithm>

#include "state/parameters.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kLineWidth = 2;
constexpr double kShortest = 0.06;  // share of a section's width
constexpr double kHeld = 0.16;      // share of the view while the key is held

}  // namespace

CEnvelopeView::CEnvelopeView(const CRect& size, const EditorHost& host)
    : CView(size), host_(host), shown_(shape()) {
    setMouseEnabled(false);
    setWantsIdle(true);
}

CEnvelopeView::Shape CEnvelopeView::shape() const {
    return {host_.parameter(state::kEnvAttack), host_.parameter(state::kEnvDecay),
            host_.parameter(state::kEnvSustain), host_.parameter(state::kEnvRelease)};
}

void CEnvelopeView::draw(CDrawContext* context) {
    CRect area = getViewSize();
    area.inset(kLineWidth, kLineWidth);
    const double section = area.getWidth() * (1 - kHeld) / 3;
    const auto width = [section](double value) {
        return section * (kShortest + (1 - kShortest) * std::clamp(value, 0.0, 1.0));
    };
    const CCoord floor = area.bottom;
    const CCoord held = floor - area.getHeight() * std::clamp(double{shown_[2]}, 0.0, 1.0);
    const CPoint peak(area.left + width(shown_[0]), area.top);
    const CPoint settled(peak.x + width(shown_[1]), held);
    const CPoint released(settled.x + area.getWidth() * kHeld, held);
    const CPoint silent(released.x + width(shown_[3]), floor);

    context->setDrawMode(kAliasing);
    context->setFillColor(baseColor_);
    context->drawRect(CRect(area.left, floor, area.right, floor + 1), kDrawFilled);
    context->setDrawMode(kAntiAliasing | kNonIntegralMode);
    context->setLineWidth(kLineWidth);
    context->setFrameColor(lineColor_);
    const auto line = owned(context->createGraphicsPath());
    if (!line) return;
    line->beginSubpath(CPoint(area.left, floor));
    for (const CPoint& point : {peak, settled, released, silent}) line->addLine(point);
    context->drawGraphicsPath(line, CDrawContext::kPathStroked);
    setDirty(false);
}

void CEnvelopeView::onIdle() {
    if (!looks_.isDue()) return;
    const Shape now = shape();
    if (now == shown_) return;
    shown_ = now;
    looks_.becomeOften();
    invalid();
}

}  // namespace editor
