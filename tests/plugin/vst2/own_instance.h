// An instance of this program, not of the built library.
#pragma once

#include <memory>

#include "plugin/vst2/editor_adapter.h"
#include "plugin/vst2/vst_synth.h"
#include "tests/plugin/vst2/plugin_instance.h"

class OwnInstance : public PluginInstance {
  public:
    explicit OwnInstance(audioMasterCallback host = nullptr)
        : OwnInstance(std::make_unique<vst2::VstSynth>(host)) {}
    explicit OwnInstance(std::unique_ptr<vst2::VstSynth> synth)
        : PluginInstance(synth->getAeffect()), synth_(synth.release()) {}

    vst2::VstSynth* synth() { return synth_; }
    VSTGUI::CFrame& frame() {
        return *static_cast<vst2::EditorAdapter*>(synth_->getEditor())->editor().getFrame();
    }

  private:
    vst2::VstSynth* synth_;  // deleted by effClose
};
