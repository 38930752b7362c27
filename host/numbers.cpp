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

}  // namespace host
