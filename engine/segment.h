// The signals that the stages of the chain pass on, one segment between events at a time.
#pragma once

#include <array>

#include "dsp/lanes/kernels.h"
#include "engine/sound_engine.h"

namespace engine {

static_assert(kLongestSegment <= dsp::kMostFrames);

// Room for whole vectors. Values after the last frame of a segment are meaningless.
constexpr int kRowStride = kLongestSegment + dsp::kMostLanes;
struct alignas(dsp::kVectorBytes) Signal : std::array<float, kRowStride> {};

// Frames of a segment that some stages render at a time.
struct SegmentPart {
    int from;
    int frames;
};

struct StereoSignal {
    Signal left;
    Signal right;
};

}  // namespace engine
