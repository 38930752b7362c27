// The shell in a host's hands, with the bank that is delivered.
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include "lv2/buf-size/buf-size.h"
#include "state/parameter_text.h"
#include "tests/plugin/shell_kit.h"
#include "tests/plugin/lv2/driver.h"

extern "C" const LV2_Descriptor* lv2_descriptor(uint32_t index);
extern "C" const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index);

namespace {

using namespace lv2_driver;

class Lv2 : public ShellTest {
  protected:
    std::unique_ptr<Instance> make() {
        return std::make_unique<Instance>(lv2_descriptor(0), host_);
    }
    LV2_URID id(const char* uri) { return host_.urids(uri); }
    // A state whose current program has values that no bank has, at ports that show another one.
    Saved oddState() {
        const auto source = make();
        source->controls[state::kMix] = 33.0f;
        source->controls[state::kWaveform] = 2.0f;
        source->run(64);
        source->send(0, {0xC0, 5});
        source->run(64);
        Saved saved = source->saved();
        std::string& bytes = saved[id(lv2::kStateKey)].bytes;
        std::mt19937 random(7);
        for (int i = 0; i < state::kNumParams; ++i) {
            const float value = std::uniform_real_distribution<float>(0.0f, 1.0f)(random);
            const std::size_t at = 8 + offsetof(state::BankChunk, programs) +
                                   5 * sizeof(state::ProgramRecord) +
                                   offsetof(state::ProgramRecord, values) + 4 * i;
            bytes.replace(at, 4, reinterpret_cast<const char*>(&value), 4);
        }
        return saved;
    }
    std::vector<float> portsOf(const Saved& saved) {
        const std::string& bytes = saved.at(id(lv2::kPortsKey)).bytes;
        std::vector<float> ports(state::kNumParams);
        std::memcpy(ports.data(), bytes.data() + sizeof(LV2_Atom_Vector_Body), 4 * ports.size());
        return ports;
    }

    Host host_;
};

std::string turtle(const char* name) {
    std::ifstream file(std::string(QUARZEL_BUNDLE) + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The numbers after each occurrence of a word, as a host reads them.
std::vector<float> numbersAfter(const std::string& word, const std::string& text) {
    std::vector<float> numbers;
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        numbers.push_back(std::strtof(text.c_str() + at + word.size(), nullptr));
    }
    return numbers;
}

TEST_F(Lv2, RefusesWhatItCannotDoWithoutAWord) {
    EXPECT_EQ(lv2_descriptor(1), nullptr);
    EXPECT_EQ(lv2ui_descriptor(1), nullptr);
    const LV2_Feature* none[] = {nullptr};
    EXPECT_EQ(lv2_descriptor(0)->instantiate(lv2_descriptor(0), 44100, "/", none), nullptr);
    EXPECT_EQ(lv2_descriptor(0)->instantiate(lv2_descriptor(0), 44100, "/", nullptr), nullptr);
    EXPECT_EQ(lv2_descriptor(0)->extension_data("urn:other"), nullptr);

    const auto instance = make();
    const LV2_Feature access{LV2_INSTANCE_ACCESS_URI, instance->handle};
    const LV2_Feature* noWindow[] = {&host_.mapFeature, &access, nullptr};
    const LV2UI_Descriptor* const ui = lv2ui_descriptor(0);
    LV2UI_Widget widget = nullptr;
    for (const auto& features : {none, noWindow}) {
        EXPECT_EQ(ui->instantiate(ui, lv2::kPluginUri, "/", nullptr, nullptr, &widget, features),
                  nullptr);
    }
    EXPECT_EQ(ui->instantiate(ui, "urn:other", "/", nullptr, nullptr, &widget, noWindow), nullptr);
}

TEST_F(Lv2, StartsWhereItsDescriptionSays) {
    const std::string text = turtle("QuarzelStrings.ttl");
    const auto defaults = numbersAfter("lv2:default ", text);
    const auto lowest = numbersAfter("lv2:minimum ", text);
    const auto highest = numbersAfter("lv2:maximum ", text);
    ASSERT_EQ(defaults.size(), lv2::kEnabledPort + 1u);
    const auto instance = make();
    const std::string before = instance->state();
    std::set<std::string> symbols;
    for (int i = 0; i < state::kNumParams; ++i) {
        symbols.insert(lv2::portSymbol(i));
        EXPECT_TRUE(lowest[i] <= defaults[i] && defaults[i] <= highest[i]) << i;
        instance->controls[i] = defaults[i];
    }
    EXPECT_EQ(symbols.size(), 42u);
    instance->run(64);
    EXPECT_TRUE(instance->state() == before);
    EXPECT_TRUE(instance->portsAgree());
}

TEST_F(Lv2, HasAPortForEveryValueAndBack) {
    for (int i = 0; i < state::kNumParams; ++i) {
        for (int step = 0; step <= 1000; ++step) {
            const auto value = static_cast<float>(step / 1000.0);
            const float back = lv2::valueAtPort(i, lv2::portValue(i, value));
            if (state::parameter(i).law.positions == 0) {
                EXPECT_EQ(back, value) << i;
            } else {
                EXPECT_EQ(state::plainValue(i, back), state::plainValue(i, value)) << i;
            }
        }
    }
}

// By its ports alone, as hosts without states do it, and as the others do.
TEST_F(Lv2, PlaysThePresetsAsTheProgramsThatTheyAre) {
    const std::string text = turtle("presets.ttl");
    const auto values = numbersAfter("pset:value ", text);
    const auto programs = numbersAfter("#program> ", text);
    ASSERT_EQ(values.size(), 128u * state::kNumParams);
    ASSERT_EQ(programs.size(), 128u);
    const auto byPorts = make();
    const auto byState = make();
    const std::string factory = byState->state().substr(8);
    for (int program = 0; program < 128; ++program) {
        ASSERT_EQ(programs[program], program);
        ASSERT_EQ(byState->restore(byState->preset(program)), LV2_STATE_SUCCESS);
        for (Instance* const instance : {byPorts.get(), byState.get()}) {
            std::copy_n(&values[program * state::kNumParams], state::kNumParams,
                        instance->controls.begin());
            instance->run(1);
        }
        EXPECT_EQ(byState->program(), program);
        EXPECT_TRUE(byState->state().substr(8) == factory);
        for (int i = 0; i < state::kNumParams; ++i) {
            const float wanted = byState->value(i);
            if (state::parameter(i).law.positions == 0) {
                EXPECT_EQ(byPorts->value(i, 0), wanted) << program << ' ' << i;
            } else {
                EXPECT_EQ(state::plainValue(i, byPorts->value(i, 0)), state::plainValue(i, wanted));
            }
        }
    }
}

TEST_F(Lv2, FollowsAPortWhenItMovesAndElseNot) {
    const auto instance = make();
    instance->run(64);
    instance->send(0, {0xC0, 40});
    instance->run(64);
    const std::string program = instance->state();
    for (int i = 0; i < 100; ++i) instance->run(1024);
    EXPECT_TRUE(instance->state() == program);
    for (const float silly : {NAN, -NAN}) {
        instance->controls[state::kSize] = silly;
        instance->run(64);
        EXPECT_TRUE(instance->state() == program);
    }
    instance->controls[state::kSize] = 62.5f;
    instance->run(0);  // no block is too short
    EXPECT_EQ(instance->value(state::kSize), 0.625f);
    for (const auto& [port, value] :
         {std::pair{INFINITY, 1.0f}, {-INFINITY, 0.0f}, {1e30f, 1.0f}}) {
        for (int i = 0; i < state::kNumParams; ++i) instance->controls[i] = port;
        EXPECT_TRUE(std::isfinite(instance->playedPeak()));
        EXPECT_EQ(instance->value(state::kSize), value);
    }
}

// "HP" moves half way with each push, so what is applied twice can be heard.
TEST_F(Lv2, AppliesNothingTwice) {
    Sound sounds[2];
    for (const bool twice : {false, true}) {
        const auto instance = make();
        instance->controls[state::kHP] = lv2::portValue(state::kHP, 0.75f);
        instance->run(64);
        if (twice) {
            instance->controls[state::kHP] = NAN;
            instance->run(0);
            instance->controls[state::kHP] =
                std::nextafter(lv2::portValue(state::kHP, 0.75f), 0.0f);
            instance->run(0);
        }
        instance->send(10, {0x90, 48, 100});
        sounds[twice] = instance->run(4410);
    }
    EXPECT_GT(sounds[0].peak(), 0.001f);
    EXPECT_TRUE(sounds[0] == sounds[1]);
}

// In whichever order a host sets the ports that it saved with the state.
TEST_F(Lv2, RestoresTheSavedBytesInEveryOrder) {
    const Saved saved = oddState();
    const auto ports = portsOf(saved);
    EXPECT_EQ(saved.at(id(lv2::kStateKey)).bytes.size(), 26096u);
    for (const std::string order : {"SP", "PS", "PrS", "SrP", "rSrrP", "rPrSr", "S", "St", "rSPT",
                                    "PSPr", "SSrPP", "tTSP", "rdSPa"}) {
        SCOPED_TRACE(order);
        const auto instance = make();
        const std::map<char, std::function<void()>> calls = {
            {'S', [&] { EXPECT_EQ(instance->restore(saved), LV2_STATE_SUCCESS); }},
            {'P', [&] { std::copy(ports.begin(), ports.end(), instance->controls.begin()); }},
            {'r', [&] { instance->run(1024); }},
            {'t',  // written as text, and read back
             [&] {
                 for (int i = 0; i < state::kNumParams; ++i) {
                     char text[32];
                     std::snprintf(text, sizeof text, "%f", ports[i]);
                     instance->controls[i] = std::strtof(text, nullptr);
                 }
             }},
            {'T', [&] { instance->controls[state::kMix] = 12.5f; }},
            {'d', [&] { instance->deactivate(); }},
            {'a', [&] { instance->activate(); }},
        };
        for (const char call : order) calls.at(call)();
        for (int i = 0; i < 60; ++i) instance->run(1024);
        const Saved after = instance->saved();
        const bool touched = order.back() == 'T';  // by the user, in the first second
        EXPECT_EQ(instance->value(state::kMix) == 0.125f, touched);
        if (!touched) {
            EXPECT_TRUE(after.at(id(lv2::kStateKey)).bytes == saved.at(id(lv2::kStateKey)).bytes);
        }
        instance->controls[state::kSize] = 62.5f;  // from now on it counts
        instance->run(64);
        EXPECT_EQ(instance->value(state::kSize), 0.625f);
    }
}

TEST_F(Lv2, RefusesEveryOtherStateAndChangesNothing) {
    const auto instance = make();
    instance->send(0, {0xC0, 3});
    instance->run(64);
    const std::string good = instance->state();
    std::vector<Saved> all = {{}, {{id(lv2::kStateKey), {good, id(LV2_ATOM__String)}}}};
    for (const std::string& bytes : {std::string(), good + '\0', "QZS1\x80" + good.substr(5)}) {
        all.push_back({{id(lv2::kStateKey), {bytes, id(LV2_ATOM__Chunk)}}});
    }
    for (const int program : {-1, 128, 1 << 30}) all.push_back(instance->preset(program));
    all.push_back({{id(lv2::kProgramKey), {"1", id(LV2_ATOM__Int)}}});
    all.push_back({{id(lv2::kProgramKey), {std::string(4, '\1'), id(LV2_ATOM__Float)}}});
    for (const Saved& saved : all) {
        EXPECT_NE(instance->restore(saved), LV2_STATE_SUCCESS);
        EXPECT_TRUE(instance->state() == good);
    }
    // Ports that make no sense do no harm.
    Saved saved = instance->saved();
    std::string& ports = saved[id(lv2::kPortsKey)].bytes;
    for (const std::string& bytes : {ports.substr(0, 8) + std::string(168, '\xFF'),
                                     std::string(8 + 168, '\xFF'), std::string("?")}) {
        ports = bytes;
        EXPECT_EQ(instance->restore(saved), LV2_STATE_SUCCESS);
        instance->run(64);
        EXPECT_TRUE(instance->state() == good);
    }
    instance->controls[state::kSize] = 62.5f;
    instance->run(64);
    EXPECT_EQ(instance->value(state::kSize), 0.625f);
}

TEST_F(Lv2, AsksForPortsThatShowWhatItHas) {
    host_.takesRequests = true;
    const auto instance = make();
    instance->run(64);
    EXPECT_TRUE(host_.requests.empty());
    instance->send(5, {0xC0, 72});
    instance->run(64);
    EXPECT_FALSE(host_.requests.empty());
    instance->run(64);
    EXPECT_TRUE(instance->portsAgree());
    EXPECT_TRUE(host_.requests.empty());
    EXPECT_EQ(instance->program(), 72);

    // A state that was saved where nobody asked.
    EXPECT_EQ(instance->restore(oddState()), LV2_STATE_SUCCESS);
    for (int i = 0; i < 60; ++i) instance->run(1024);
    EXPECT_EQ(instance->program(), 5);
    EXPECT_TRUE(instance->portsAgree());

    // Refused once, it does not insist; what moves then is followed.
    host_.refusesRequests = true;
    instance->send(0, {0xC0, 8});
    instance->run(64);
    EXPECT_FALSE(host_.requests.empty());
    instance->run(64);
    EXPECT_TRUE(host_.requests.empty());
    instance->controls[state::kSize] = 62.5f;
    instance->run(64);
    EXPECT_EQ(instance->value(state::kSize), 0.625f);
}

// "threadSafeRestore": states come and go while the audio thread plays, which wins no bit of them.
TEST_F(Lv2, SavesAndRestoresWhileItPlays) {
    const auto instance = make();
    const Saved first = oddState();
    Saved second = instance->preset(9);
    std::atomic<bool> ends{false};
    std::thread audio([&] {
        for (int i = 0; !ends; ++i) {
            instance->controls[state::kSize] = static_cast<float>(i % 7);
            EXPECT_TRUE(std::isfinite(instance->run(64).peak()));
        }
    });
    for (int i = 0; i < 200; ++i) {
        EXPECT_EQ(instance->restore(i % 2 ? first : second), LV2_STATE_SUCCESS);
        EXPECT_EQ(instance->program(), i % 2 ? 5 : 9);
    }
    ends = true;
    audio.join();
    EXPECT_GT(instance->playedPeak(), 0.01f);
}

TEST_F(Lv2, PlaysThroughBlocksAndListsOfEveryKind) {
    const auto instance = make();
    for (const std::uint32_t frames : {0u, 1u, 17u, 333u, 8192u, 0u, 64u}) instance->run(frames);
    for (const std::int64_t frame :
         {std::int64_t{-1000}, std::int64_t{63}, std::int64_t{1} << 60}) {
        instance->send(frame, {0x90, 60, 100});
        instance->run(64);
        EXPECT_GT(instance->run(4410).peak(), 0.001f) << frame;
        instance->send(frame, {0x80, 60, 0});
        instance->run(64);
    }
    instance->send(0, {0x90, 60, 100});
    instance->run(0);  // waits for the next block
    EXPECT_GT(instance->run(4410).peak(), 0.001f);
    instance->send(0, {0xB0, 120});
    instance->run(4410);

    // Nothing that is no message of a channel plays, and nothing beyond the list is read.
    instance->send(0, {0xF0, 0x7E, 0x90, 60, 100, 0xF7});
    instance->send(0, {0x90, 60, 100, 0});
    instance->send(0, {60, 100});
    instance->send(0, {});
    EXPECT_LT(instance->run(44100).peak(), 1e-4f);
    instance->send(0, {0x90, 60, 100});
    instance->midi().atom.type = id(LV2_ATOM__Chunk);
    EXPECT_LT(instance->run(44100).peak(), 1e-4f);
    for (const std::uint32_t size : {0u, 4u, 8u, 9u, 20u, 26u}) {
        instance->send(0, {0x90, 60, 100});
        instance->midi().atom.size = size;
        EXPECT_LT(instance->run(4410).peak(), 1e-4f) << size;
    }
    instance->send(0, {0x90, 60, 100});
    reinterpret_cast<LV2_Atom_Event*>(&instance->midi() + 1)->body.size = 0xFFFFFFF0;
    EXPECT_LT(instance->run(4410).peak(), 1e-4f);

    // A host need not connect anything.
    for (std::uint32_t port = 0; port <= lv2::kPortCount; ++port) {
        instance->connect(port, nullptr);
        instance->run(64);
    }
    std::vector<float> side(64, NAN);
    instance->connect(lv2::kLeftPort, side.data());
    instance->connect(lv2::kRightPort, nullptr);
    lv2_descriptor(0)->run(instance->handle, 64);
    EXPECT_EQ(side, std::vector<float>(64));
    for (std::uint32_t i = 0; i < lv2::kPortCount; ++i) instance->connect(i, nullptr);
    lv2_descriptor(0)->run(instance->handle, 64);
    instance->connect(lv2::kMidiPort, &instance->midi());
    EXPECT_GT(instance->playedPeak(), 0.01f);
}

TEST_F(Lv2, IsSilentUnlessEnabled) {
    const auto instance = make();
    instance->send(0, {0x90, 60, 100});
    EXPECT_GT(instance->run(44100).peak(), 0.01f);
    instance->controls[lv2::kEnabledPort] = 0.0f;
    instance->send(40, {0x90, 64, 100});
    EXPECT_EQ(instance->run(512).peak(), 0.0f);
    instance->controls[lv2::kEnabledPort] = 1.0f;
    instance->run(64);
    EXPECT_LT(instance->run(4096).peak(), 1e-4f);  // no note hangs
    instance->controls[lv2::kEnabledPort] = 0.0f;
    instance->send(41, {0xC0, 9});
    instance->run(512);
    EXPECT_EQ(instance->program(), 9);
    instance->controls[lv2::kEnabledPort] = 1.0f;
    EXPECT_GT(instance->playedPeak(), 0.01f);
}

TEST_F(Lv2, TakesTheOptionsOfItsHost) {
    const auto instance = make();
    const auto* const options = instance->extension<LV2_Options_Interface>(LV2_OPTIONS__interface);
    ASSERT_TRUE(options);
    const auto set = [&](const char* key, const char* type, auto value) {
        const LV2_Options_Option list[] = {
            {LV2_OPTIONS_INSTANCE, 0, id(key), sizeof value, id(type), &value}, {}};
        return options->set(instance->handle, list);
    };
    const auto rate = [&] {
        LV2_Options_Option list[] = {
            {LV2_OPTIONS_INSTANCE, 0, id(LV2_PARAMETERS__sampleRate), 0, 0, nullptr}, {}};
        EXPECT_EQ(options->get(instance->handle, list), LV2_OPTIONS_SUCCESS);
        return *static_cast<const float*>(list[0].value);
    };
    EXPECT_EQ(rate(), 44100.0f);
    EXPECT_EQ(set(LV2_PARAMETERS__sampleRate, LV2_ATOM__Float, 96000.0f), LV2_OPTIONS_SUCCESS);
    EXPECT_EQ(rate(), 96000.0f);
    EXPECT_EQ(set(LV2_PARAMETERS__sampleRate, LV2_ATOM__Double, double{NAN}), LV2_OPTIONS_SUCCESS);
    EXPECT_EQ(rate(), 96000.0f);
    EXPECT_EQ(set(LV2_BUF_SIZE__maxBlockLength, LV2_ATOM__Int, 64), LV2_OPTIONS_SUCCESS);
    EXPECT_EQ(set(LV2_BUF_SIZE__maxBlockLength, LV2_ATOM__String, 64), LV2_OPTIONS_ERR_BAD_VALUE);
    EXPECT_EQ(set("urn:other", LV2_ATOM__Int, 64), LV2_OPTIONS_ERR_BAD_KEY);
    EXPECT_GT(instance->playedPeak(), 0.01f);
}

}  // namespace
