// The built library as a host loads it.
#pragma once

#include "platform/shared_library.h"
#include "tests/plugin/vst2/plugin_instance.h"

// The library at QUARZEL_PLUGIN, loaded during its lifetime.
class PluginLibrary {
  public:
    PluginEntry entry(const char* name = "VSTPluginMain") const {
        return reinterpret_cast<PluginEntry>(library_.symbol(name));
    }

  private:
    platform::SharedLibrary library_{QUARZEL_PLUGIN};
};
