// Cutting UTF-8.
#include "plugin/clap/text.h"

#include <algorithm>

namespace clap {

void copyText(const std::string& text, char* buffer, size_t size) {
    const auto continues = [&text](size_t at) { return (text[at] & 0xC0) == 0x80; };
    size_t length = std::min(text.size(), size - 1);
    if (length < text.size()) {
        while (length > 0 && continues(length)) --length;
    }
    text.copy(buffer, length);
    buffer[length] = '\0';
}

}  // namespace clap
