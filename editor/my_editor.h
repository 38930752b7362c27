// The editor of this instrument: its own elements, menus, meter and preset switches.
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
    // Knows NoteDisplay, PresetsDisplay and ViewTaps beside the common elements.
    bool buildElement(const std::string& element, const SkinAttributes& attributes) override;
    // Switched parameters get "Off" and "On", "Waveform" its choices.
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
