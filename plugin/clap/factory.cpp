// The factory of the one plug-in.
#include "plugin/clap/factory.h"

#include <cstring>
#include <exception>

#include "platform/product.h"
#include "plugin/clap/preset_discovery.h"
#include "plugin/clap/shell.h"

namespace clap {

namespace {

constexpr const char* kFeatures[] = {kFeatureInstrument, kFeatureSynthesizer, kFeatureStereo,
                                     nullptr};

const Plugin* create(const PluginFactory*, const clap::Host* host, const char* id) {
    if (!host || !id || !isCompatible(host->clap_version)) return nullptr;
    if (std::strcmp(id, descriptor().id) != 0) return nullptr;
    try {
        return &(new Shell(*host))->plugin();
    } catch (const std::exception&) {  // no memory
        return nullptr;
    }
}

constexpr PluginFactory kFactory = {
    [](const PluginFactory*) -> uint32_t { return 1; },
    [](const PluginFactory*, uint32_t index) { return index == 0 ? &descriptor() : nullptr; },
    create,
};

}  // namespace

const PluginDescriptor& descriptor() {
    static const PluginDescriptor descriptor = {
        kVersion,
        "com.tembrilon.quarzel-strings",
        platform::kProductName,
        platform::kCompanyName,
        "https://tembrilon.com",
        "",
        "",
        platform::productVersion(),
        "String-ensemble synthesizer in the manner of the string machines of the 1970s",
        kFeatures,
    };
    return descriptor;
}

const void* CLAP_CALL factory(const char* factoryId) {
    const auto is = [factoryId](const char* id) { return std::strcmp(factoryId, id) == 0; };
    if (!factoryId) return nullptr;
    if (is(kPluginFactoryId)) return &kFactory;
    if (is(kPresetDiscoveryFactoryId) || is(kPresetDiscoveryFactoryIdCompat)) {
        return presetFactory();
    }
    return nullptr;
}

}  // namespace clap
