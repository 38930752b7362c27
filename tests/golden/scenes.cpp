// The scenes and their playback.
#include "tests/golden/scenes.h"

#include <algorithm>
#include <random>
#include <memory>
#include <utility>

#include "engine/engine.h"
#include "instrument/instrument.h"

namespace {

using namespace state;

std::vector<SceneEvent> chord(double on, double off, const std::vector<int>& keys,
                              int velocity = 100) {
    std::vector<SceneEvent> events;
    const auto v = static_cast<std::uint8_t>(velocity);
    for (const int key : keys) events.push_back({on, {0x90, static_cast<std::uint8_t>(key), v}});
    for (const int key : keys) events.push_back({off, {0x80, static_cast<std::uint8_t>(key), 0}});
    return events;
}

std::vector<SceneEvent> joined(const std::vector<std::vector<SceneEvent>>& parts) {
    std::vector<SceneEvent> events;
    for (const auto& part : parts) events.insert(events.end(), part.begin(), part.end());
    std::stable_sort(events.begin(), events.end(), [](const SceneEvent& a, const SceneEvent& b) {
        return a.seconds < b.seconds;
    });
    return events;
}

const std::vector<int> kTriad = {60, 64, 67};

}  // namespace

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> all = {
        {"first chord", 44100.0f, 1.5, {}, chord(0.0, 1.0, kTriad)},
        {"own envelopes with velocity",
         44100.0f,
         1.2,
         {{kConfigs, 0.0f}, {kVelocityAmp, 1.0f}, {kViolin, 0.6f}, {kEnvAttack, 0.1f}},
         joined({chord(0.0, 0.5, {48}, 30), chord(0.2, 0.7, {72}, 127), chord(0.4, 0.9, {90})})},
        {"bass glides under a split",
         44100.0f,
         1.5,
         {{kContrabass2, 1.0f}, {kCello2, 1.0f}, {kKSplit, 0.6f}, {kChorus, 0.0f}},
         joined({chord(0.0, 1.2, {36}), chord(0.3, 0.6, {40}), chord(0.5, 1.0, {67, 71})})},
        {"table waveform",
         44100.0f,
         1.0,
         {{kWaveform, 0.5f}, {kViolin, 0.5f}, {kEnvAttack, 0.2f}},
         chord(0.0, 0.7, {36, 60, 76})},
        {"squared feedback waveform",
         44100.0f,
         1.0,
         {{kWaveform, 1.0f}, {kViolin, 0.5f}, {kEnvAttack, 0.2f}},
         chord(0.0, 0.7, {36, 60, 76})},
        {"brass and horn with breath",
         44100.0f,
         1.0,
         {{kBrass, 0.9f}, {kHorn, 0.8f}, {kViola2, 0.0f}, {kHP, 0.0f}, {kEnvAttack, 0.1f}},
         chord(0.0, 0.7, {43, 55, 62})},
        {"phaser with its low-pass",
         44100.0f,
         1.5,
         {{kPhaser, 1.0f}, {kStages, 0.8f}, {kAmnt, 0.7f}, {kRate, 0.6f}},
         chord(0.0, 1.2, kTriad)},
        {"spring and hall tail",
         44100.0f,
         2.0,
         {{kReverb, 1.0f}, {kSpring, 0.8f}, {kSize, 0.6f}, {kEnvAttack, 0.1f}},
         chord(0.0, 0.5, kTriad)},
        {"half sustain, little spring and a low split",
         44100.0f,
         1.5,
         {{kEnvAttack, 0.1f},
          {kEnvDecay, 0.0f},
          {kEnvSustain, 0.4f},
          {kConfigs, 0.0f},
          {kContrabass2, 1.0f},
          {kCello2, 1.0f},
          {kKSplit, 0.3f},
          {kReverb, 1.0f},
          {kSize, 0.9f},
          {kSpring, 0.4f}},
         joined({chord(0.0, 0.9, {44, 45}), chord(0.3, 1.0, kTriad, 60)})},
        {"everything at 96 kHz",
         96000.0f,
         1.0,
         {{kViolin, 1.0f},
          {kBrass, 0.8f},
          {kHorn, 0.8f},
          {kContrabass2, 1.0f},
          {kCello2, 1.0f},
          {kPhaser, 1.0f},
          {kReverb, 1.0f},
          {kEnvAttack, 0.1f}},
         chord(0.0, 0.6, {36, 48, 60, 64, 67, 72, 79})},
        {"slow rate",
         22050.0f,
         1.0,
         {{kEnvAttack, 0.1f}, {kPhaser, 1.0f}},
         chord(0.0, 0.7, kTriad)},
        {"bend, expression and pedal",
         48000.0f,
         1.5,
         {{kEnvAttack, 0.1f}},
         joined({chord(0.0, 0.4, kTriad),
                 {{0.1, {0xB0, 64, 127}},
                  {0.2, {0xE0, 0, 127}},
                  {0.6, {0xB0, 11, 40}},
                  {0.8, {0xE0, 0, 0}},
                  {1.1, {0xB0, 64, 0}}}})},
        {"program change and all notes off",
         44100.0f,
         1.2,
         {{kEnvAttack, 0.1f}},
         joined({chord(0.0, 1.1, kTriad),
                 {{0.3, {0xC0, 5, 0}}},
                 chord(0.35, 1.1, {55, 72}),
                 {{0.8, {0xB0, 123, 0}}}})},
    };
    return all;
}

Scene randomScene(unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&random](unsigned n) { return random() % n; };
    constexpr float kRates[] = {22050.0f, 44100.0f, 48000.0f, 96000.0f, 192000.0f};
    Scene scene{"random", kRates[below(5)], 0.25, {}, {}};
    for (int index = 0; index < kNumParams; ++index) {
        const float anywhere = static_cast<float>(below(1001)) * 0.001f;
        // Most thresholds lie at a tenth.
        const float tenths = static_cast<float>(below(11)) / 10.0f;
        scene.settings.push_back({index, below(2) ? anywhere : tenths});
    }
    // Usually choose times that take the envelopes through all their stages.
    if (below(4) != 0) scene.settings[kEnvAttack].value = 0.1f;
    scene.settings.push_back({kVoiceCountParam, static_cast<float>(below(5)) * 0.25f});
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

tests::Sound playScene(const Scene& scene, int blockSize) {
    return playScene(scene, blockSize, std::make_unique<engine::Engine>(44100.0));
}

tests::Sound playScene(const Scene& scene, int blockSize,
                       std::unique_ptr<engine::SoundEngine> engine) {
    instrument::Host host;
    const auto instrument = std::make_unique<instrument::Instrument>(host, std::move(engine));
    instrument->start(44100.0);
    instrument->setSampleRate(scene.sampleRate);
    for (const SceneSetting& setting : scene.settings) {
        instrument->setParameter(setting.index, setting.value);
    }
    instrument->resume();

    const int frames = static_cast<int>(scene.seconds * scene.sampleRate);
    tests::Sound sound{std::vector<float>(frames), std::vector<float>(frames)};
    std::size_t next = 0;
    for (int start = 0; start < frames; start += blockSize) {
        const int count = std::min(blockSize, frames - start);
        for (; next < scene.events.size(); ++next) {
            const SceneEvent& event = scene.events[next];
            const int frame = static_cast<int>(event.seconds * scene.sampleRate);
            if (frame >= start + count) break;
            instrument->addMessage(frame - start, event.message);
        }
        instrument->render(&sound.left[start], &sound.right[start], count);
    }
    return sound;
}
