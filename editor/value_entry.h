// Lets the user type the value of a control.
#pragma once

#include "editor/editor_host.h"
#include "editor/views/pop_up_field.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// One field serves all controls of a frame.
class ValueEntry : private VSTGUI::IControlListener, private VSTGUI::IViewEventListener {
  public:
    explicit ValueEntry(const EditorHost& host);
    ~ValueEntry() noexcept override;
    ValueEntry(const ValueEntry&) = delete;
    ValueEntry& operator=(const ValueEntry&) = delete;

    // Add it to the frame above all controls.
    VSTGUI::CTextEdit* field() const { return field_; }
    // Opens the field over the control, which must follow a parameter. Return sets the value as one
    // gesture; units are understood. A text without meaning changes nothing.
    void open(VSTGUI::CControl& control);

  private:
    void valueChanged(VSTGUI::CControl*) override;
    void viewOnEvent(VSTGUI::CView*, VSTGUI::Event& event) override;

    const EditorHost& host_;
    VSTGUI::SharedPointer<CPopUpField> field_;
    VSTGUI::SharedPointer<VSTGUI::CControl> control_;
};

}  // namespace editor
