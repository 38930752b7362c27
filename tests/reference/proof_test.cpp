// Proves that the shipped engine sounds like the literal one, in every golden scene and in random
// ones. QUARZEL_SCENES sets the number of random scenes (default 200).
#include <cstdlib>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "dsp/lanes/kernels.h"
#include "tests/golden/scenes.h"
#include "tests/reference/engine.h"

namespace {

tests::Sound playOn(dsp::InstructionSet set, const Scene& scene, int blockSize) {
    dsp::useInstructionSet(set);
    tests::Sound sound = playScene(scene, blockSize);
    dsp::useInstructionSet(dsp::widestInstructionSet());
    return sound;
}

// Plays the scene with the literal engine, and with the shipped one on every instruction set.
// Returns the loudest sample of the literal engine.
float prove(const Scene& scene, int blockSize) {
    const tests::Sound literal =
        playScene(scene, blockSize, std::make_unique<reference::Engine>(44100.0));
    const tests::Sound baseline = playOn(dsp::InstructionSet::kBaseline, scene, blockSize);
    EXPECT_TRUE(baseline == literal);
    for (const auto set : {dsp::InstructionSet::kAvx2, dsp::InstructionSet::kAvx512}) {
        if (set > dsp::widestInstructionSet()) break;
        EXPECT_TRUE(playOn(set, scene, blockSize) == baseline);
    }
    return literal.peak();
}

TEST(Proof, GoldenScenesSoundLikeTheLiteralEngineOnEveryPath) {
    for (const Scene& scene : scenes()) {
        SCOPED_TRACE(scene.name);
        EXPECT_GT(prove(scene, 200), 0.01f);
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

TEST(Proof, HoldsWhereTheSpringIsShorterThanABlock) {
    const std::vector<SceneSetting> settings = {
        {state::kReverb, 1.0f}, {state::kSpring, 0.5f}, {state::kEnvAttack, 0.0f}};
    const Scene scene = {"lowest rate", 1000.0f, 1.0, settings, {{0.0, {0x90, 40, 100}}}};
    EXPECT_GT(prove(scene, 512), 0.01f);
}

// All slots sound, and end one by one within blocks.
TEST(Proof, HoldsForEachWaveformWhileVoicesEnd) {
    std::vector<SceneEvent> keys;
    for (std::uint8_t key = 48; key < 92; ++key) keys.push_back({0.0, {0x90, key, 100}});
    for (std::uint8_t key = 48; key < 92; ++key) {
        keys.push_back({0.05 + 0.004 * (key - 48), {0x80, key, 0}});
    }
    for (const SceneSetting sound :
         {SceneSetting{state::kVlphs, 0.3f}, {state::kWaveform, 0.5f}, {state::kWaveform, 1.0f}}) {
        SCOPED_TRACE(testing::Message() << sound.index << " at " << sound.value);
        const std::vector<SceneSetting> settings = {
            {state::kConfigs, 0.0f}, {state::kKSplit, 0.0f},     {state::kViolin2, 1.0f},
            {state::kViolin, 0.5f},  {state::kEnvRelease, 0.0f}, sound};
        EXPECT_GT(prove({"voices end", 44100.0f, 0.4, settings, keys}, 100), 0.01f);
    }
}

// In parts, which run at the same time.
constexpr unsigned kParts = 4;

class RandomScenes : public testing::TestWithParam<unsigned> {};

TEST_P(RandomScenes, SoundLikeTheLiteralEngineOnEveryPath) {
    const char* const wanted = std::getenv("QUARZEL_SCENES");
    const unsigned seeds = wanted ? std::stoul(wanted) : 200;
    constexpr int kBlocks[] = {1, 17, 64, 100, 512};
    unsigned heard = 0, played = 0;
    for (unsigned seed = GetParam(); seed < seeds; seed += kParts) {
        ++played;
        SCOPED_TRACE("seed " + std::to_string(seed));
        if (prove(randomScene(seed), kBlocks[seed % 5]) > 0.01f) ++heard;
    }
    EXPECT_GE(heard, played / 2) << "too few scenes sound";
}

INSTANTIATE_TEST_SUITE_P(Proof, RandomScenes, testing::Range(0u, kParts));

}  // namespace
