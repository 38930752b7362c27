// Shows the chorus taps as they move over the range of their delays.
#pragma once

#include <vector>

#include "editor/editor_host.h"
#include "vstgui/vstgui.h"

namespace editor {

// Draws one row per tap, with short delays on the left. The background shows between the rows.
class CTapView : public VSTGUI::CView {
  public:
    CTapView(const VSTGUI::CRect& size, const EditorHost& host);

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;

  private:
    std::vector<float> positions() const;  // 0..1
    VSTGUI::CCoord rowHeight() const;
    VSTGUI::CRect discOf(std::size_t tap) const;

    const EditorHost& host_;
    std::vector<float> shown_;  // never changes while drawing: one draw() may cover only a part
};

}  // namespace editor
