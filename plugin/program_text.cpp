// Names and numbers of programs.
#include "plugin/program_text.h"

#include <algorithm>
#include <cmath>

#include "platform/number_text.h"

namespace plugin {

std::string programText(const instrument::Instrument& instrument, int program) {
    const std::string name = instrument.programName(program);
    return name.empty() ? "Program " + std::to_string(program) : name;
}

std::optional<int> programIn(const instrument::Instrument& instrument, const std::string& text) {
    for (int program = 0; program < state::kNumPrograms; ++program) {
        if (programText(instrument, program) == text) return program;
    }
    const auto number = numberIn(text);
    if (!number) return std::nullopt;
    return static_cast<int>(std::clamp(*number, 0.0, state::kNumPrograms - 1.0) + 0.5);
}

std::optional<double> numberIn(const std::string& text) {
    double number = 0.0;
    const size_t start = std::min(text.find_first_not_of(' '), text.size());
    const char* const end = text.data() + text.size();
    if (!platform::readNumber(text.data() + start, end, number) || std::isnan(number)) {
        return std::nullopt;
    }
    return number;
}

}  // namespace plugin
