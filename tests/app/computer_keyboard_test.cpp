// The computer keyboard: the note of each key, and that every note ends.
#include "app/computer_keyboard.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Messages = std::vector<host::MidiMessage>;

constexpr int kZ = 52, kComma = 59, kQ = 24, kY = 29, kPageUp = 112, kPageDown = 117, kSpace = 65;

TEST(ComputerKeyboard, PlaysByPlaceAndEndsWhatItBegan) {
    Messages sent;
    app::ComputerKeyboard keyboard([&](const auto& message) { sent.push_back(message); });
    const struct {
        int place;
        unsigned char key;
    } cases[] = {{kZ, 48}, {kComma, 60}, {kQ, 60}, {kY, 69}, {35, 79}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.place);
        sent.clear();
        keyboard.press(c.place);
        keyboard.press(c.place);  // key repeat
        keyboard.release(c.place);
        keyboard.release(c.place);
        EXPECT_EQ(sent, (Messages{{0x90, c.key, 100}, {0x80, c.key, 0}}));
    }
    sent.clear();
    for (const int place : {kSpace, 0, -1, 256, 100000}) {
        keyboard.press(place);
        keyboard.release(place);
    }
    EXPECT_TRUE(sent.empty());
}

TEST(ComputerKeyboard, MovesByOctavesWithinTheKeysThereAre) {
    Messages sent;
    app::ComputerKeyboard keyboard([&](const auto& message) { sent.push_back(message); });
    keyboard.press(kQ);
    keyboard.press(kPageUp);
    keyboard.press(kY);
    keyboard.release(kQ);  // ends the note it started, an octave lower
    keyboard.releaseAll();
    EXPECT_EQ(sent, (Messages{{0x90, 60, 100}, {0x90, 81, 100}, {0x80, 60, 0}, {0x80, 81, 0}}));

    sent.clear();
    for (int i = 0; i < 20; ++i) keyboard.press(kPageUp);
    keyboard.press(35);
    for (int i = 0; i < 20; ++i) keyboard.press(kPageDown);
    keyboard.press(kZ);
    EXPECT_EQ(sent, (Messages{{0x90, 127, 100}, {0x90, 0, 100}}));
}

}  // namespace
