// The filters of four sections side by side: the formants of brass and horn, and what the basses go
// through.
#pragma once

#include "dsp/dc_blocker.h"
#include "dsp/state_variable_filter.h"
#include "dsp/stereo.h"

namespace dsp {

// A lane a section: contrabass, cello, brass, horn. The type of two sides, which blocks know.
using SectionFloat = StereoFloat;
using SectionMask = StereoMask;

// State-variable filters as they are constructed, whatever the rate. The band of the first stage is
// what brass and horn take; the basses go on through a second one and a DC blocker, where the lanes
// of the other two stay at 0.
class SectionFilters {
  public:
    // Clears the DC blockers.
    void setRate(double sampleRate) {
        dcBlocker_.clear();
        dcBlocker_.setRate(sampleRate);
    }
    void clear() {
        first_ = second_ = Stage();
        dcBlocker_.clear();
    }
    void clearFormants() { first_.keep(Stage(), SectionMask{0, 0, -1, -1}); }
    // Takes the states of the sections whose mask is set.
    void keep(const SectionFilters& from, SectionMask on) {
        first_.keep(from.first_, on);
        second_.keep(from.second_, on);
        dcBlocker_.keep(from.dcBlocker_, on);
    }

    SectionFloat tickFirst(SectionFloat x) {
        first_.tick(x, kCoefficient, kDamping);
        return first_.band;
    }
    // What the first stage hands on to the basses' second.
    SectionFloat low() const { return masked(first_.low, SectionMask{-1, -1, 0, 0}); }
    SectionFloat tickBass(SectionFloat low) {
        second_.tick(low, kCoefficient, kDamping);
        return dcBlocker_.tick(second_.low);
    }

  private:
    static constexpr float kCoefficient = StateVariableFilter::kInitialCoefficient;
    static constexpr float kDamping = StateVariableFilter::kInitialDamping;

    using Stage = StateVariableStage<SectionFloat>;
    Stage first_;
    Stage second_;
    DcBlockerOf<SectionFloat> dcBlocker_;
};

// A run of them. The basses come in as their operators leave them and go out in the first two lanes
// of `bass`; the bus of the other two leaves the bands of brass and horn. A section whose mask is 0
// keeps its state and gives +0 to `bass`.
struct SectionRun {
    SectionFilters& filters;
    SectionMask on;
    SectionFloat levels;     // of the basses
    const float* tone;       // kBassLanes a frame
    const float* amplitude;  // of both basses
    const float* bus;
    SectionFloat* bass;
    float* brassBand;
    float* hornBand;
    int frames;
};

}  // namespace dsp
