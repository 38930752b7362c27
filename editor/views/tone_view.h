// Draws what high-pass and brightness do to each frequency.
#pragma once

#include "editor/editor_host.h"
#include "editor/views/seldom.h"
#include "vstgui/vstgui.h"

namespace editor {

// From 20 Hz to 20 kHz on a logarithmic scale, with lines at 0 dB and at 100 Hz, 1 and 10 kHz. The
// background shows around them.
class CToneView : public VSTGUI::CView {
  public:
    CToneView(const VSTGUI::CRect& size, EditorHost& host);

    void setFontColor(const VSTGUI::CColor& color) { lineColor_ = color; }
    void setBackColor(const VSTGUI::CColor& color) { baseColor_ = color; }

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;

  private:
    VSTGUI::CCoord height(double decibels) const;
    VSTGUI::CCoord place(double hertz) const;
    void drawGrid(VSTGUI::CDrawContext& context) const;

    EditorHost& host_;
    VSTGUI::CColor lineColor_ = VSTGUI::kWhiteCColor;
    VSTGUI::CColor baseColor_ = VSTGUI::kGreyCColor;
    state::ToneCurve shown_;  // never changes while drawing: one draw() may cover only a part
    Seldom looks_;
};

}  // namespace editor
