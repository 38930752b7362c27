// Maps key positions to notes.
#include "app/computer_keyboard.h"

#include <iterator>

namespace app {
namespace {

constexpr unsigned char kVelocity = 100;
constexpr int kNoPlace = -1;
constexpr int kPageUp = 112;
constexpr int kPageDown = 117;
constexpr int kHighestStep = 31;

// Key codes from C upwards, labelled as on an American keyboard.
constexpr int kLowerRow[] = {52, 39, 53, 40, 54, 55, 42, 56, 43, 57, 44, 58, 59, 46, 60, 47, 61};
//                           Z   S   X   D   C   V   G   B   H   N   J   M   ,   L   .   ;   /
constexpr int kUpperRow[] = {24, 11, 25, 12, 26, 27, 14, 28, 15, 29, 16, 30, 31, 18, 32, 19, 33,
                             //  Q   2   W   3   E   R   5   T   6   Y   7   U   I   9   O   0   P
                             34, 21, 35};
//                           [   =   ]

// Semitones above the lowest key, or kNoPlace.
int stepOf(int code) {
    for (std::size_t i = 0; i < std::size(kLowerRow); ++i) {
        if (kLowerRow[i] == code) return static_cast<int>(i);
    }
    for (std::size_t i = 0; i < std::size(kUpperRow); ++i) {
        if (kUpperRow[i] == code) return static_cast<int>(i) + 12;
    }
    return kNoPlace;
}

static_assert(std::size(kUpperRow) + 12 == kHighestStep + 1);

}  // namespace

void ComputerKeyboard::press(int code) {
    if (code == kPageUp) return shift(1);
    if (code == kPageDown) return shift(-1);
    const int step = stepOf(code);
    if (step == kNoPlace || sounding_[code] != kNoKey) return;
    sounding_[code] = lowestKey_ + step;
    send_({0x90, static_cast<unsigned char>(sounding_[code]), kVelocity});
}

void ComputerKeyboard::release(int code) {
    if (code < 0 || code >= kCodes || sounding_[code] == kNoKey) return;
    send_({0x80, static_cast<unsigned char>(sounding_[code]), 0});
    sounding_[code] = kNoKey;
}

void ComputerKeyboard::releaseAll() {
    for (int code = 0; code < kCodes; ++code) release(code);
}

void ComputerKeyboard::shift(int octaves) {
    const int lowest = lowestKey_ + 12 * octaves;
    if (lowest >= 0 && lowest + kHighestStep <= 127) lowestKey_ = lowest;
}

}  // namespace app
