// A coloured line around a control.
#include "editor/views/outline.h"

#include "editor/views/ellipse_path.h"

namespace editor {

using namespace VSTGUI;

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
        CRect middle = getViewSize();
        middle.inset(lineWidth_ / 2, lineWidth_ / 2);  // of the line
        drawEllipsePath(*context, middle, CDrawContext::kPathStroked);
    } else {
        context->setDrawMode(kAliasing);
        context->drawRect(getViewSize(), kDrawStroked);
    }
    setDirty(false);
}

}  // namespace editor
