// One record a parameter, and what the hidden ones mean.
#include "plugin/vst3/parameter_list.h"

#include <string>

#include "plugin/vst3/text.h"
#include "state/bank.h"

namespace vst3 {

namespace {

constexpr int kExpression = 11;

ParameterInfo record(ParamID id, const std::string& title, int32 flags, int32 steps) {
    ParameterInfo info{};
    info.id = id;
    copyText(title, info.title);
    copyText(title, info.shortTitle);
    info.stepCount = steps;
    info.unitId = kRootUnitId;
    info.flags = flags;
    return info;
}

ParameterInfo instrumentParameter(int index) {
    const state::Parameter& parameter = state::parameter(index);
    const int positions = parameter.law.positions;
    const int32 list = positions > 2 ? ParameterInfo::kIsList : 0;
    return record(static_cast<ParamID>(index), parameter.title, ParameterInfo::kCanAutomate | list,
                  positions > 0 ? positions - 1 : 0);
}

ParameterInfo controllerParameter(int controller) {
    std::string title = "CC " + std::to_string(controller);
    if (controller == kAfterTouch) title = "Pressure";
    if (controller == kPitchBend) title = "Pitch bend";
    ParameterInfo info =
        record(kFirstControllerId + controller, title, ParameterInfo::kIsHidden, 0);
    info.defaultNormalizedValue = controllerDefault(controller);
    // Hosts take a unit of more than 128 parameters for a mistake.
    if (controller < kAfterTouch) info.unitId = kControllerUnitId;
    return info;
}

}  // namespace

ParameterInfo parameterInfo(int32 index) {
    if (index < state::kNumParams) return instrumentParameter(index);
    switch (index - state::kNumParams) {
        case 0:
            return record(kProgramId, "Program",
                          ParameterInfo::kCanAutomate | ParameterInfo::kIsList |
                              ParameterInfo::kIsProgramChange,
                          state::kNumPrograms - 1);
        case 1:
            return record(kBypassId, "Bypass",
                          ParameterInfo::kCanAutomate | ParameterInfo::kIsBypass, 1);
        default:
            return controllerParameter(index - state::kNumParams - 2);
    }
}

double controllerDefault(int controller) {
    if (controller == kPitchBend) return 0.5;
    return controller == kExpression ? 1.0 : 0.0;
}

void writeControllerMessage(int controller, double value, uint8* bytes) {
    const int seven = static_cast<int>(value * 127.0 + 0.5);
    const int fourteen = static_cast<int>(value * 16383.0 + 0.5);
    bytes[0] = 0xB0;
    bytes[1] = static_cast<uint8>(controller);
    bytes[2] = static_cast<uint8>(seven);
    if (controller == kAfterTouch) {
        bytes[0] = 0xD0;
        bytes[1] = static_cast<uint8>(seven);
        bytes[2] = 0;
    } else if (controller == kPitchBend) {
        bytes[0] = 0xE0;
        bytes[1] = static_cast<uint8>(fourteen & 0x7F);
        bytes[2] = static_cast<uint8>(fourteen >> 7);
    }
}

}  // namespace vst3
