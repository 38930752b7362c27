// The built library as a host loads it.
#pragma once

#include "platform/shared_library.h"
#include "plugin/vst2/vst2.h"
#include "tests/plugin/vst2/test_host.h"

using PluginEntry = AEffect* (*)(audioMasterCallback host);

// The library at QUARZEL_PLUGIN, loaded during its lifetime.
class PluginLibrary {
  public:
    PluginEntry entry(const char* name = "VSTPluginMain") const {
        return reinterpret_cast<PluginEntry>(library_.symbol(name));
    }

  private:
    platform::SharedLibrary library_{QUARZEL_PLUGIN};
};

// One instance of the plug-in; the destructor sends effClose.
class PluginInstance {
  public:
    explicit PluginInstance(PluginEntry entry, audioMasterCallback host = TestHost::callback)
        : record_(entry(host)) {}
    ~PluginInstance() { dispatch(effClose); }
    PluginInstance(const PluginInstance&) = delete;
    PluginInstance& operator=(const PluginInstance&) = delete;

    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) {
        return record_->dispatcher(record_, opcode, index, value, ptr, opt);
    }
    AEffect* operator->() { return record_; }
    AEffect* record() { return record_; }

  private:
    AEffect* record_;
};
