// The editor of this instrument. It adds the instrument's own elements, menus, meter and preset
// switches.
#pragma once

#include <vector>

#include "editor/xml_gui_editor.h"

namespace editor {

class myEditor : public xmlGuiEditor {
  public:
    explicit myEditor(EditorHost& host);

    void close() override;
    void idle() override;

  protected:
    // Adds NoteDisplay, PresetsDisplay and ViewTaps to the common elements.
    bool buildElement(const std::string& element, const SkinAttributes& attributes) override;
    // Gives switch parameters "Off" and "On", and Waveform its choices.
    void fillMenu(VSTGUI::COptionMenu& menu, int tag) override;
    // Every meter shows the output level.
    void meterMade(VSTGUI::CVuMeter* meter, int number) override;

  private:
    bool addNoteDisplay(const SkinValues& values);
    bool addPresetsDisplay(const SkinValues& values);
    bool addTapView(const SkinValues& values);

    std::vector<VSTGUI::CVuMeter*> meters_;
};

}  // namespace editor
