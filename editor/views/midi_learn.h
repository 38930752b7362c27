// Gives a control the right-click menu for MIDI learn.
#pragma once

#include "editor/editor_host.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// A right press opens the menu. A press on a control that is learning ends that. All other events
// reach the control unchanged. Destroy this before the control leaves its frame.
class CMidiLearn : public VSTGUI::IViewEventListener {
  public:
    // The control's tag must be a parameter.
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
