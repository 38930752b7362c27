// The rows of samples that the stages of the chain pass to one another: a segment between events.
#pragma once

#include <array>

#include "dsp/lanes/kernels.h"
#include "engine/sound_engine.h"

namespace engine {

static_assert(kLongestSegment <= dsp::kMostFrames);

// Room for whole vectors: what stands behind a segment's frames means nothing.
constexpr int kRowStride = kLongestSegment + 8;
struct alignas(32) Signal : std::array<float, kRowStride> {};

struct StereoSignal {
    Signal left;
    Signal right;
};

}  // namespace engine
