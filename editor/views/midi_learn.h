// Gives a control the right-click menu of MIDI learn.
#pragma once

#include "editor/editor_host.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// A right press opens the menu; every other event reaches the wrapped control as it came. To be
// destroyed before the control leaves its frame.
class CMidiLearn : public VSTGUI::IViewEventListener {
  public:
    // The control's tag is a parameter.
    CMidiLearn(VSTGUI::CControl* control, EditorHost& host);
    ~CMidiLearn() noexcept override;
    CMidiLearn(const CMidiLearn&) = delete;
    CMidiLearn& operator=(const CMidiLearn&) = delete;

    void viewOnEvent(VSTGUI::CView* view, VSTGUI::Event& event) override;

  private:
    void openMenu(const VSTGUI::CPoint& where);

    VSTGUI::SharedPointer<VSTGUI::CControl> control_;
    EditorHost& host_;
};

}  // namespace editor
