// Splits the bytes of an input into numbers and texts.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace fuzz {

// Numbers are little-endian. Past the end, everything reads as zero.
class Input {
  public:
    explicit Input(std::string_view bytes) : bytes_(bytes) {}

    bool empty() const { return bytes_.empty(); }
    std::uint8_t byte() { return number<std::uint8_t>(); }
    std::uint16_t word() { return number<std::uint16_t>(); }
    std::int32_t integer() { return number<std::int32_t>(); }
    float real() { return number<float>(); }
    // 0..1 in steps of a 255th.
    float share() { return static_cast<float>(byte()) / 255.0f; }
    int below(int limit) { return byte() % limit; }
    // Takes at most count bytes.
    std::string_view take(std::size_t count) {
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(taken.size());
        return taken;
    }
    // Takes everything up to the terminator, which is skipped, or to the end.
    std::string_view takeUntil(char terminator) {
        const std::string_view taken = bytes_.substr(0, bytes_.find(terminator));
        bytes_.remove_prefix(std::min(taken.size() + 1, bytes_.size()));
        return taken;
    }
    std::string_view rest() { return take(bytes_.size()); }

  private:
    template <typename Number>
    Number number() {
        Number value{};
        const std::string_view taken = take(sizeof value);
        std::memcpy(&value, taken.data(), taken.size());
        return value;
    }

    std::string_view bytes_;
};

// Overwrites the text with the runs of bytes in the rest of the input (position, count, bytes), so
// that a small input can damage a large file anywhere.
inline void damage(std::string& text, Input& input) {
    while (!input.empty()) {
        const std::size_t place = input.word() % text.size();
        const std::string_view run = input.take(input.byte());
        text.replace(place, std::min(run.size(), text.size() - place), run, 0, text.size() - place);
    }
}

}  // namespace fuzz
