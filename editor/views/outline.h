// A coloured line around a control: a circle around a knob, a rectangle around others.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

constexpr VSTGUI::CColor kLearningColor(255, 150, 30);
constexpr VSTGUI::CColor kFocusColor(90, 160, 255);
constexpr VSTGUI::CColor kHoverColor(90, 160, 255, 110);
constexpr VSTGUI::CColor kDragColor(90, 160, 255, 220);

// Add it to the frame above the controls. It never takes the mouse.
class COutline : public VSTGUI::CView {
  public:
    COutline(const VSTGUI::CColor& color, VSTGUI::CCoord distance, VSTGUI::CCoord lineWidth)
        : CView(VSTGUI::CRect()), color_(color), distance_(distance), lineWidth_(lineWidth) {
        setMouseEnabled(false);
        setVisible(false);
    }

    void setColor(const VSTGUI::CColor& color);
    // Surrounds the view, or nothing.
    void surround(const VSTGUI::CView* view);

    void draw(VSTGUI::CDrawContext* context) override;

  private:
    VSTGUI::CColor color_;
    VSTGUI::CCoord distance_;
    VSTGUI::CCoord lineWidth_;
    bool isRound_ = false;
};

}  // namespace editor
