// Wraps utfcpp, which reports malformed text instead of replacing it.
#include "platform/utf8.h"

#include <algorithm>
#include <iterator>

#include <utf8.h>

namespace platform::utf8 {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr size_t kLongest = 4;  // bytes of a character

bool isCharacter(char32_t code) {
    return code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

}  // namespace

char32_t next(const std::string& text, size_t& position) {
    if (position >= text.size()) return 0;
    const char* at = text.data() + position;
    const char* const end = at + std::min(kLongest, text.size() - position);
    if (::utf8::find_invalid(at, end) == at) {
        ++position;
        return kReplacement;
    }
    const char32_t character = ::utf8::unchecked::next(at);
    position = static_cast<size_t>(at - text.data());
    return character;
}

size_t after(const std::string& text, size_t position) {
    next(text, position);
    return position;
}

size_t before(const std::string& text, size_t position) {
    // Find the longest character that ends exactly here.
    for (size_t length = kLongest; length > 1; --length)
        if (position >= length && after(text, position - length) == position)
            return position - length;
    return position > 0 ? position - 1 : 0;
}

std::string encode(char32_t character) {
    std::string bytes;
    ::utf8::append(isCharacter(character) ? character : kReplacement, std::back_inserter(bytes));
    return bytes;
}

}  // namespace platform::utf8
