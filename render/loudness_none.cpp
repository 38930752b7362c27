// A build without a library that measures loudness.
#include "render/loudness.h"

namespace render {

struct Loudness::Analysis {};

bool canMeasureLoudness() {
    return false;
}

Loudness::Loudness(int, int) {}
Loudness::~Loudness() = default;

void Loudness::hear(const float*, std::size_t) {}

std::optional<double> Loudness::lufs() const {
    return std::nullopt;
}

}  // namespace render
