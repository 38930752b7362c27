// Translates MIDI bytes into calls of the engine.
#include "instrument/midi_messages.h"

namespace instrument {

namespace {

constexpr int kAllSoundOff = 120;
constexpr int kResetControllers = 121;

void playController(engine::SoundEngine& engine, int controller, int value) {
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

void playMessage(engine::SoundEngine& engine, const std::uint8_t* message) {
    const int data1 = message[1] & 0x7F;
    const int data2 = message[2] & 0x7F;
    switch (statusOf(message)) {
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
        case kControlChange:
            playController(engine, data1, data2);
            break;
        case 0xE0:
            engine.setPitchBend(data2);
            break;
        default:
            break;
    }
}

}  // namespace instrument
