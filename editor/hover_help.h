// Explains the view under the pointer after a moment of rest.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "editor/views/tool_tip.h"
#include "vstgui/vstgui.h"

namespace editor {

class HoverHelp {
  public:
    // Returns the lines about a view, or nothing.
    using Describe = std::function<std::vector<std::string>(VSTGUI::CView&)>;

    explicit HoverHelp(Describe describe);

    // Add it to the frame above everything else.
    VSTGUI::CView* tip() const { return tip_; }

    void entered(VSTGUI::CView* view);
    void left();  // also for a press or a key: the user is busy

  private:
    void show();

    Describe describe_;
    VSTGUI::SharedPointer<CToolTip> tip_;
    VSTGUI::CView* view_ = nullptr;  // under the pointer; left() forgets it before it goes
    VSTGUI::SharedPointer<VSTGUI::CVSTGUITimer> rest_;
};

}  // namespace editor
