// The functions that a host looks up in the Linux library.
#include "plugin/vst3/factory.h"

extern "C" {

bool ModuleEntry(void*) {
    return true;
}

bool ModuleExit() {
    return true;
}

vst3::IPluginFactory* GetPluginFactory() {
    return vst3::factory();
}
}
