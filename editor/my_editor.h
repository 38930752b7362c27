// The editor of this instrument. It adds the instrument's own elements, menus, meter and preset
// switches.
#pragma once

#include <string>
#include <vector>

#include "editor/views/peak_meter.h"
#include "editor/xml_gui_editor.h"

namespace editor {

class myEditor : public xmlGuiEditor {
  public:
    explicit myEditor(EditorHost& host);

    bool open(void* parentWindow) override;
    void close() override;
    void idle() override;

  protected:
    // Adds the views of this instrument to the common elements.
    bool buildElement(const std::string& element, const SkinAttributes& attributes) override;
    // Gives switch parameters "Off" and "On", and Waveform its choices.
    void fillMenu(VSTGUI::COptionMenu& menu, int tag) override;
    // Every meter shows the output level.
    void meterMade(VSTGUI::CVuMeter* meter, int number) override;
    std::vector<std::string> describe(VSTGUI::CView& view) const override;

  private:
    bool addNoteDisplay(const SkinValues& values);
    bool addPresetsDisplay(const SkinValues& values);
    template <class Drawing>
    bool addDrawing(const SkinValues& values);
    bool addKeyboard(const SkinValues& values);

    bool addPeakMeter(const SkinValues& values);
    bool addClipLamp(const SkinValues& values);
    void resetLamps();

    std::vector<VSTGUI::CVuMeter*> meters_;
    std::vector<CPeakMeter*> peakMeters_;
    std::vector<CClipLamp*> lamps_;
};

}  // namespace editor
