// Texts of the interface, in UTF-16, and ours, in UTF-8.
#pragma once

#include <string>

#include "plugin/vst3/base.h"

namespace vst3 {

// Fills the whole buffer: the text, cut to fit, and zeros.
void copyText(const std::string& text, TChar* buffer, size_t size);
void copyText(const std::string& text, char* buffer, size_t size);

template <typename Char, size_t kSize>
void copyText(const std::string& text, Char (&buffer)[kSize]) {
    copyText(text, buffer, kSize);
}

// Up to a zero, and no further than a String128 goes.
std::string utf8Of(const TChar* text);

}  // namespace vst3
