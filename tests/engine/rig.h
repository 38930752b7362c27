// Plays MIDI into an engine frame by frame, keeps what it renders, and measures it.
#pragma once

#include <complex>
#include <cstdint>
#include <memory>
#include <vector>

#include "engine/engine.h"

namespace engine_test {

constexpr double kRate = 44100.0;

struct Sound {
    std::vector<float> left;
    std::vector<float> right;
};

bool sameBits(const Sound& a, const Sound& b);
bool isFinite(const Sound& sound);
bool isZero(const Sound& sound);
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
    // Switches on chorus, phaser, spring and reverb with full modulation.
    void useEffects();

    // Sends a message before the next frame, or before frame `frame` (from 0) of the next render.
    void send(int status, int data1 = 0, int data2 = 0);
    void sendAt(int frame, int status, int data1 = 0, int data2 = 0);
    void noteOn(int key, int velocity = 127) { send(0x90, key, velocity); }
    void noteOff(int key) { send(0x80, key); }

    Sound render(int frames, int block = 512);
    Sound renderSeconds(double seconds);

  private:
    struct Event {
        int frame;
        std::uint8_t message[3];
    };
    void play(const std::uint8_t* message);

    std::unique_ptr<engine::Engine> engine_;
    std::vector<Event> events_;  // ascending
};

}  // namespace engine_test
