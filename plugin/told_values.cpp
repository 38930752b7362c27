// Comparing with what the instrument has.
#include "plugin/told_values.h"

namespace plugin {

void ToldValues::take(const instrument::Instrument& instrument) {
    takeChanged(instrument);
    takeChangedProgram(instrument);
}

std::uint64_t ToldValues::takeChanged(const instrument::Instrument& instrument) {
    std::uint64_t changed = 0;
    for (int i = 0; i < state::kNumParams; ++i) {
        const float value = instrument.parameter(i);
        if (values_[i].exchange(value) != value) changed |= std::uint64_t{1} << i;
    }
    return changed;
}

bool ToldValues::takeChangedProgram(const instrument::Instrument& instrument) {
    const int program = instrument.program();
    return program_.exchange(program) != program;
}

}  // namespace plugin
