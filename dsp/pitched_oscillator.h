// Wavetable oscillator that plays a note from the bowed-string columns.
#pragma once

#include "dsp/string_wavetable.h"

namespace dsp {

// Construct on a control thread: the first one in the process builds the columns.
class PitchedOscillator {
  public:
    PitchedOscillator();

    void setRate(double sampleRate);
    // MIDI note, limited to 0..127. Phase and filter state stay.
    void setNote(int midiNote);
    void clear() {
        state_.position = 0.0;
        state_.low = 0.0f;
    }

    // One sample; bendRatio multiplies the frequency. At half the rate and above, and for NaN, the
    // phase stops and the high-pass fades the output.
    float tick(double bendRatio) {
        const int row = static_cast<int>(state_.position);
        const float fraction = static_cast<float>(state_.position - row);
        const float here = column_[row];
        const float x = here + (column_[row + 1] - here) * fraction;
        state_.position += step(bendRatio);
        if (state_.position >= kCyclePoints) state_.position -= kCyclePoints;
        state_.low += (x - state_.low) * coefficient_;
        return x - state_.low;
    }

    // What tick works on.
    struct State {
        double position = 0.0;  // rows, 0 <= position < 400
        float low = 0.0f;
    };
    const State& state() const { return state_; }
    void setState(const State& state) { state_ = state; }
    const float* column() const { return column_; }
    double step(double bendRatio) const {  // rows per sample
        const double bent = step_ * bendRatio;
        return bent >= 0.0 && bent < kCyclePoints / 2 ? bent : 0.0;
    }
    float coefficient() const { return coefficient_; }  // of the high-pass

  private:
    void update();

    const StringWavetable* table_;
    const float* column_;
    State state_;
    double step_ = 0.0;  // rows per sample, without bend
    float coefficient_ = 0.0f;
    double sampleRate_ = 44100.0;
    int note_ = 60;
};

}  // namespace dsp
