// Numbers through the C++ library, which knows no locale here.
#include "platform/number_text.h"

#include <charconv>

namespace platform {

std::string fixedText(double value, int decimals) {
    char text[512];  // the longest double has 309 digits before the point
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    return {text, end.ptr};
}

const char* readNumber(const char* begin, const char* end, double& number) {
    const auto read = std::from_chars(begin, end, number);
    return read.ec == std::errc() ? read.ptr : nullptr;
}

}  // namespace platform
