// Shows the chorus taps as they move over the range of their delays.
#pragma once

#include <vector>

#include "editor/editor_host.h"
#include "editor/views/seldom.h"
#include "vstgui/vstgui.h"

namespace editor {

// Draws one row per tap, with short delays on the left. The background shows between the rows.
class CTapView : public VSTGUI::CView {
  public:
    CTapView(const VSTGUI::CRect& size, const EditorHost& host);

    void setFontColor(const VSTGUI::CColor& color) { tapColor_ = color; }
    void setBackColor(const VSTGUI::CColor& color) { rangeColor_ = color; }

    void draw(VSTGUI::CDrawContext* context) override;
    void drawRect(VSTGUI::CDrawContext* context, const VSTGUI::CRect& updateRect) override;
    void onIdle() override;

  private:
    std::vector<float> positions() const;  // 0..1
    VSTGUI::CCoord rowHeight() const;
    VSTGUI::CRect discOf(std::size_t tap) const;

    const EditorHost& host_;
    VSTGUI::CColor tapColor_{240, 226, 180};
    VSTGUI::CColor rangeColor_{128, 128, 128, 160};
    Seldom rest_{kTurnsAtRest};
    std::vector<float> shown_;  // never changes while drawing: one draw() may cover only a part
};

}  // namespace editor
