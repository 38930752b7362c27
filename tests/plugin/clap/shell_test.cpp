// The shell in a host's hands, with the bank that is delivered: what the public validator asks.
#include <functional>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "plugin/clap/preset_discovery.h"
#include "tests/plugin/clap/clap_test.h"

namespace {

using namespace clap_driver;

TEST_F(Clap, AnswersForWhatItHasOnly) {
    const auto* const plugins = static_cast<const PluginFactory*>(factory(kPluginFactoryId));
    const PluginDescriptor* const described = plugins->get_plugin_descriptor(plugins, 0);
    const std::string longer = std::string(described->id) + "x1";
    Host old = host_.host;
    old.clap_version = {0, 9, 0};
    EXPECT_EQ(plugins->create_plugin(plugins, &host_.host, longer.c_str()), nullptr);
    EXPECT_EQ(plugins->create_plugin(plugins, &host_.host, nullptr), nullptr);
    EXPECT_EQ(plugins->create_plugin(plugins, &old, described->id), nullptr);
    for (const char* id : {"foo-factory-1", "", "clap.plugin-factoryx"}) {
        EXPECT_EQ(factory(id), nullptr);
    }
    Instance instance(host_);
    EXPECT_EQ(instance.plugin->desc, described);
    EXPECT_EQ(instance.extension<void>("clap.surround/4"), nullptr);
    for (const char* id :
         {kExtRemoteControlsCompat, kExtPresetLoadCompat, kExtRender, kExtLatency}) {
        EXPECT_NE(instance.extension<void>(id), nullptr) << id;
    }
}

TEST_F(Clap, DescribesPortsAndPages) {
    Instance instance(host_);
    const auto& plugin = *instance.plugin;
    AudioPortInfo port{};
    NotePortInfo notePort{};
    const auto* const audio = instance.extension<PluginAudioPorts>(kExtAudioPorts);
    const auto* const notes = instance.extension<PluginNotePorts>(kExtNotePorts);
    EXPECT_TRUE(audio->get(&plugin, 0, false, &port) && notes->get(&plugin, 0, true, &notePort));
    EXPECT_FALSE(audio->get(&plugin, 0, true, &port) || audio->get(&plugin, 1, false, &port));
    EXPECT_FALSE(notes->get(&plugin, 0, false, &notePort));

    const auto* const pages = instance.extension<PluginRemoteControls>(kExtRemoteControls);
    std::multiset<Id> shown;
    RemoteControlsPage page{};
    for (uint32_t i = 0; i < pages->count(&plugin); ++i) {
        ASSERT_TRUE(pages->get(&plugin, i, &page));
        for (const Id id : page.param_ids) {
            if (id != kInvalidId) shown.insert(id);
        }
    }
    EXPECT_FALSE(pages->get(&plugin, pages->count(&plugin), &page));
    for (Id id = 0; id < state::kNumParams; ++id) EXPECT_EQ(shown.count(id), 1u) << id;

    // The first program has a bass below C3.
    const auto* const names = instance.extension<PluginNoteName>(kExtNoteName);
    NoteName name{};
    ASSERT_EQ(names->count(&plugin), 60u - 12u);
    ASSERT_TRUE(names->get(&plugin, 47, &name));
    EXPECT_EQ(std::string(name.name) + std::to_string(name.key), "Bass B259");
    instance.events.value(kProgramId, 1);  // which has none
    instance.flush();
    EXPECT_EQ(instance.told(), "rescan 1; names");
    EXPECT_FALSE(names->get(&plugin, 0, &name));
}

TEST_F(Clap, ConvertsValuesAndTexts) {
    Instance instance(host_);
    for (uint32_t i = 0; i < kParameterCount; ++i) {
        ParamInfo info{};
        ASSERT_TRUE(instance.params->get_info(instance.plugin, i, &info));
        EXPECT_EQ(info.id, i < state::kNumParams ? i : kProgramId);
        EXPECT_EQ(instance.value(info.id), info.default_value) << i;
        EXPECT_TRUE(info.default_value <= info.max_value && info.min_value == 0.0);
        EXPECT_EQ(*info.module == '\0', info.id == kProgramId);
        for (int step = 0; step < 100; ++step) {
            const std::string text = instance.text(info.id, info.max_value * step / 99.0);
            double back = NAN;
            ASSERT_TRUE(
                instance.params->text_to_value(instance.plugin, info.id, text.c_str(), &back))
                << text;
            ASSERT_EQ(instance.text(info.id, back), text) << info.name;
        }
    }
    EXPECT_EQ(instance.text(state::kWaveform, 1.0), "Bowed");
    EXPECT_EQ(instance.text(state::kKSplit, 3.9), "A2");
    EXPECT_EQ(instance.text(kProgramId, 999.0), "End of the Tape");
    EXPECT_EQ(instance.text(state::kMasterP, NAN), "-100.0 ct");
    EXPECT_EQ(instance.text(99, 0.5), "?");
    char small[3] = "";
    EXPECT_TRUE(instance.params->value_to_text(instance.plugin, kProgramId, 0, small, 3));
    EXPECT_STREQ(small, "Qu");
    double value = 0.25;
    EXPECT_FALSE(instance.params->get_value(instance.plugin, 42, &value));
    EXPECT_FALSE(instance.params->text_to_value(instance.plugin, 0, "?", &value));
    EXPECT_EQ(value, 0.25);
    EXPECT_TRUE(instance.params->text_to_value(instance.plugin, kProgramId, " 12", &value));
    EXPECT_EQ(value, 12.0);
}

TEST_F(Clap, TakesValuesAlikeWithAndWithoutABlock) {
    Instance flushed(host_);
    Instance played(host_);
    Instance active(host_);
    const auto before = flushed.values();
    for (Instance* const instance : {&flushed, &played, &active}) {
        random_.seed(17);
        randomise(instance->events);
    }
    flushed.flush();
    played.activate();
    played.render(512);
    active.activate();
    active.flush();
    EXPECT_NE(flushed.values(), before);
    EXPECT_EQ(played.values(), flushed.values());
    EXPECT_EQ(active.values(), flushed.values());
    EXPECT_EQ(flushed.told().find("rescan 1"), 0u);
}

TEST_F(Clap, TakesNoValueThatIsNone) {
    const std::function<void(EventParamValue&)> rows[] = {
        [](auto& event) { event.header.space_id = 0xB33F; },
        [](auto& event) { event.header.type = kEventParamMod; },
        [](auto& event) { event.header.size = 55; },
        [](auto& event) { event.param_id = 4711; },
        [](auto& event) { event.value = NAN; },
        [](auto& event) { event.key = 60; },  // for one key only
        [](auto& event) { event.note_id = 0; },
    };
    for (const auto& row : rows) {
        Instance instance(host_);
        const auto before = instance.values();
        instance.activate();
        row(instance.events.value(state::kSize, 0.9));
        instance.render(64);
        EXPECT_EQ(instance.values(), before);
    }
    Instance instance(host_);
    instance.events.value(state::kSize, 1e9);
    instance.events.value(state::kMix, -INFINITY);
    instance.events.value(state::kWaveform, 1.99);
    instance.flush();
    EXPECT_EQ(instance.value(state::kSize), 1.0);
    EXPECT_EQ(instance.value(state::kMix), 0.0);
    EXPECT_EQ(instance.value(state::kWaveform), 1.0);
    // An echo of a value between two positions does not move it.
    instance.instrument().setParameter(state::kKSplit, 0.5f);
    instance.flush();
    EXPECT_EQ(instance.news, "value 23 3.0*");
    instance.events.value(state::kKSplit, 3.0);
    instance.flush();
    EXPECT_EQ(instance.instrument().parameter(state::kKSplit), 0.5f);
}

TEST_F(Clap, KeepsItsStateAndRefusesWhatIsNone) {
    Instance first(host_);
    randomise(first.events);
    first.flush();
    first.told();
    const std::string bytes = first.saved(17);
    EXPECT_EQ(bytes.substr(0, 4), "QZS1");
    Instance instance(host_);
    ASSERT_TRUE(instance.load(bytes, 17));
    EXPECT_EQ(host_.take().find("rescan 1"), 0u);
    EXPECT_EQ(instance.values(), first.values());
    EXPECT_FALSE(instance.load(bytes + 'x'));
    EXPECT_EQ(instance.saved(), bytes);
    const auto* const state = instance.extension<PluginState>(kExtState);
    const InputStream broken{nullptr,
                             [](const InputStream*, void*, uint64_t) -> int64_t { return -1; }};
    const OutputStream full{
        nullptr, [](const OutputStream*, const void*, uint64_t) -> int64_t { return 0; }};
    EXPECT_FALSE(state->load(instance.plugin, &broken));
    EXPECT_FALSE(state->load(instance.plugin, nullptr));
    EXPECT_FALSE(state->save(instance.plugin, &full));
    EXPECT_EQ(host_.take(), "");
}

// Blocks without buffers, lists or transport do not lose what they bring.
TEST_F(Clap, TakesBlocksWithoutSound) {
    Instance instance(host_);
    instance.activate();
    instance.events.value(state::kSize, 0.25);
    instance.events.midi(0x90, 60, 100);
    Process block{};
    block.in_events = &instance.events.in;
    EXPECT_NE(instance.plugin->process(instance.plugin, &block), kProcessError);
    instance.events.clear();
    EXPECT_EQ(instance.value(state::kSize), 0.25);
    EXPECT_GT(instance.render(44100).peak(), 0.001f);
    EXPECT_EQ(instance.plugin->process(instance.plugin, nullptr), kProcessError);
}

TEST_F(Clap, TellsTheHostWhatItDoesNotKnow) {
    Instance instance(host_);
    auto& body = instance.instrument();
    instance.activate();
    instance.render(64);
    EXPECT_EQ(instance.news + instance.told(), "");
    // The player's hand, which is quicker than the blocks.
    body.beginEdit(3);
    body.setParameterAutomated(3, 0.5f);
    EXPECT_EQ(host_.take(), "flush; flush");
    instance.setRefusing(true);
    instance.render(64);
    instance.setRefusing(false);
    instance.render(64);
    EXPECT_EQ(instance.news, "begin 3; value 3 0.5");
    body.setParameterAutomated(3, 0.6f);
    instance.flush();
    EXPECT_EQ(instance.news, "value 3 0.6");
    body.endEdit(3);
    instance.render(64);
    EXPECT_EQ(instance.news, "value 3 0.6; end 3");
    host_.take();
    // What the host has said itself.
    instance.events.value(state::kSize, 0.111, 9);
    instance.render(64);
    EXPECT_EQ(instance.news, "");
    // A learnt controller.
    body.setParameter(state::kSize, 0.4f);
    instance.render(64);
    EXPECT_EQ(instance.news, "value 39 0.4*");
    // Programs, however they come.
    instance.events.midi(0xC0, 5, 0, 9);
    instance.render(64);
    EXPECT_EQ(instance.news + instance.told(), "rescan 1; names");
    EXPECT_EQ(instance.value(kProgramId), 5.0);
    body.setProgram(6);
    EXPECT_EQ(instance.told(), "rescan 1");
    body.renameProgram(6, "Mine");
    EXPECT_EQ(instance.told(), "rescan 2; dirty");
    instance.render(64);
    EXPECT_EQ(instance.news, "");
}

TEST_F(Clap, PutsAProgramBeforeTheParametersOfItsFrame) {
    Instance instance(host_);
    instance.activate();
    instance.events.value(state::kSize, 0.987, 8);
    instance.events.value(kProgramId, 40, 8);
    instance.render(64);
    EXPECT_EQ(instance.value(kProgramId), 40.0);
    EXPECT_NEAR(instance.value(state::kSize), 0.987, 1e-6);
}

TEST_F(Clap, LivesInAHostThatOffersNothing) {
    for (const auto offer : {TestHost::kEmptyExtensions, TestHost::kNothing}) {
        TestHost host(offer);
        Instance instance(host);
        instance.activate();
        auto& body = instance.instrument();
        body.beginEdit(3);
        body.setParameterAutomated(3, 0.5f);
        body.endEdit(3);
        body.renameProgram(0, "Mine");
        body.sizeWindow(100, 100);
        instance.events.midi(0xC0, 5, 0);
        instance.render(64);
        EXPECT_EQ(instance.told(), "");
        EXPECT_TRUE(instance.load(instance.saved()));
        const auto* const load = instance.extension<PluginPresetLoad>(kExtPresetLoad);
        EXPECT_TRUE(load->from_location(instance.plugin, kPresetLocationPlugin, nullptr, "1"));
        EXPECT_FALSE(load->from_location(instance.plugin, kPresetLocationPlugin, nullptr, "x"));
    }
}

}  // namespace
