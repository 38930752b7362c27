// The program as a parameter: its texts.
#pragma once

#include <optional>
#include <string>

#include "instrument/instrument.h"

namespace plugin {

// Never empty: hosts take a program without a name for a fault.
std::string programText(const instrument::Instrument& instrument, int program);

// The first program of that name, or of that number.
std::optional<int> programIn(const instrument::Instrument& instrument, const std::string& text);

// The number at the beginning of a text.
std::optional<double> numberIn(const std::string& text);

}  // namespace plugin
