// The function that a host looks up in the library. The linker adds its second name, main.
#include "plugin/vst2/vst_synth.h"

// Returns the record of a new instance, which lives until effClose. Returns null if the host has no
// callback or reports no version, or if construction fails.
extern "C" AEffect* VSTPluginMain(audioMasterCallback host) {
    if (!host || host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0) return nullptr;
    try {
        return (new vst2::VstSynth(host))->getAeffect();
    } catch (...) {
        return nullptr;
    }
}
