// Numbers as text, with a decimal point in every locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/number_text.h"

namespace host {

// Parses the whole text as a decimal number. Returns nothing if it is none. A double may be
// infinite or not a number.
std::optional<int> parseInteger(std::string_view text);
std::optional<double> parseDouble(std::string_view text);

using platform::fixedText;

}  // namespace host
