// Numbers through the C library, whose only locale in a browser has the point. Its C++ library
// cannot convert floating-point numbers.
#include "platform/number_text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace platform {

std::string fixedText(double value, int decimals) {
    char text[512];
    const int length = std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return {text, std::min(static_cast<std::size_t>(length), sizeof text - 1)};
}

// The C library also reads what begins with blanks or '+', and hexadecimal numbers.
const char* readNumber(const char* begin, const char* end, double& number) {
    const char* const last = std::find_if(begin, end, [](char c) { return std::strchr("xX", c); });
    const std::string text(begin, last);
    if (text.empty() || std::strchr(" \t\n\v\f\r+", text[0])) return nullptr;
    char* after = nullptr;
    const double read = std::strtod(text.c_str(), &after);
    if (after == text.c_str()) return nullptr;
    number = read;
    return begin + (after - text.c_str());
}

}  // namespace platform
