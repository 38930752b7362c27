// A coloured line around a control.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

// Add it to the frame above the controls. It never takes the mouse.
class COutline : public VSTGUI::CView {
  public:
    explicit COutline(const VSTGUI::CColor& color);

    // Surrounds the view, or nothing.
    void surround(const VSTGUI::CView* view);

    void draw(VSTGUI::CDrawContext* context) override;

  private:
    VSTGUI::CColor color_;
};

}  // namespace editor
