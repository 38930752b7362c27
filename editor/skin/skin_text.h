// Character rules for all readers of skin files: plain 8-bit text, ASCII letters, no locale.
#pragma once

#include <algorithm>
#include <string_view>

namespace editor {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr bool isLetter(char c) {
    return lowerCase(c) >= 'a' && lowerCase(c) <= 'z';
}
constexpr bool startsName(char c) {
    return isLetter(c) || c == '_';
}
constexpr bool continuesName(char c) {
    return startsName(c) || isDigit(c);
}

// Returns the run of letters, digits and '_' at a position. It is empty at the end of the text.
inline std::string_view nameAt(std::string_view text, std::size_t position) {
    const std::string_view rest = text.substr(std::min(position, text.size()));
    const auto end = std::find_if_not(rest.begin(), rest.end(), continuesName);
    return rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
}

inline bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

struct LessIgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(),
            [](char x, char y) { return lowerCase(x) < lowerCase(y); });
    }
};

}  // namespace editor
