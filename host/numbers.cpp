// Converts numbers with functions that ignore the locale.
#include "host/numbers.h"

#include <charconv>
#include <system_error>

namespace host {
namespace {

template <typename Number>
std::optional<Number> parse(std::string_view text) {
    Number number = {};
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return number;
}

}  // namespace

std::optional<int> parseInteger(std::string_view text) {
    return parse<int>(text);
}

std::optional<double> parseDouble(std::string_view text) {
    return parse<double>(text);
}

std::string fixedText(double value, int decimals) {
    char text[512];  // the longest double has 309 digits before the point
    const auto result =
        std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    return std::string(text, result.ptr);
}

}  // namespace host
