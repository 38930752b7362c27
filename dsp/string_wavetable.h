// The single cycle of the bowed-string wave, and its 128 band-limited columns, one a MIDI note.
#pragma once

#include <array>
#include <cstddef>

namespace dsp {

constexpr int kCyclePoints = 400;
constexpr int kNumNotes = 128;

// 400 points and a repeat of the first, so that interpolation never wraps.
using WaveCycle = std::array<float, kCyclePoints + 1>;

// The cycle as designed, within -1 .. 1, with all its harmonics.
WaveCycle rawStringCycle();

// Equal-tempered frequency of a MIDI note 0 .. 127, in Hz, upwards from 8.175798915636872 Hz.
const std::array<double, kNumNotes>& noteFrequencies();

// The columns of the process. Built at the first call, which therefore belongs on a control
// thread; read-only afterwards.
class StringWavetable {
  public:
    static const StringWavetable& shared();

    // The cycle for a MIDI note 0 .. 127 at 44.1 kHz and above: no DC, and harmonics only as far
    // as no image audibly folds back below kCleanHz when bent up by two semitones.
    const WaveCycle& column(int note) const { return columns_[static_cast<std::size_t>(note)]; }

    static constexpr double kDesignRate = 44100.0;
    static constexpr double kCleanHz = 16000.0;

  private:
    StringWavetable();
    std::array<WaveCycle, kNumNotes> columns_;
};

}  // namespace dsp
