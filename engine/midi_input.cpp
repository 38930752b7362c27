// The meaning of each MIDI message.
#include "engine/midi_input.h"

namespace engine {

namespace {

constexpr int kExpression = 11;
constexpr int kSustainPedal = 64;
constexpr int kAllSoundOff = 120;
constexpr int kResetControllers = 121;
constexpr int kAllNotesOff = 123;

void handleController(SoundEngine& engine, MidiListener& listener, int controller, int value) {
    const bool bound = listener.controlChange(controller, value);
    if (bound && controller != kAllNotesOff) return letGo(engine, controller);
    switch (controller) {
        case kExpression:
            engine.setExpression(static_cast<float>(value) / 127.0f);
            break;
        case kSustainPedal:
            engine.setPedal(value >= 64);
            break;
        case kAllSoundOff:
            engine.allSoundOff();
            break;
        case kResetControllers:
            engine.resetControllers();
            break;
        case kAllNotesOff:
            engine.allNotesOff();
            break;
        default:
            break;
    }
}

}  // namespace

void letGo(SoundEngine& engine, int controller) {
    if (controller == kExpression) engine.setExpression(1.0f);
    if (controller == kSustainPedal) engine.setPedal(false);
}

void handleMidi(SoundEngine& engine, MidiListener& listener, const std::uint8_t* message) {
    const int data1 = message[1] & 0x7F;
    const int data2 = message[2] & 0x7F;
    engine.wake();
    switch (message[0] & 0xF0) {
        case 0x80:
            engine.noteOff(data1);
            break;
        case 0x90:
            if (data2 > 0) {
                engine.noteOn(data1, data2);
            } else {
                engine.noteOff(data1);
            }
            break;
        case 0xB0:
            handleController(engine, listener, data1, data2);
            break;
        case 0xC0:
            listener.programChange(data1);
            break;
        case 0xE0:
            engine.setPitchBend(data2);
            break;
        default:
            break;
    }
}

}  // namespace engine
