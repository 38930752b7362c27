// Stepping through text in UTF-8 by characters.
#include "platform/utf8.h"

#include <cstdint>

namespace platform::utf8 {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

bool isCharacter(char32_t code) {
    return code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

}  // namespace

char32_t next(const std::string& text, size_t& position) {
    if (position >= text.size()) return 0;
    const auto lead = static_cast<unsigned char>(text[position++]);
    if (lead < 0x80) return lead;

    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (lead < 0xC2 || lead > 0xF4) return kReplacement;

    char32_t code = lead & (0x3F >> following);
    for (int i = 0; i < following; ++i) {
        if (position + i >= text.size()) return kReplacement;
        const auto byte = static_cast<unsigned char>(text[position + i]);
        if (!isContinuation(byte)) return kReplacement;
        code = code << 6 | (byte & 0x3F);
    }
    if (code < kSmallest[following] || !isCharacter(code)) return kReplacement;
    position += following;
    return code;
}

size_t after(const std::string& text, size_t position) {
    next(text, position);
    return position;
}

size_t before(const std::string& text, size_t position) {
    // At most four bytes back: the longest character that ends exactly here.
    for (size_t length = 4; length > 1; --length)
        if (position >= length && after(text, position - length) == position)
            return position - length;
    return position > 0 ? position - 1 : 0;
}

std::string encode(char32_t character) {
    const uint32_t code = isCharacter(character) ? character : kReplacement;
    if (code < 0x80) return {static_cast<char>(code)};
    const auto tail = [code](int shift) {
        return static_cast<char>(0x80 | (code >> shift & 0x3F));
    };
    if (code < 0x800) return {static_cast<char>(0xC0 | code >> 6), tail(0)};
    if (code < 0x10000) return {static_cast<char>(0xE0 | code >> 12), tail(6), tail(0)};
    return {static_cast<char>(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
}

}  // namespace platform::utf8
