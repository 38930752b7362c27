// A coloured line around a control.
#include "editor/views/outline.h"

namespace editor {

using namespace VSTGUI;

namespace {

// Within the edges. Avoids drawEllipse, which draws the wrong size in VSTGUI 4.14 on Linux.
void strokeCircle(CDrawContext& context, CRect edges) {
    const auto path = owned(context.createGraphicsPath());
    if (!path) return;
    const CCoord half = context.getLineWidth() / 2;
    path->addEllipse(edges.inset(half, half));
    context.drawGraphicsPath(path, CDrawContext::kPathStroked);
}

}  // namespace

void COutline::setColor(const CColor& color) {
    if (color == color_) return;
    color_ = color;
    if (isVisible()) invalid();
}

void COutline::surround(const CView* view) {
    if (!view) {
        if (!isVisible()) return;
        invalid();
        setVisible(false);
        return;
    }
    CRect area = view->getViewSize();
    area.inset(-distance_, -distance_);
    isRound_ = dynamic_cast<const CKnobBase*>(view) && area.getWidth() == area.getHeight();
    if (isVisible() && area == getViewSize()) return;
    if (isVisible()) invalid();
    setViewSize(area);
    setVisible(true);
    invalid();
}

void COutline::draw(CDrawContext* context) {
    context->setFrameColor(color_);
    context->setLineWidth(lineWidth_);
    if (isRound_) {
        context->setDrawMode(kAntiAliasing | kNonIntegralMode);
        strokeCircle(*context, getViewSize());
    } else {
        context->setDrawMode(kAliasing);
        context->drawRect(getViewSize(), kDrawStroked);
    }
    setDirty(false);
}

}  // namespace editor
