// The factory bank, which is delivered, as a host finds and loads it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/folders.h"
#include "plugin/clap/preset_discovery.h"
#include "tests/plugin/clap/clap_test.h"

namespace {

using namespace clap_driver;

// "name key family: character", collected as a host does.
struct Found {
    std::vector<std::string> presets;
    std::vector<std::string> keys;
    std::string fault;
};

Found discover() {
    static Found found;
    found = {};
    const auto* const presets =
        static_cast<const PresetDiscoveryFactory*>(factory(kPresetDiscoveryFactoryId));
    EXPECT_EQ(presets, factory(kPresetDiscoveryFactoryIdCompat));
    static PresetLocation location;
    location = {};
    const PresetIndexer indexer{kVersion,
                                "",
                                "",
                                "",
                                "",
                                nullptr,
                                nullptr,
                                [](const PresetIndexer*, const PresetLocation* declared) {
                                    location = *declared;
                                    return true;
                                },
                                nullptr,
                                nullptr};
    const PresetProviderDescriptor* const described = presets->get_descriptor(presets, 0);
    EXPECT_EQ(presets->create(presets, &indexer, "x"), nullptr);
    const PresetProvider* const provider = presets->create(presets, &indexer, described->id);
    EXPECT_EQ(provider->desc, described);
    EXPECT_TRUE(provider->init(provider));
    EXPECT_EQ(location.kind, kPresetLocationPlugin);
    const PresetMetadataReceiver receiver{
        nullptr,
        [](const PresetMetadataReceiver*, int32_t, const char* fault) { found.fault = fault; },
        [](const PresetMetadataReceiver*, const char* name, const char* key) {
            found.presets.emplace_back(name);
            found.keys.emplace_back(key);
            return true;
        },
        [](const PresetMetadataReceiver*, const UniversalPluginId* id) {
            EXPECT_EQ(std::string(id->abi) + id->id, std::string("clap") + descriptor().id);
        },
        nullptr,
        [](const PresetMetadataReceiver*, uint32_t flags) {
            EXPECT_EQ(flags, kPresetIsFactoryContent);
        },
        [](const PresetMetadataReceiver*, const char*) {},
        [](const PresetMetadataReceiver*, const char* text) {
            found.presets.back() += std::string(": ") + text;
        },
        nullptr,
        [](const PresetMetadataReceiver*, const char* feature) {
            found.presets.back() += std::string(", ") + feature;
        },
        nullptr};
    const bool read = provider->get_metadata(provider, location.kind, location.location, &receiver);
    EXPECT_EQ(read, found.fault.empty());
    EXPECT_FALSE(provider->get_metadata(provider, kPresetLocationFile, "/", &receiver));
    provider->destroy(provider);
    return found;
}

TEST_F(Clap, OffersTheFactoryBankAsPresets) {
    const Found found = discover();
    ASSERT_EQ(found.presets.size(), 128u);
    EXPECT_EQ(
        found.presets[21],
        "Tide Pool, instrument: Swells, falls back, swells with the next chord, soft and slow");
    for (const std::string& preset : found.presets)
        EXPECT_NE(preset.find(": "), std::string::npos) << preset;

    Instance instance(host_);
    instance.activate();
    const auto* const load = instance.extension<PluginPresetLoad>(kExtPresetLoad);
    instance.events.value(kProgramId, 21);
    instance.render(64);
    instance.told();
    const auto delivered = instance.values();
    instance.events.value(state::kSize, 0.999);
    instance.render(64);
    for (const std::string& key : found.keys) {
        ASSERT_TRUE(
            load->from_location(instance.plugin, kPresetLocationPlugin, nullptr, key.c_str()));
        EXPECT_EQ(host_.take().substr(0, 8), "rescan 1");
        EXPECT_FALSE(std::isnan(instance.render(64).peak()));
        EXPECT_EQ(std::to_string(static_cast<int>(instance.value(kProgramId))), key);
        EXPECT_EQ(instance.values() == delivered, key == "21");
    }
    const auto before = instance.values();
    for (const char* key : {"128", "-1", "", "2x", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(load->from_location(instance.plugin, kPresetLocationPlugin, nullptr, key));
        EXPECT_EQ(host_.take(), "There is no such preset");
    }
    EXPECT_FALSE(load->from_location(instance.plugin, kPresetLocationFile, "/x.fxp", "1"));
    const platform::ScopedFolders nowhere("/nonexistent/", "");
    EXPECT_EQ(discover().fault, "The factory bank cannot be read");
    EXPECT_FALSE(load->from_location(instance.plugin, kPresetLocationPlugin, nullptr, "1"));
    EXPECT_EQ(instance.values(), before);
}

}  // namespace
