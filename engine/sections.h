// The six sections of the ensemble: their levels and switches as parameters set them.
#pragma once

#include <array>

namespace engine {

enum Section { kViola, kViolin, kBrass, kHorn, kContrabass, kCello, kNumSections };

// A switch parameter is on above one half.
constexpr bool isOn(float control) {
    return control > 0.5f;
}

struct Sections {
    std::array<float, kNumSections> level{};  // gain, as the chain uses it
    std::array<bool, kNumSections> on{};
};

}  // namespace engine
