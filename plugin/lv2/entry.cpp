// The functions that a host looks up in the library, and its calls as those of our objects.
#include <exception>

#include "lv2/instance-access/instance-access.h"
#include "plugin/lv2/shell.h"
#include "plugin/lv2/ui.h"
#include "plugin/lv2/uris.h"

namespace lv2 {

namespace {

Shell& shellOf(LV2_Handle instance) {
    return *static_cast<Shell*>(instance);
}

Ui& uiOf(LV2UI_Handle ui) {
    return *static_cast<Ui*>(ui);
}

constexpr LV2_State_Interface kStateInterface = {
    [](LV2_Handle instance, LV2_State_Store_Function store, LV2_State_Handle handle, std::uint32_t,
       Features) { return shellOf(instance).save(store, handle); },
    [](LV2_Handle instance, LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
       std::uint32_t, Features) { return shellOf(instance).restore(retrieve, handle); },
};

constexpr LV2_Options_Interface kOptionsInterface = {
    [](LV2_Handle instance, LV2_Options_Option* options) {
        return shellOf(instance).getOptions(options);
    },
    [](LV2_Handle instance, const LV2_Options_Option* options) {
        return shellOf(instance).setOptions(options);
    },
};

const void* extensionData(const char* uri) {
    if (std::strcmp(uri, LV2_STATE__interface) == 0) return &kStateInterface;
    if (std::strcmp(uri, LV2_OPTIONS__interface) == 0) return &kOptionsInterface;
    return nullptr;
}

constexpr LV2_Descriptor kDescriptor = {
    kPluginUri,
    [](const LV2_Descriptor*, double sampleRate, const char*, Features features) -> LV2_Handle {
        return Shell::begin(sampleRate, features);
    },
    [](LV2_Handle instance, std::uint32_t port, void* data) {
        shellOf(instance).connect(port, data);
    },
    [](LV2_Handle instance) { shellOf(instance).activate(); },
    [](LV2_Handle instance, std::uint32_t frames) { shellOf(instance).run(frames); },
    [](LV2_Handle instance) { shellOf(instance).deactivate(); },
    [](LV2_Handle instance) { shellOf(instance).end(); },
    extensionData,
};

constexpr LV2UI_Idle_Interface kIdleInterface = {
    [](LV2UI_Handle ui) {
        uiOf(ui).idle();
        return 0;
    },
};

const void* uiExtensionData(const char* uri) {
    return std::strcmp(uri, LV2_UI__idleInterface) == 0 ? &kIdleInterface : nullptr;
}

// Without the instance and a window to be in there is nothing to show; the host shows controls of
// its own then.
LV2UI_Handle openUi(const LV2UI_Descriptor*, const char* plugin, const char*,
                    LV2UI_Write_Function write, LV2UI_Controller controller, LV2UI_Widget* widget,
                    Features features) {
    if (std::strcmp(plugin, kPluginUri) != 0) return nullptr;
    auto* const shell = feature<Shell>(features, LV2_INSTANCE_ACCESS_URI);
    const auto parent = reinterpret_cast<std::uintptr_t>(feature<void>(features, LV2_UI__parent));
    if (!shell || parent == 0) {
        logRefusal(features, shell ? "the host offers no window for the editor"
                                   : "the host keeps the editor apart from the instrument");
        return nullptr;
    }
    try {
        auto ui = std::make_unique<Ui>(shell->shared_from_this(), write, controller, features);
        const std::uintptr_t window = ui->open(static_cast<std::uint32_t>(parent));
        if (window == 0) return nullptr;
        *widget = reinterpret_cast<LV2UI_Widget>(window);
        return ui.release();
    } catch (const std::exception&) {  // no memory
        return nullptr;
    }
}

constexpr LV2UI_Descriptor kUiDescriptor = {
    kUiUri,          openUi, [](LV2UI_Handle ui) { delete &uiOf(ui); },
    nullptr,  // the editor reads values from the instrument
    uiExtensionData,
};

}  // namespace

}  // namespace lv2

extern "C" {

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(uint32_t index) {
    return index == 0 ? &lv2::kDescriptor : nullptr;
}

LV2_SYMBOL_EXPORT const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index) {
    return index == 0 ? &lv2::kUiDescriptor : nullptr;
}
}
