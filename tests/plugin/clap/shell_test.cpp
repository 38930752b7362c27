// The shell in a host's hands, with the bank that is delivered: what the public validator asks, and
// what this instrument makes of notes.
#include <functional>
#include <memory>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "platform/folders.h"
#include "plugin/clap/preset_discovery.h"
#include "tests/plugin/shell_kit.h"
#include "tests/plugin/clap/driver.h"

namespace {

using namespace clap_driver;

class Clap : public ShellTest {
  protected:
    TestHost host_;
    std::mt19937 random_{17};

    int upTo(int most) { return std::uniform_int_distribution(0, most)(random_); }
    // A value for each parameter. Programs come last here, and first in their frame.
    void randomise(Events& events) {
        for (uint32_t i = 0; i < kParameterCount; ++i) {
            const ParamInfo info = parameterInfo(i);
            events.value(info.id, upTo(1000) / 1000.0 * info.max_value);
        }
    }
};

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

// Notes, wildcards, expressions and MIDI without rhyme or reason, of both dialects mixed, in any
// order of their times.
TEST_F(Clap, PlaysAnythingAtAnyRateAndSize) {
    const auto any = [this](int most) { return static_cast<int16_t>(upTo(most + 1) - 1); };
    Instance instance(host_);
    for (const double rate : {0.0, -1.0, 999.0, 1e6, static_cast<double>(NAN)}) {
        EXPECT_FALSE(instance.plugin->activate(instance.plugin, rate, 1, 64));
    }
    for (const double rate : {1000.0, 1234.5678, 10000.0, 44100.0, 96000.0, 768000.0}) {
        ASSERT_TRUE(instance.activate(rate, 16384));
        for (const int frames : {1, 10, 17, 256, 1536, 2027, 4096}) {
            for (int i = upTo(40); i > 0; --i) {
                const auto time = static_cast<uint32_t>(upTo(frames - 1));
                const NoteTable::Note to{any(30), any(1), any(15), any(127)};
                switch (upTo(4)) {
                    case 0:
                        instance.events.expression(any(6), to, 2.0, time);
                        break;
                    case 1:
                        instance.events.midi(0x80 + upTo(0x7F), upTo(127), upTo(127), time);
                        break;
                    case 2:
                        instance.events.value(static_cast<Id>(upTo(41)), upTo(10) / 10.0, time);
                        break;
                    default:
                        instance.events.note(static_cast<uint16_t>(upTo(3)), to, upTo(9) / 9.0,
                                             time);
                }
            }
            const Sound sound = instance.render(frames);
            EXPECT_NE(instance.status, kProcessError);
            ASSERT_FALSE(std::isnan(sound.peak())) << rate << ' ' << frames;
            for (const auto* side : {&sound.left, &sound.right}) {
                for (const float x : *side) ASSERT_NE(std::fpclassify(x), FP_SUBNORMAL);
            }
            if (upTo(9) == 0) instance.onAudio([&] { instance.plugin->reset(instance.plugin); });
        }
        instance.told();
        instance.deactivate();
    }
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

constexpr float kQuiet = 1e-6f;

// Whether the instrument sleeps after a while; `news` gets what came out meanwhile.
bool comesToRest(Instance& instance, std::string& news) {
    for (int second = 0; second < 12; ++second) {
        instance.render(44100);
        news += instance.news;
        if (instance.status == kProcessSleep) return true;
    }
    return false;
}

TEST_F(Clap, LetsGoOfTheNotesThatAreMeant) {
    constexpr uint16_t kMidi = kEventMidi;
    const NoteTable::Note note{7, 0, 2, 60};
    const struct {
        const char* what;
        uint16_t type;
        NoteTable::Note to;
        bool ends;
        bool pedal = false;
    } rows[] = {
        {"the note", kEventNoteOff, note, true},
        {"all", kEventNoteOff, {}, true},
        {"its id", kEventNoteOff, {7, -1, -1, -1}, true},
        {"its channel", kEventNoteOff, {-1, -1, 2, -1}, true},
        {"its key, in MIDI", kMidi, {-1, 0, 5, 60}, true},
        {"choked", kEventNoteChoke, note, true},
        {"all choked", kEventNoteChoke, {}, true, true},
        {"another id", kEventNoteOff, {8, 0, 2, 60}, false},
        {"another channel", kEventNoteOff, {-1, 0, 3, 60}, false},
        {"another port", kEventNoteOff, {-1, 1, -1, -1}, false},
        {"another key", kEventNoteOff, {-1, 0, 2, 61}, false},
        {"no volume", kEventNoteExpression, note, false},
        {"the note, on the pedal", kEventNoteOff, note, false, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Instance instance(host_);
        instance.activate();
        instance.events.value(kProgramId, 14);          // a short release
        instance.events.note(kEventNoteOn, note, 0.0);  // soft is not off
        EXPECT_GT(instance.render(22050).peak(), 0.0005f);
        if (row.pedal) instance.events.midi(0xB0, 64, 127);
        if (row.type == kMidi) {
            instance.events.midi(0x80 + row.to.channel, row.to.key, 0);
        } else if (row.type == kEventNoteExpression) {
            instance.events.expression(kNoteExpressionVolume, row.to, 0.0);
        } else {
            instance.events.note(row.type, row.to, 0.0);
        }
        std::string news;
        EXPECT_EQ(comesToRest(instance, news), row.ends);
        EXPECT_EQ(news, row.ends ? "note 7 0 2 60" : "");
    }
}

TEST_F(Clap, TellsOfNotesThatEndAndSleeps) {
    Instance instance(host_);
    instance.activate();
    std::string news;
    ASSERT_TRUE(comesToRest(instance, news));
    EXPECT_EQ(instance.render(64).silent, 3u);
    instance.events.value(kProgramId, 14);
    for (const int key : {60, 64}) {
        instance.events.note(kEventNoteOn, {key, 0, 0, static_cast<int16_t>(key)}, 0.8, 9);
    }
    instance.events.note(kEventNoteOn, {65, 0, 1, 64}, 0.8, 11);  // takes the key over
    EXPECT_EQ(instance.render(1024).silent, 0u);
    EXPECT_EQ(instance.status, kProcessContinue);
    EXPECT_EQ(instance.news, "note 64 0 0 64");
    instance.events.note(kEventNoteOff, {64, 0, 0, 64}, 0);  // is over already
    instance.events.note(kEventNoteOff, {60, 0, 0, 60}, 0);
    EXPECT_FALSE(comesToRest(instance, news));
    EXPECT_EQ(news, "");
    EXPECT_GT(instance.render(4096).peak(), 0.001f);
    instance.events.note(kEventNoteChoke, {}, NAN);  // cuts off
    EXPECT_LT(instance.render(4096).peak(), kQuiet);
    EXPECT_EQ(instance.news, "note 60 0 0 60; note 65 0 1 64");
    instance.events.value(state::kVolume, 0.0);  // not a note's end
    instance.events.note(kEventNoteOn, {66, 0, 0, 66}, 0.8);
    EXPECT_TRUE(comesToRest(instance, news));
    EXPECT_EQ(news, "");
}

TEST_F(Clap, FallsSilentWhenResetOrActivatedAgain) {
    const std::function<void(Instance&)> rows[] = {
        [](Instance& instance) {
            instance.onAudio([&] { instance.plugin->reset(instance.plugin); });
        },
        [](Instance& instance) {
            instance.deactivate();
            instance.activate();
        },
    };
    for (const auto& row : rows) {
        Instance instance(host_);
        instance.activate();
        instance.events.midi(0x90, 60, 100);
        EXPECT_GT(instance.render(22050).peak(), 0.001f);
        row(instance);
        EXPECT_LT(instance.render(4096).peak(), kQuiet);
        instance.events.midi(0x90, 60, 100);
        EXPECT_GT(instance.render(22050).peak(), 0.001f);
    }
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
