// Proves that the shipped engine sounds like the literal one, in every golden scene and in random
// ones. QUARZEL_SCENES sets the number of random scenes (default 200).
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "dsp/lanes/kernels.h"
#include "tests/golden/scenes.h"
#include "tests/reference/engine.h"

namespace {

StereoSound playOn(dsp::InstructionSet set, const Scene& scene, int blockSize) {
    dsp::useInstructionSet(set);
    StereoSound sound = playScene(scene, blockSize);
    dsp::useInstructionSet(dsp::widestInstructionSet());
    return sound;
}

bool sameBits(const StereoSound& a, const StereoSound& b) {
    const auto same = [](const std::vector<float>& x, const std::vector<float>& y) {
        return std::memcmp(x.data(), y.data(), x.size() * sizeof(float)) == 0;
    };
    return same(a.left, b.left) && same(a.right, b.right);
}

// Plays the scene with the literal engine, and with the shipped one on every instruction set.
// Returns the loudest sample of the literal engine.
float prove(const Scene& scene, int blockSize) {
    const StereoSound literal =
        playScene(scene, blockSize, std::make_unique<reference::Engine>(44100.0));
    const StereoSound baseline = playOn(dsp::InstructionSet::kBaseline, scene, blockSize);
    EXPECT_TRUE(sameBits(baseline, literal));
    for (const auto set : {dsp::InstructionSet::kAvx2, dsp::InstructionSet::kAvx512}) {
        if (set > dsp::widestInstructionSet()) break;
        EXPECT_TRUE(sameBits(playOn(set, scene, blockSize), baseline));
    }
    float loudest = 0.0f;
    for (const float x : literal.left) loudest = std::max(loudest, std::fabs(x));
    return loudest;
}

Scene randomScene(unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&random](unsigned n) { return random() % n; };
    constexpr float kRates[] = {22050.0f, 44100.0f, 48000.0f, 96000.0f, 192000.0f};
    Scene scene{"random", kRates[below(5)], 0.25, {}, {}};
    for (int index = 0; index < state::kNumParams; ++index) {
        const float anywhere = static_cast<float>(below(1001)) * 0.001f;
        // Most thresholds lie at a tenth.
        const float tenths = static_cast<float>(below(11)) / 10.0f;
        scene.settings.push_back({index, below(2) ? anywhere : tenths});
    }
    // Usually choose times that take the envelopes through all their stages.
    if (below(4) != 0) scene.settings[state::kEnvAttack].value = 0.1f;
    scene.settings.push_back({state::kVoiceCountParam, static_cast<float>(below(5)) * 0.25f});
    const unsigned count = 1 + below(60);
    for (unsigned i = 0; i < count; ++i) {
        const auto data1 = static_cast<std::uint8_t>(below(104) + 12);
        const auto data2 = static_cast<std::uint8_t>(below(128));
        constexpr std::uint8_t kStatus[] = {0x90, 0x90, 0x90, 0x90, 0x80, 0x80, 0xE0, 0xB0, 0xC0};
        const std::uint8_t status = kStatus[below(9)];
        constexpr std::uint8_t kControllers[] = {11, 64, 64, 123, 1, 120, 121};
        SceneEvent event{below(1000) * 0.00025, {status, data1, data2}};
        if (status == 0xB0) event.message[1] = kControllers[below(7)];
        if (status == 0xC0 && below(3) != 0) continue;
        scene.events.push_back(event);
    }
    std::stable_sort(
        scene.events.begin(), scene.events.end(),
        [](const SceneEvent& a, const SceneEvent& b) { return a.seconds < b.seconds; });
    return scene;
}

TEST(Proof, GoldenScenesSoundLikeTheLiteralEngineOnEveryPath) {
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        EXPECT_GT(prove(scene, 64), 0.01f);
    }
}

TEST(Proof, HoldsOnBothSidesOfEachThreshold) {
    const struct {
        int index;
        float below, above;
    } rows[] = {{state::kSpring, 0.1f, 0.101f},   {state::kSpring, 0.3f, 0.301f},
                {state::kSpring, 0.7f, 0.701f},   {state::kSize, 0.7f, 0.701f},
                {state::kStages, 0.249f, 0.25f},  {state::kStages, 0.499f, 0.5f},
                {state::kHP, 0.009f, 0.01f},      {state::kConfigs, 0.5f, 0.501f},
                {state::kViola2, 0.5f, 0.501f},   {state::kCello2, 0.5f, 0.501f},
                {state::kWaveform, 0.499f, 0.5f}, {state::kWaveform, 0.999f, 1.0f}};
    for (const auto& row : rows) {
        for (const float value : {row.below, row.above}) {
            SCOPED_TRACE(testing::Message() << row.index << " at " << value);
            const std::vector<SceneSetting> settings = {{state::kPhaser, 1.0f},
                                                        {state::kReverb, 1.0f},
                                                        {state::kSpring, 0.5f},
                                                        {state::kEnvAttack, 0.0f},
                                                        {row.index, value}};
            const float rate = value == row.below ? 88100.0f : 88200.0f;  // another threshold
            prove({"threshold", rate, 0.3, settings, {{0.0, {0x90, 40, 100}}}}, 64);
        }
    }
}

TEST(Proof, RandomScenesSoundLikeTheLiteralEngineOnEveryPath) {
    const char* const wanted = std::getenv("QUARZEL_SCENES");
    const unsigned seeds = wanted ? std::stoul(wanted) : 200;
    constexpr int kBlocks[] = {1, 17, 64, 100, 512};
    unsigned heard = 0;
    for (unsigned seed = 0; seed < seeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        if (prove(randomScene(seed), kBlocks[seed % 5]) > 0.01f) ++heard;
    }
    EXPECT_GE(heard, seeds / 2) << "too few scenes sound";
}

}  // namespace
