// Draws the envelope that the four time controls describe.
#pragma once

#include <array>

#include "editor/editor_host.h"
#include "editor/views/seldom.h"
#include "vstgui/vstgui.h"

namespace editor {

// Times are drawn as far as their controls are moved, not in seconds. The background shows around
// the line.
class CEnvelopeView : public VSTGUI::CView {
  public:
    CEnvelopeView(const VSTGUI::CRect& size, const EditorHost& host);

    void setFontColor(const VSTGUI::CColor& color) { lineColor_ = color; }
    void setBackColor(const VSTGUI::CColor& color) { baseColor_ = color; }

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;

  private:
    using Shape = std::array<float, 4>;  // attack, decay, sustain, release
    Shape shape() const;

    const EditorHost& host_;
    VSTGUI::CColor lineColor_ = VSTGUI::kWhiteCColor;
    VSTGUI::CColor baseColor_ = VSTGUI::kGreyCColor;
    Shape shown_;  // never changes while drawing: one draw() may cover only a part
    Seldom looks_;
};

}  // namespace editor
