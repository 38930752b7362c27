// Steps through UTF-8 text by characters.
#pragma once

#include <cstddef>
#include <string>

namespace platform::utf8 {

// Returns the character at `position` and moves `position` past it. A malformed byte counts as one
// character, U+FFFD. At the end of the text it returns 0 and does not move.
char32_t next(const std::string& text, size_t& position);

// Byte positions of the neighbouring characters. Both stop at the ends of the text.
size_t after(const std::string& text, size_t position);
size_t before(const std::string& text, size_t position);

// Surrogates and codes beyond U+10FFFF become U+FFFD.
std::string encode(char32_t character);

}  // namespace platform::utf8
