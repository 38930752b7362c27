// The about picture, with a line that opens the help file.
#pragma once

#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// A splash screen shows this view and listens to it. A click reports a change, and the splash
// screen closes the view. So does Escape. While the pointer is over the line "Help", a click also
// opens the help file.
class CAbout : public VSTGUI::CControl {
  public:
    enum State { kShowing = 1, kHelp = 2 };

    CAbout(const VSTGUI::CRect& size, VSTGUI::CBitmap* picture);

    State state() const { return state_; }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override;

    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override;

    CLASS_METHODS(CAbout, VSTGUI::CControl)

  private:
    VSTGUI::CRect line(int fromBottom) const;
    void follow(const VSTGUI::CPoint& pointer);

    State state_ = kShowing;
};

// Opens the help file in the data folder, else the one beside the library. Does nothing if there is
// none. Where nothing opens documents, a message says where it is.
void openHelp();

}  // namespace editor
