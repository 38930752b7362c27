// Copies between plain bytes and shared words.
#include "state/atomic_word.h"

#include <cstring>

namespace state {

void loadBytes(void* to, const void* from, std::size_t size) {
    const auto* words = static_cast<const std::uint32_t*>(from);
    auto* target = static_cast<unsigned char*>(to);
    const std::size_t count = size / sizeof(std::uint32_t);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t word = loadWord(words[i]);
        std::memcpy(target + i * sizeof word, &word, sizeof word);
    }
    const auto* bytes = static_cast<const unsigned char*>(from);
    for (std::size_t i = count * sizeof(std::uint32_t); i < size; ++i) {
        target[i] = loadWord(bytes[i]);
    }
}

void storeBytes(void* to, const void* from, std::size_t size) {
    const auto* source = static_cast<const unsigned char*>(from);
    auto* words = static_cast<std::uint32_t*>(to);
    const std::size_t count = size / sizeof(std::uint32_t);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t word;
        std::memcpy(&word, source + i * sizeof word, sizeof word);
        storeWord(words[i], word);
    }
    auto* bytes = static_cast<unsigned char*>(to);
    for (std::size_t i = count * sizeof(std::uint32_t); i < size; ++i) {
        storeWord(bytes[i], source[i]);
    }
}

}  // namespace state
