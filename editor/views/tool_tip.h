// A small text box that explains the control under the pointer.
#pragma once

#include <string>
#include <vector>

#include "vstgui/vstgui.h"

namespace editor {

// Add it to the frame above everything else. It never takes the mouse.
class CToolTip : public VSTGUI::CView {
  public:
    CToolTip();

    // Shows the lines, the first of them bold, beside `around`, inside the frame.
    void show(const std::vector<std::string>& lines, const VSTGUI::CRect& around);
    void hide();
    const std::vector<std::string>& lines() const { return lines_; }

    void draw(VSTGUI::CDrawContext* context) override;

  private:
    static void chooseFont(VSTGUI::CDrawContext& context, bool isTitle);
    VSTGUI::CRect box(VSTGUI::CDrawContext& context) const;

    std::vector<std::string> lines_;
    VSTGUI::CRect around_;
};

}  // namespace editor
