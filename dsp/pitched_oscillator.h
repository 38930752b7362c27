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
        position_ = 0.0;
        low_ = 0.0f;
    }

    // One sample; bendRatio multiplies the frequency. At half the rate and above, and for NaN, the
    // phase stops and the high-pass fades the output.
    float tick(double bendRatio) {
        const int row = static_cast<int>(position_);
        const float fraction = static_cast<float>(position_ - row);
        const float here = column_[row];
        const float x = here + (column_[row + 1] - here) * fraction;
        const double step = step_ * bendRatio;
        if (step >= 0.0 && step < kCyclePoints / 2) position_ += step;
        if (position_ >= kCyclePoints) position_ -= kCyclePoints;
        low_ += (x - low_) * coefficient_;
        return x - low_;
    }

  private:
    void update();

    const StringWavetable* table_;
    const float* column_;
    double position_ = 0.0;  // rows, 0 <= position < 400
    double step_ = 0.0;      // rows per sample, without bend
    float low_ = 0.0f;
    float coefficient_ = 0.0f;
    double sampleRate_ = 44100.0;
    int note_ = 60;
};

}  // namespace dsp
