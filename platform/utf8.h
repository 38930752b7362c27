// Stepping through text in UTF-8 by characters.
#pragma once

#include <cstddef>
#include <string>

namespace platform::utf8 {

// The character at `position`, which moves behind it. A malformed byte counts as one character
// U+FFFD. The end of the text gives 0 and stays.
char32_t next(const std::string& text, size_t& position);

// Byte positions of the neighbouring characters; the ends of the text stay.
size_t after(const std::string& text, size_t position);
size_t before(const std::string& text, size_t position);

// Surrogates and what lies beyond U+10FFFF become U+FFFD.
std::string encode(char32_t character);

}  // namespace platform::utf8
