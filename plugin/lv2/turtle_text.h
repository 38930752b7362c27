// Numbers and texts as Turtle writes them.
#pragma once

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>

namespace lv2 {

// A decimal that reads back to the same float. Hosts overlook integers among floats.
inline std::string decimal(float number) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
    const std::string digits(text, end.ptr);
    return digits.find('.') == std::string::npos ? digits + ".0" : digits;
}

inline std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        if (static_cast<unsigned char>(c) < ' ') {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04X", c);
            result += code;
        } else {
            result += c;
        }
    }
    return result + '"';
}

}  // namespace lv2
