// Numbers as text, with a decimal point in every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

// Parses the whole text as a decimal number. Returns nothing if it is none. A double may be
// infinite or not a number.
std::optional<int> parseInteger(std::string_view text);
std::optional<double> parseDouble(std::string_view text);

// Formats value with a fixed number of decimals.
std::string fixedText(double value, int decimals);

}  // namespace host
