// The built library as a host loads it.
#pragma once

#include <gtest/gtest.h>

#include <dlfcn.h>

#include "plugin/vst2.h"
#include "tests/plugin/test_host.h"

using PluginEntry = AEffect* (*)(audioMasterCallback host);

// The library at QUARZEL_PLUGIN, loaded while this object lives.
class PluginLibrary {
  public:
    PluginLibrary() : handle_(dlopen(QUARZEL_PLUGIN, RTLD_NOW | RTLD_LOCAL)) {
        EXPECT_NE(handle_, nullptr) << dlerror();
    }
    ~PluginLibrary() { dlclose(handle_); }
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    PluginEntry entry(const char* name = "VSTPluginMain") const {
        return reinterpret_cast<PluginEntry>(dlsym(handle_, name));
    }

  private:
    void* handle_;
};

// One instance of the plug-in, from its creation to effClose.
class PluginInstance {
  public:
    explicit PluginInstance(PluginEntry entry) : record_(entry(TestHost::callback)) {}
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
