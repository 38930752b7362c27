// Values and texts of the parameters, and names of keys.
#include "engine/pitch.h"
#include "plugin/clap/shell.h"
#include "plugin/clap/text.h"
#include "plugin/program_text.h"
#include "state/parameter_text.h"

namespace clap {

bool Shell::parameterInfo(uint32_t index, ParamInfo* info) {
    if (index >= kParameterCount || !info) return false;
    *info = clap::parameterInfo(index);
    if (isInstrumentId(info->id)) info->default_value = defaults_[info->id];
    return true;
}

bool Shell::parameterValue(Id id, double* value) {
    if (!isKnownId(id) || !value) return false;
    const auto index = static_cast<int>(id);
    *value =
        isInstrumentId(id) ? plainOf(index, instrument_.parameter(index)) : instrument_.program();
    return true;
}

bool Shell::valueToText(Id id, double value, char* text, uint32_t size) {
    if (!isKnownId(id) || !text || size == 0) return false;
    const auto index = static_cast<int>(id);
    const double plain = limitedPlain(id, value);
    copyText(isInstrumentId(id) ? state::plainText(index, valueOf(index, plain))
                                : plugin::programText(instrument_, static_cast<int>(plain)),
             text, size);
    return true;
}

bool Shell::textToValue(Id id, const char* text, double* value) {
    if (!isKnownId(id) || !text || !value) return false;
    const auto index = static_cast<int>(id);
    if (isInstrumentId(id)) {
        const auto found = state::valueFromText(index, text);
        if (found) *value = plainOf(index, *found);
        return found.has_value();
    }
    const auto program = plugin::programIn(instrument_, text);
    if (program) *value = *program;
    return program.has_value();
}

// Playable keys below the split, while a bass is on.
int Shell::bassKeys() const {
    const auto isOn = [this](int index) {
        return plainOf(index, instrument_.parameter(index)) > 0;
    };
    if (!isOn(state::kContrabass2) && !isOn(state::kCello2)) return 0;
    const int position =
        static_cast<int>(plainOf(state::kKSplit, instrument_.parameter(state::kKSplit)));
    return state::splitKeyAt(position) - engine::kLowestKey;
}

uint32_t Shell::noteNameCount() {
    return static_cast<uint32_t>(bassKeys());
}

bool Shell::noteName(uint32_t index, NoteName* name) {
    if (index >= noteNameCount() || !name) return false;
    const int key = engine::kLowestKey + static_cast<int>(index);
    copyText("Bass " + state::keyText(key), name->name);
    name->port = name->channel = -1;
    name->key = static_cast<int16_t>(key);
    return true;
}

}  // namespace clap
