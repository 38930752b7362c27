// Draws ellipses.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

// Avoids drawEllipse, which draws the wrong size in VSTGUI 4.14 on Linux. A stroke lies on both
// sides of the ellipse.
inline void drawEllipsePath(VSTGUI::CDrawContext& context, const VSTGUI::CRect& ellipse,
                            VSTGUI::CDrawContext::PathDrawMode mode) {
    const auto path = VSTGUI::owned(context.createGraphicsPath());
    if (!path) return;
    path->addEllipse(ellipse);
    context.drawGraphicsPath(path, mode);
}

}  // namespace editor
