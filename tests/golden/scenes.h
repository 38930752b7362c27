// Named scenes: short performances that every build must render identically.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "state/parameters.h"
#include "tests/support/sound.h"

struct SceneSetting {
    int index;
    float value;
};

struct SceneEvent {
    double seconds;
    std::uint8_t message[3];
};

struct Scene {
    const char* name;
    float sampleRate;  // Hz
    double seconds;
    std::vector<SceneSetting> settings;  // sent before the first block
    std::vector<SceneEvent> events;      // in order of time
};

const std::vector<Scene>& scenes();
// Any settings, notes and controllers; a quarter of a second.
Scene randomScene(unsigned seed);

// Plays the scene in blocks of `blockSize` frames.
tests::Sound playScene(const Scene& scene, int blockSize);
// Uses the given engine.
tests::Sound playScene(const Scene& scene, int blockSize,
                       std::unique_ptr<engine::SoundEngine> engine);
