// Plays notes into an engine, keeps what it renders, and measures it.
#pragma once

#include <complex>
#include <memory>
#include <vector>

#include "engine/engine.h"
#include "tests/support/sound.h"

namespace engine_test {

constexpr double kRate = 44100.0;

using tests::Sound;

double rms(const std::vector<float>& x, std::size_t from = 0);

// Amplitude and phase of the partial at `hz`, through a Hann window that begins at `from`.
std::complex<double> partial(const std::vector<float>& x, std::size_t from, std::size_t window,
                             double hz, double rate = kRate);

// Frequency of the partial within 5 Hz of `hz`, from its phase at two places.
double partialHz(const std::vector<float>& x, double hz, double rate = kRate);

// Equal-tempered frequency of a MIDI key.
double keyHz(int key);

// An engine with a plain patch: every section and effect off, instant attack, full sustain, a
// release of about a hundredth of a second.
class Rig {
  public:
    explicit Rig(double rate = kRate);

    engine::Engine& engine() { return *engine_; }
    // Switches one section on at full level.
    void playOnly(engine::Section section);
    // Adds a section at full level.
    void switchOn(engine::Section section);
    // Switches on chorus, phaser, spring and reverb with full modulation.
    void useEffects();

    void noteOn(int key, int velocity = 127);
    void noteOff(int key);

    Sound render(int frames);
    Sound renderSeconds(double seconds);

  private:
    std::unique_ptr<engine::Engine> engine_;
};

}  // namespace engine_test
