// The factory bank as hosts list it.
#include "plugin/clap/preset_discovery.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <exception>
#include <memory>
#include <string>

#include "platform/product.h"
#include "plugin/clap/factory.h"
#include "state/factory_sounds.h"

namespace clap {

namespace {

constexpr PresetProviderDescriptor kDescriptor = {kVersion, "com.tembrilon.quarzel-strings.factory",
                                                  "Quarzel Strings factory sounds",
                                                  platform::kCompanyName};

constexpr PresetLocation kLocation = {kPresetIsFactoryContent, "Factory sounds",
                                      kPresetLocationPlugin, nullptr};

std::string lowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

void describe(const PresetMetadataReceiver& receiver, const state::FactorySound* sound) {
    const UniversalPluginId id{"clap", descriptor().id};
    receiver.add_plugin_id(&receiver, &id);
    receiver.set_flags(&receiver, kPresetIsFactoryContent);
    receiver.add_creator(&receiver, platform::kCompanyName);
    receiver.add_feature(&receiver, kFeatureInstrument);
    if (!sound) return;
    receiver.set_description(&receiver, sound->character);
    receiver.add_feature(&receiver, lowerCase(sound->family).c_str());
}

bool listPresets(const PresetMetadataReceiver& receiver) {
    const auto bank = std::make_unique<state::BankChunk>();
    if (!state::readFactoryBank(*bank)) {
        receiver.on_error(&receiver, 0, "The factory bank cannot be read");
        return false;
    }
    for (int program = 0; program < state::kNumPrograms; ++program) {
        const char* const stored = bank->programs[program].name;
        const std::string name(stored, std::find(stored, stored + state::kNameSize - 1, '\0'));
        const std::string key = std::to_string(program);
        const std::string shown = name.empty() ? "Program " + key : name;
        if (!receiver.begin_preset(&receiver, shown.c_str(), key.c_str())) break;  // has enough
        describe(receiver, state::factorySound(program, name));
    }
    return true;
}

bool getMetadata(const PresetProvider*, uint32_t kind, const char* location,
                 const PresetMetadataReceiver* receiver) {
    if (kind != kPresetLocationPlugin || location || !receiver) return false;
    try {
        return listPresets(*receiver);
    } catch (const std::exception&) {  // no memory
        return false;
    }
}

bool init(const PresetProvider* provider) {
    const auto* const indexer = static_cast<const PresetIndexer*>(provider->provider_data);
    return indexer->declare_location(indexer, &kLocation);
}

const PresetProvider* create(const PresetDiscoveryFactory*, const PresetIndexer* indexer,
                             const char* id) {
    if (!indexer || !id || std::strcmp(id, kDescriptor.id) != 0) return nullptr;
    auto* const data = const_cast<PresetIndexer*>(indexer);
    return new (std::nothrow) PresetProvider{
        &kDescriptor, data,
        init,         [](const PresetProvider* provider) { delete provider; },
        getMetadata,  [](const PresetProvider*, const char*) -> const void* { return nullptr; },
    };
}

constexpr PresetDiscoveryFactory kFactory = {
    [](const PresetDiscoveryFactory*) -> uint32_t { return 1; },
    [](const PresetDiscoveryFactory*, uint32_t index) {
        return index == 0 ? &kDescriptor : nullptr;
    },
    create,
};

}  // namespace

const void* presetFactory() {
    return &kFactory;
}

}  // namespace clap
