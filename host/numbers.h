// Numbers as text, with a point in every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host {

// The whole of text as a decimal number, or nothing. A double may be infinite or not a number.
std::optional<int> parseInteger(std::string_view text);
std::optional<double> parseDouble(std::string_view text);

// value with that many decimals.
std::string fixedText(double value, int decimals);

}  // namespace host
