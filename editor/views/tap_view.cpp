// Draws the taps as dots on lines.
#include "editor/views/tap_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CColor kRangeColor(128, 128, 128, 160);
constexpr CColor kTapColor(240, 226, 180);
constexpr CCoord kLargestRadius = 5;

// Avoids drawEllipse, which draws the wrong size in VSTGUI 4.14 on Linux.
void fillDisc(CDrawContext& context, CPoint centre, CCoord radius) {
    const auto path = owned(context.createGraphicsPath());
    if (!path) return;
    path->addEllipse(
        CRect(centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius));
    context.drawGraphicsPath(path, CDrawContext::kPathFilled);
}

}  // namespace

CTapView::CTapView(const CRect& size, const EditorHost& host)
    : CView(size), host_(host), shown_(positions()) {
    setWantsIdle(true);
}

std::vector<float> CTapView::positions() const {
    std::vector<float> positions;
    for (int tap = 0; tap < host_.chorusTapCount(); ++tap) {
        const float position = host_.chorusTap(tap);
        positions.push_back(std::isfinite(position) ? std::clamp(position, 0.0f, 1.0f) : 0.0f);
    }
    return positions;
}

void CTapView::draw(CDrawContext* context) {
    const CRect& view = getViewSize();
    const CCoord row =
        view.getHeight() / static_cast<CCoord>(std::max<std::size_t>(shown_.size(), 1));
    const CCoord radius = std::min(row / 2, kLargestRadius);
    const CCoord left = view.left + radius;
    const CCoord travel = std::max(view.getWidth() - 2 * radius, 0.0);
    CCoord y = view.top + row / 2;
    for (const float position : shown_) {
        context->setDrawMode(kAliasing);
        context->setFillColor(kRangeColor);
        const CCoord line = std::floor(y);
        context->drawRect(CRect(left, line, left + travel, line + 1), kDrawFilled);
        context->setDrawMode(kAntiAliasing);
        context->setFillColor(kTapColor);
        fillDisc(*context, CPoint(left + travel * position, y), radius);
        y += row;
    }
    setDirty(false);
}

void CTapView::onIdle() {
    std::vector<float> now = positions();
    if (now == shown_) return;
    shown_ = std::move(now);
    invalid();
}

}  // namespace editor
