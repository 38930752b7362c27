// A coloured line around a control.
#include "editor/views/outline.h"

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
    if (isVisible() && area == getViewSize()) return;
    if (isVisible()) invalid();
    setViewSize(area);
    setVisible(true);
    invalid();
}

void COutline::draw(CDrawContext* context) {
    context->setDrawMode(kAliasing);
    context->setFrameColor(color_);
    context->setLineWidth(lineWidth_);
    context->drawRect(getViewSize(), kDrawStroked);
    setDirty(false);
}

}  // namespace editor
