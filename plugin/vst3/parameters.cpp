// Values and texts of the parameters.
#include <algorithm>
#include <cmath>

#include "plugin/program_text.h"
#include "plugin/vst3/shell.h"
#include "plugin/vst3/text.h"
#include "state/parameter_text.h"

namespace vst3 {

namespace {

// Positions above 0 of what is counted in steps.
int lastStep(ParamID id) {
    if (id == kProgramId) return state::kNumPrograms - 1;
    if (id == kBypassId) return 1;
    return id == kFirstControllerId + kPitchBend ? 16383 : 127;
}

double unit(double value) {
    return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, 1.0);
}

int stepAt(ParamID id, double value) {
    return static_cast<int>(unit(value) * lastStep(id) + 0.5);
}

}  // namespace

tresult Shell::getParameterInfo(int32 index, ParameterInfo& info) {
    if (index < 0 || index >= kParameterCount) return kInvalidArgument;
    info = parameterInfo(index);
    if (index < state::kNumParams) info.defaultNormalizedValue = defaults_[index];
    return kResultOk;
}

std::string Shell::textOf(ParamID id, double value) const {
    if (isInstrumentId(id)) {
        const auto index = static_cast<int>(id);
        return state::plainText(index, state::valueFromNormalized(index, unit(value)));
    }
    const int step = stepAt(id, value);
    if (id == kProgramId) return plugin::programText(instrument_, step);
    if (id == kBypassId) return step ? "On" : "Off";
    return std::to_string(step);
}

std::optional<double> Shell::valueIn(ParamID id, const std::string& text) const {
    if (isInstrumentId(id)) {
        const auto value = state::valueFromText(static_cast<int>(id), text);
        return value ? std::optional<double>(*value) : std::nullopt;
    }
    const double last = lastStep(id);
    if (id == kProgramId) {
        const auto program = plugin::programIn(instrument_, text);
        return program ? std::optional<double>(*program / last) : std::nullopt;
    }
    if (id == kBypassId && (text == "On" || text == "Off")) return text == "On" ? 1.0 : 0.0;
    const auto number = plugin::numberIn(text);
    return number ? std::optional<double>(unit(*number / last)) : std::nullopt;
}

tresult Shell::getParamStringByValue(ParamID id, ParamValue value, String128 text) {
    if (!isKnownId(id) || !text) return kInvalidArgument;
    copyText(textOf(id, value), text, sizeof(String128) / sizeof(TChar));
    return kResultOk;
}

tresult Shell::getParamValueByString(ParamID id, TChar* text, ParamValue& value) {
    if (!isKnownId(id) || !text) return kInvalidArgument;
    const auto found = valueIn(id, utf8Of(text));
    if (!found) return kResultFalse;
    value = *found;
    return kResultOk;
}

ParamValue Shell::normalizedParamToPlain(ParamID id, ParamValue value) {
    if (!isKnownId(id)) return value;
    if (!isInstrumentId(id)) return stepAt(id, value);
    const auto index = static_cast<int>(id);
    return state::plainValue(index, state::valueFromNormalized(index, unit(value)));
}

ParamValue Shell::plainParamToNormalized(ParamID id, ParamValue plain) {
    if (!isKnownId(id)) return plain;
    if (isInstrumentId(id)) return state::valueFromPlain(static_cast<int>(id), plain);
    return unit(plain / lastStep(id));
}

ParamValue Shell::getParamNormalized(ParamID id) {
    if (isInstrumentId(id)) return state::engineValue(instrument_.parameter(static_cast<int>(id)));
    if (isControllerId(id)) return controllers_[id - kFirstControllerId];
    if (id == kProgramId) return instrument_.program() / static_cast<double>(lastStep(id));
    return id == kBypassId && bypassed_ ? 1.0 : 0.0;
}

// The audio thread is given the same change as a point; whoever comes second finds it made. The
// message of a controller comes by that point alone.
tresult Shell::setParamNormalized(ParamID id, ParamValue value) {
    if (!isKnownId(id) || std::isnan(value)) return kInvalidArgument;
    if (isInstrumentId(id)) {
        const auto index = static_cast<int>(id);
        told_.set(index, state::valueFromNormalized(index, unit(value)));
        instrument_.changeParameter(index, told_.value(index));
    } else if (isControllerId(id)) {
        controllers_[id - kFirstControllerId] = static_cast<float>(unit(value));
    } else if (id == kBypassId) {
        bypassed_ = value >= 0.5;
    } else if (stepAt(id, value) != instrument_.program()) {
        told_.setProgram(stepAt(id, value));
        instrument_.setProgram(stepAt(id, value));
        tellHost();
    }
    return kResultOk;
}

// All channels are alike.
tresult Shell::getMidiControllerAssignment(int32 busIndex, int16 channel, CtrlNumber controller,
                                           ParamID& id) {
    if (busIndex != 0 || channel < 0 || channel >= 16) return kInvalidArgument;
    if (controller < 0 || controller >= kCountCtrlNumber) return kResultFalse;
    id = kFirstControllerId + controller;
    return kResultTrue;
}

}  // namespace vst3
