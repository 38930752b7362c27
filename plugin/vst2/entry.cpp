// The one function a host looks up in the library. The linker gives it its second name, main.
#include "plugin/vst2/vst_synth.h"

// Returns the record of a new instance, which lives until effClose; null for a host that has no
// callback or answers no version, and when the instance could not be built.
extern "C" AEffect* VSTPluginMain(audioMasterCallback host) {
    if (!host || host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0) return nullptr;
    try {
        return (new vst2::VstSynth(host))->getAeffect();
    } catch (...) {
        return nullptr;
    }
}
