// Settings of the pitched wavetable oscillator.
#include "dsp/pitched_oscillator.h"

#include <algorithm>
#include <cmath>

#include "dsp/finite.h"
#include "dsp/one_pole.h"

namespace dsp {
namespace {

// The high-pass corner is half the fundamental, up to this limit: it removes only what lies below
// the note.
constexpr double kMaxHighPassHz = 250.0;

// Moves up one column for each semitone, rounded up, by which the rate is below the design rate.
int columnFor(int note, double sampleRate) {
    if (sampleRate >= StringWavetable::kDesignRate) return note;
    const double semitones = 12.0 * std::log2(StringWavetable::kDesignRate / sampleRate);
    return std::min(note + static_cast<int>(std::ceil(semitones)), kNumNotes - 1);
}

}  // namespace

PitchedOscillator::PitchedOscillator() : table_(&StringWavetable::shared()) {
    update();
}

void PitchedOscillator::setRate(double sampleRate) {
    if (!isUsableRate(sampleRate)) return;
    sampleRate_ = sampleRate;
    update();
}

void PitchedOscillator::setNote(int midiNote) {
    note_ = std::clamp(midiNote, 0, kNumNotes - 1);
    update();
}

void PitchedOscillator::update() {
    const double hz = noteFrequencies()[static_cast<std::size_t>(note_)];
    column_ = table_->column(columnFor(note_, sampleRate_)).data();
    step_ = kCyclePoints * hz / sampleRate_;
    const double highPassHz = std::min(0.5 * hz, kMaxHighPassHz);
    coefficient_ = std::min(cornerCoefficient(highPassHz, sampleRate_), 1.0f);
}

}  // namespace dsp
