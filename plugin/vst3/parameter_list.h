// The parameters as hosts count them: those of the instrument, the program, bypass, and one for
// each MIDI controller, by which controllers come in.
#pragma once

#include "plugin/vst3/controller.h"
#include "state/parameters.h"

namespace vst3 {

// Ids of the instrument's parameters are their indices.
inline constexpr ParamID kProgramId = 100;
inline constexpr ParamID kBypassId = 101;
inline constexpr ParamID kFirstControllerId = 1000;  // by number, pressure and bend at the end

inline constexpr UnitID kControllerUnitId = 1;
inline constexpr ProgramListID kProgramListId = 1;

inline constexpr int32 kParameterCount = state::kNumParams + 2 + kCountCtrlNumber;

constexpr bool isInstrumentId(ParamID id) {
    return id < static_cast<ParamID>(state::kNumParams);
}
constexpr bool isControllerId(ParamID id) {
    return id >= kFirstControllerId && id < kFirstControllerId + kCountCtrlNumber;
}
constexpr bool isKnownId(ParamID id) {
    return isInstrumentId(id) || id == kProgramId || id == kBypassId || isControllerId(id);
}

// `index` is 0..kParameterCount - 1. The default of an instrument's parameter is left to the
// caller.
ParameterInfo parameterInfo(int32 index);

// A controller at rest.
double controllerDefault(int controller);

// The MIDI message of a controller at a value of 0..1.
void writeControllerMessage(int controller, double value, uint8* bytes);

}  // namespace vst3
