// One cycle of the bowed-string wave, and 128 band-limited copies of it, one per MIDI note.
#pragma once

#include <array>
#include <cstddef>

namespace dsp {

constexpr int kCyclePoints = 400;
constexpr int kNumNotes = 128;

// Ends with a repeat of the first point, so that interpolation never wraps.
using WaveCycle = std::array<float, kCyclePoints + 1>;

// The designed cycle with all its harmonics, within -1..1.
WaveCycle rawStringCycle();

// Equal-tempered frequencies of MIDI notes 0..127, in Hz, from 8.175798915636872 Hz up.
const std::array<double, kNumNotes>& noteFrequencies();

// The columns, shared by the whole process. The first call of shared() builds them, so make that
// call on a control thread.
class StringWavetable {
  public:
    static const StringWavetable& shared();

    // The cycle for a MIDI note 0..127 at kDesignRate and above. It has no DC, and its harmonics
    // are limited so that no image audibly folds back below kCleanHz under a bend of two semitones.
    const WaveCycle& column(int note) const { return columns_[static_cast<std::size_t>(note)]; }

    static constexpr double kDesignRate = 44100.0;
    static constexpr double kCleanHz = 16000.0;

  private:
    StringWavetable();
    std::array<WaveCycle, kNumNotes> columns_;
};

}  // namespace dsp
