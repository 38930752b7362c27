// Golden audio: compares each scene with the samples and levels in data/.
//
// After an intended change of sound, run with QUARZEL_MINT_GOLDEN=1 to rewrite the files. Review
// the diff of features.csv.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/golden/scenes.h"

namespace {

using tests::Sound;

// Of full scale. Builds for one system agree to the bit. Between systems, the sines and powers of
// the C libraries differ in the last place.
constexpr float kTolerance = 1e-6f;
constexpr int kWindows = 8;
constexpr int kWindowFrames = 256;
constexpr double kLevelSeconds = 0.1;

const std::string kFolder = QUARZEL_GOLDEN_FOLDER "/";

bool minting() {
    return std::getenv("QUARZEL_MINT_GOLDEN") != nullptr;
}

// Equal windows spread over the scene, left and right frame by frame.
std::vector<float> sampled(const Sound& sound) {
    std::vector<float> samples;
    const int frames = static_cast<int>(sound.left.size());
    for (int w = 0; w < kWindows; ++w) {
        const int start = (frames - kWindowFrames) / (kWindows - 1) * w;
        for (int i = start; i < start + kWindowFrames; ++i) {
            samples.push_back(sound.left[i]);
            samples.push_back(sound.right[i]);
        }
    }
    return samples;
}

std::string fileName(const std::string& scene) {
    std::string name = scene + ".f32";
    for (char& c : name) {
        if (c == ' ' || c == ',') c = '_';
    }
    return name;
}

void writeSamples(const std::string& path, const std::vector<float>& samples) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(float));
}

// Reads exactly `count` samples; empty on failure.
std::vector<float> readSamples(const std::string& path, std::size_t count) {
    std::ifstream file(path, std::ios::binary);
    std::vector<float> samples(count);
    file.read(reinterpret_cast<char*>(samples.data()), count * sizeof(float));
    if (!file) samples.clear();
    return samples;
}

float largestDifference(const std::vector<float>& a, const std::vector<float>& b) {
    float largest = 0.0f;
    for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::fabs(a[i] - b[i]));
    return largest;
}

// Levels in dBFS to a tenth, one column per kLevelSeconds.
std::string levels(const std::vector<float>& channel, float sampleRate) {
    std::string text;
    const auto stretch = static_cast<std::size_t>(kLevelSeconds * sampleRate);
    for (std::size_t start = 0; start + stretch <= channel.size(); start += stretch) {
        double sum = 0.0;
        for (std::size_t i = start; i < start + stretch; ++i) sum += channel[i] * channel[i];
        const double decibels = std::max(10.0 * std::log10(sum / stretch + 1e-20), -150.0);
        char column[16];
        std::snprintf(column, sizeof column, ",%d.%d", static_cast<int>(decibels),
                      static_cast<int>(std::fabs(decibels) * 10.0) % 10);
        text += column;
    }
    return text;
}

std::string features(const Scene& scene, const Sound& sound) {
    return std::string(scene.name) + ",left" + levels(sound.left, scene.sampleRate) + "\n" +
           scene.name + ",right" + levels(sound.right, scene.sampleRate) + "\n";
}

class Golden : public testing::TestWithParam<int> {};

TEST_P(Golden, SceneIsUnchanged) {
    const Scene& scene = scenes()[GetParam()];
    SCOPED_TRACE(scene.name);
    const Sound sound = playScene(scene, 64);
    const Sound again = playScene(scene, 64);
    EXPECT_TRUE(sound == again) << "does not repeat";
    const std::vector<float> samples = sampled(sound);
    if (minting()) {
        writeSamples(kFolder + fileName(scene.name), samples);
        const auto mode = GetParam() == 0 ? std::ios::trunc : std::ios::app;
        std::ofstream(kFolder + "features.csv", mode) << features(scene, sound);
        return;
    }
    const auto golden = readSamples(kFolder + fileName(scene.name), samples.size());
    ASSERT_FALSE(golden.empty()) << "no golden samples, or too few";
    EXPECT_LE(largestDifference(samples, golden), kTolerance);

    std::ifstream table(kFolder + "features.csv");
    std::stringstream kept;
    kept << table.rdbuf();
    EXPECT_NE(kept.str().find(features(scene, sound)), std::string::npos) << "levels now:\n"
                                                                          << features(scene, sound);
}

#ifndef QUARZEL_CROSS_BUILD
// Wide rather than deep: a few samples of many performances. A wrong note or setting changes them.
TEST(GoldenWide, RandomScenesAreUnchanged) {
    constexpr int kScenes = 200;
    constexpr int kSamples = 16;
    const std::string path = kFolder + "random_scenes.f32";
    const auto golden = readSamples(path, kScenes * kSamples);
    std::vector<float> samples;
    for (int seed = 0; seed < kScenes; ++seed) {
        const Sound sound = playScene(randomScene(seed), 64);
        for (int i = 1; i <= kSamples; ++i) {
            samples.push_back(sound.left[sound.left.size() * i / kSamples - 1]);
        }
    }
    if (minting()) return writeSamples(path, samples);
    ASSERT_FALSE(golden.empty()) << "no golden samples, or too few";
    for (std::size_t i = 0; i < samples.size(); ++i) {
        EXPECT_NEAR(samples[i], golden[i], kTolerance) << "seed " << i / kSamples;
    }
}
#endif

// Compares every sample of a scene: the Linux build writes them, the Windows build reads them.
TEST_P(Golden, SystemsAgree) {
    const Scene& scene = scenes()[GetParam()];
    SCOPED_TRACE(scene.name);
    const Sound sound = playScene(scene, 64);
    std::vector<float> samples = sound.left;
    samples.insert(samples.end(), sound.right.begin(), sound.right.end());
    const std::string path = QUARZEL_NATIVE_SOUND_FOLDER "/" + fileName(scene.name);
#ifdef QUARZEL_CROSS_BUILD
    const auto native = readSamples(path, samples.size());
    if (native.empty()) GTEST_SKIP() << "no sound of a native build in " << path;
    EXPECT_LE(largestDifference(samples, native), kTolerance);
#else
    writeSamples(path, samples);
    EXPECT_EQ(readSamples(path, samples.size()), samples);
#endif
}

INSTANTIATE_TEST_SUITE_P(Scenes, Golden, testing::Range(0, static_cast<int>(scenes().size())));

}  // namespace
