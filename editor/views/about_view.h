// The about picture, with a line that opens the help file.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

// Shown by a splash screen, which is its listener: a click reports a change, and the screen closes
// it. Over the line "Help" the view is in its second state, in which a click opens the file, too.
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

    CLASS_METHODS(CAbout, VSTGUI::CControl)

  private:
    VSTGUI::CRect line(int fromBottom) const;
    void follow(const VSTGUI::CPoint& pointer);

    State state_ = kShowing;
};

// Opens the help file of the data folder, or the one beside the library. Nothing happens when
// there is none.
void openHelp();

}  // namespace editor
