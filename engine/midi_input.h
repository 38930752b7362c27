// Turns MIDI messages into what the engine does; all channels alike.
#pragma once

#include <cstdint>

#include "engine/sound_engine.h"

namespace engine {

// The messages that reach beyond the engine. Called on the audio thread.
class MidiListener {
  public:
    virtual ~MidiListener() = default;
    virtual void programChange(int program) = 0;
    // Both 0..127; true when the controller drives parameters, which takes every fixed meaning from
    // it but "all notes off".
    virtual bool controlChange(int controller, int value) = 0;
};

// What the controller's fixed meaning holds goes back to rest: 11 to full expression, 64 to a pedal
// that is up. For a controller that is bound, and so has no fixed meaning any more.
void letGo(SoundEngine& engine, int controller);

// One message of three bytes. Any message wakes the engine; pressure has no further effect.
void handleMidi(SoundEngine& engine, MidiListener& listener, const std::uint8_t* message);

}  // namespace engine
