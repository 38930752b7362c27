// Shows the ensemble at work: the chorus's taps moving over the range of their delays.
#pragma once

#include <vector>

#include "editor/editor_host.h"
#include "vstgui/vstgui.h"

namespace editor {

// One row a tap, short delays on the left. Nothing is drawn between the rows: the picture shows
// through.
class CTapView : public VSTGUI::CView {
  public:
    CTapView(const VSTGUI::CRect& size, const EditorHost& host);

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;

  private:
    std::vector<float> positions() const;  // 0..1

    const EditorHost& host_;
    std::vector<float> shown_;  // changes between drawings only, which may draw a part
};

}  // namespace editor
