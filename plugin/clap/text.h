// Texts into a host's buffers.
#pragma once

#include <cstddef>
#include <string>

namespace clap {

// Cut to fit, but not within a character of UTF-8; ends with zero. `size` is not 0.
void copyText(const std::string& text, char* buffer, size_t size);

template <size_t kSize>
void copyText(const std::string& text, char (&buffer)[kSize]) {
    copyText(text, buffer, kSize);
}

}  // namespace clap
