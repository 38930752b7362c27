// The filters of four sections in lanes: the formants of brass and horn, and the basses' path.
#pragma once

#include "dsp/dc_blocker.h"
#include "dsp/state_variable_filter.h"
#include "dsp/stereo.h"

namespace dsp {

// One lane per section: contrabass, cello, brass, horn. This is the stereo type, so every block
// template accepts it.
using SectionFloat = StereoFloat;
using SectionMask = StereoMask;

// Brass and horn take the band of a first state-variable stage. The basses take its low-pass, which
// continues through a second stage and a DC blocker; the other two lanes stay at 0 there.
// Coefficient and damping are those of a new StateVariableFilter at every rate.
class SectionFilters {
  public:
    // Also clears the DC blockers.
    void setRate(double sampleRate) {
        dcBlocker_.clear();
        dcBlocker_.setRate(sampleRate);
    }
    void clear() {
        first_ = second_ = Stage();
        dcBlocker_.clear();
    }
    void clearFormants() { first_.keep(Stage(), SectionMask{0, 0, -1, -1}); }
    // Copies the states of the sections whose mask is set.
    void keep(const SectionFilters& from, SectionMask on) {
        first_.keep(from.first_, on);
        second_.keep(from.second_, on);
        dcBlocker_.keep(from.dcBlocker_, on);
    }

    // Without input, brass and horn then give +0 and stay as they are.
    bool formantsRest() const {
        const SectionMask moving = (first_.band != 0.0f) | (first_.low != 0.0f);
        return (moving[2] | moving[3]) == 0;
    }

    SectionFloat tickFirst(SectionFloat x) {
        first_.tick(x, kCoefficient, kDamping);
        return first_.band;
    }
    // Input of the basses' second stage.
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

// Arguments of the runSections kernel. `tone` is the output of the bass operators; the filtered
// basses come back in the first two lanes of `bass`. `bus` feeds brass and horn. A section whose
// mask is 0 keeps its state and writes +0 to `bass`.
struct SectionRun {
    SectionFilters& filters;
    SectionMask on;
    SectionFloat levels;     // gains of the basses
    const float* tone;       // kBassLanes per frame
    const float* amplitude;  // shared by both basses
    const float* bus;
    SectionFloat* bass;
    float* brassBand;
    float* hornBand;
    int frames;
};

}  // namespace dsp
