// Draws the taps as dots on lines.
#include "editor/views/tap_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "editor/views/ellipse_path.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kLargestRadius = 5;
constexpr CCoord kLeastMove = 0.1;  // pixels of the window; less cannot be seen

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

CCoord CTapView::rowHeight() const {
    return getHeight() / static_cast<CCoord>(std::max<std::size_t>(shown_.size(), 1));
}

CRect CTapView::discOf(std::size_t tap) const {
    const CRect& view = getViewSize();
    const CCoord radius = std::min(rowHeight() / 2, kLargestRadius);
    const CCoord travel = std::max(view.getWidth() - 2 * radius, 0.0);
    const CCoord left = view.left + travel * shown_[tap];
    const CCoord middle = view.top + rowHeight() * (static_cast<CCoord>(tap) + 0.5);
    return {left, middle - radius, left + 2 * radius, middle + radius};
}

void CTapView::draw(CDrawContext* context) {
    drawRect(context, getViewSize());
}

void CTapView::drawRect(CDrawContext* context, const CRect& updateRect) {
    const CRect& view = getViewSize();
    for (std::size_t tap = 0; tap < shown_.size(); ++tap) {
        const CRect disc = discOf(tap);
        const CCoord radius = disc.getWidth() / 2;
        if (disc.bottom + 1 < updateRect.top || disc.top - 1 > updateRect.bottom) continue;
        context->setDrawMode(kAliasing);
        context->setFillColor(rangeColor_);
        const CCoord line = std::floor(disc.top + radius);
        context->drawRect(CRect(view.left + radius, line, view.right - radius, line + 1),
                          kDrawFilled);
        context->setDrawMode(kAntiAliasing);
        context->setFillColor(tapColor_);
        drawEllipsePath(*context, disc, CDrawContext::kPathFilled);
    }
    setDirty(false);
}

// They move all the time, so only what is under them is drawn again.
void CTapView::onIdle() {
    if (host_.heldNotes() == 0 && !rest_.isDue()) return;
    std::vector<float> now = positions();
    if (now.size() != shown_.size()) {
        shown_ = std::move(now);
        return invalid();
    }
    const CCoord leastMove = kLeastMove / (getFrame() ? getFrame()->getZoom() : 1);
    for (std::size_t tap = 0; tap < now.size(); ++tap) {
        const CRect before = discOf(tap);
        const float left = std::exchange(shown_[tap], now[tap]);
        const CRect after = discOf(tap);
        if (std::abs(after.left - before.left) < leastMove) {
            shown_[tap] = left;
            continue;
        }
        if (CRect(before).bound(after).isEmpty()) {
            invalidRect(before);
            invalidRect(after);
        } else {
            invalidRect(CRect(before).unite(after));
        }
    }
}

}  // namespace editor
