// A coloured line around a control.
#include "editor/views/outline.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kDistance = 3;
constexpr CCoord kLineWidth = 2;

}  // namespace

COutline::COutline(const CColor& color) : CView(CRect()), color_(color) {
    setMouseEnabled(false);
    setVisible(false);
}

void COutline::surround(const CView* view) {
    if (!view) {
        if (!isVisible()) return;
        invalid();
        setVisible(false);
        return;
    }
    CRect area = view->getViewSize();
    area.inset(-kDistance, -kDistance);
    if (isVisible() && area == getViewSize()) return;
    if (isVisible()) invalid();
    setViewSize(area);
    setVisible(true);
    invalid();
}

void COutline::draw(CDrawContext* context) {
    context->setDrawMode(kAliasing);
    context->setFrameColor(color_);
    context->setLineWidth(kLineWidth);
    context->drawRect(getViewSize(), kDrawStroked);
    setDirty(false);
}

}  // namespace editor
