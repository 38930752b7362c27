// The fixed meanings of MIDI messages.
#pragma once

#include <cstdint>

#include "engine/sound_engine.h"

namespace instrument {

constexpr int kControlChange = 0xB0;
constexpr int kProgramChange = 0xC0;

// Controllers.
constexpr int kExpression = 11;
constexpr int kSustainPedal = 64;
constexpr int kAllNotesOff = 123;

// The status without its channel; all channels are equal.
constexpr int statusOf(const std::uint8_t* message) {
    return message[0] & 0xF0;
}

// Resets what the controller's fixed meaning controls: 11 returns to full expression, 64 lifts the
// pedal. Call it for a controller that is bound to a parameter and so has lost its fixed meaning.
inline void letGo(engine::SoundEngine& engine, int controller) {
    if (controller == kExpression) engine.setExpression(1.0f);
    if (controller == kSustainPedal) engine.setPedal(false);
}

// Plays a note, a pitch bend or a controller with a fixed meaning; ignores everything else. Only
// the low seven bits of data bytes count.
void playMessage(engine::SoundEngine& engine, const std::uint8_t* message);

}  // namespace instrument
