// The six sections of the ensemble, with the levels and switches that parameters set.
#pragma once

#include <array>

namespace engine {

enum Section { kViola, kViolin, kBrass, kHorn, kContrabass, kCello, kNumSections };

// Switch parameters are on above one half.
constexpr bool isOn(float control) {
    return control > 0.5f;
}

// The bass plays the keys below; `ratio` as SoundEngine::setKeySplit has it.
constexpr int splitKey(float ratio) {
    return static_cast<int>(ratio * 44.0f + 24.0f);
}

struct Sections {
    std::array<float, kNumSections> level{};  // gain
    std::array<bool, kNumSections> on{};
};

}  // namespace engine
