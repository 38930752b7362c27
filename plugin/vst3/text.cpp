// Between UTF-8 and UTF-16.
#include "plugin/vst3/text.h"

#include <algorithm>

#include "platform/utf8.h"

namespace vst3 {

namespace {
constexpr char32_t kFirstPair = 0x10000;
constexpr char32_t kHigh = 0xD800;
constexpr char32_t kLow = 0xDC00;
}  // namespace

void copyText(const std::string& text, TChar* buffer, size_t size) {
    std::fill_n(buffer, size, u'\0');
    size_t position = 0;
    for (size_t used = 0; used + 1 < size;) {
        const char32_t character = platform::utf8::next(text, position);
        if (character == 0) return;
        if (character < kFirstPair) {
            buffer[used++] = static_cast<TChar>(character);
        } else if (used + 2 < size) {
            buffer[used++] = static_cast<TChar>(kHigh + ((character - kFirstPair) >> 10));
            buffer[used++] = static_cast<TChar>(kLow + ((character - kFirstPair) & 0x3FF));
        } else {
            return;
        }
    }
}

void copyText(const std::string& text, char* buffer, size_t size) {
    std::fill_n(buffer, size, '\0');
    text.copy(buffer, size - 1);
}

std::string utf8Of(const TChar* text) {
    constexpr size_t kLongest = sizeof(String128) / sizeof(TChar);
    std::string utf8;
    for (size_t i = 0; i < kLongest && text[i]; ++i) {
        char32_t character = text[i];
        const bool isPair = i + 1 < kLongest && character >= kHigh && character < kLow &&
                            text[i + 1] >= kLow && text[i + 1] < kLow + 0x400;
        if (isPair) character = kFirstPair + ((character - kHigh) << 10) + (text[++i] - kLow);
        utf8 += platform::utf8::encode(character);
    }
    return utf8;
}

}  // namespace vst3
