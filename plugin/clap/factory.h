// What the library offers.
#pragma once

#include "plugin/clap/clap.h"

namespace clap {

// The factory of plug-ins or that of presets; null for another id. [any]
const void* CLAP_CALL factory(const char* factoryId);

// The one plug-in of the library.
const PluginDescriptor& descriptor();

// The factory of presets.
const void* presetFactory();

}  // namespace clap
