// Numbers as decimal text and back, with a point in every locale.
#pragma once

#include <string>

namespace platform {

// With a fixed number of decimals, correctly rounded.
std::string fixedText(double value, int decimals);

// Reads the number at `begin` and returns where its text ends, or null if there is none. It may be
// infinite or not a number. Neither blanks nor '+' may come before it.
const char* readNumber(const char* begin, const char* end, double& number);

}  // namespace platform
