// The one class of the module.
#pragma once

#include "plugin/vst3/base.h"

namespace vst3 {

// A new reference to the factory of the module.
IPluginFactory* factory();

}  // namespace vst3
