// The functions that a host looks up in the Windows library.
#include "plugin/vst3/factory.h"

extern "C" {

bool InitDll() {
    return true;
}

bool ExitDll() {
    return true;
}

vst3::IPluginFactory* VST3_CALL GetPluginFactory() {
    return vst3::factory();
}
}
