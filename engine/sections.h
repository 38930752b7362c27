// The six sections of the ensemble, with the levels and switches that parameters set.
#pragma once

#include <array>

namespace engine {

enum Section { kViola, kViolin, kBrass, kHorn, kContrabass, kCello, kNumSections };

// Switch parameters are on above one half.
constexpr bool isOn(float control) {
    return control > 0.5f;
}

struct Sections {
    std::array<float, kNumSections> level{};  // gain
    std::array<bool, kNumSections> on{};
};

}  // namespace engine
