// The parameters as hosts count them: those of the instrument, and the program.
#pragma once

#include "plugin/clap/extensions.h"
#include "state/parameters.h"

namespace clap {

// Ids of the instrument's parameters are their indices.
inline constexpr Id kProgramId = 100;

inline constexpr uint32_t kParameterCount = state::kNumParams + 1;

constexpr bool isInstrumentId(Id id) {
    return id < static_cast<Id>(state::kNumParams);
}
constexpr bool isKnownId(Id id) {
    return isInstrumentId(id) || id == kProgramId;
}

// `index` is 0..kParameterCount - 1. The default is left to the caller.
ParamInfo parameterInfo(uint32_t index);

// Limits a host's value to those of the parameter, in whole steps where it has steps.
double limitedPlain(Id id, double plain);

// A value as the host counts it: the position of a switch or list, else the value itself; and back.
double plainOf(int index, float value);
float valueOf(int index, double plain);

}  // namespace clap
