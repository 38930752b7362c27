// The fixed meanings of MIDI messages.
#pragma once

#include <cstdint>

#include "engine/sound_engine.h"

namespace instrument {

constexpr int kControlChange = 0xB0;
constexpr int kProgramChange = 0xC0;

constexpr int kAllNotesOff = 123;  // controller

// The message without its channel: all channels are alike.
constexpr int statusOf(const std::uint8_t* message) {
    return message[0] & 0xF0;
}

// What the controller's fixed meaning holds goes back to rest: 11 to full expression, 64 to a pedal
// that is up. For a controller that is bound, and so has no fixed meaning any more.
void letGo(engine::SoundEngine& engine, int controller);

// Plays a note, a pitch bend or a controller that has a meaning of its own. Everything else is
// ignored. Data bytes have seven bits.
void playMessage(engine::SoundEngine& engine, const std::uint8_t* message);

}  // namespace instrument
