// What the worklet tells the page about the sound: a list of numbers, some thirty times a second.
#pragma once

#include "engine/ensemble_chorus.h"

namespace web {

constexpr int kKeysPerNumber = 16;
constexpr int kTaps = engine::EnsembleChorus::kTaps;

enum News : int {
    kPeakLeft,  // largest magnitude since the last news; 1 is full scale
    kPeakRight,
    kHeldNotes,
    kLastKey,  // -1 before the first
    kFirstTap,
    kFirstHeldKeys = kFirstTap + kTaps,  // sixteen keys a number, which a float holds exactly
    kNewsSize = kFirstHeldKeys + 128 / kKeysPerNumber,
};

}  // namespace web
