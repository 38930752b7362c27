// The corner by which a player drags the editor to another size.
#include "editor/views/size_grip.h"

#include <algorithm>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr int kLines = 3;
constexpr CCoord kLineWidth = 1.5;

}  // namespace

void CSizeGrip::draw(CDrawContext* context) {
    const CRect& view = getViewSize();
    const CCoord length = std::min(view.getWidth(), view.getHeight()) - 1;
    context->setDrawMode(kAntiAliasing | kNonIntegralMode);
    context->setLineWidth(kLineWidth);
    context->setFrameColor(color_);
    for (int i = 1; i <= kLines; ++i) {
        const CCoord at = length * i / kLines;
        context->drawLine(CPoint(view.right - at, view.bottom),
                          CPoint(view.right, view.bottom - at));
    }
    setDirty(false);
}

CMouseEventResult CSizeGrip::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton() || !getFrame()) return kMouseEventNotHandled;
    toCorner_ = CPoint(getFrame()->getWidth(), getFrame()->getHeight()) - where;
    return kMouseEventHandled;
}

CMouseEventResult CSizeGrip::onMouseMoved(CPoint& where, const CButtonState& buttons) {
    if (buttons.isLeftButton()) dragged_(where + toCorner_);
    return kMouseEventHandled;
}

CMouseEventResult CSizeGrip::onMouseUp(CPoint&, const CButtonState&) {
    return kMouseEventHandled;
}

}  // namespace editor
