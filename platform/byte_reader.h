// Reads big-endian numbers from bytes, never past their end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace platform {

// Says what is wrong with the bytes, as the end of a sentence: "ends in the middle of an event".
struct Damage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class ByteReader {
  public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    std::size_t left() const { return bytes_.size(); }

    // Takes the next count bytes. Throws Damage if fewer are left.
    std::string_view take(std::size_t count) {
        if (count > left()) throw Damage("is cut short");
        const std::string_view taken = bytes_.substr(0, count);
        bytes_.remove_prefix(count);
        return taken;
    }

    // A number of one to four bytes.
    uint32_t number(std::size_t byteCount) {
        uint32_t value = 0;
        for (const char byte : take(byteCount)) value = value << 8 | uint8_t(byte);
        return value;
    }

    // A number of at most four bytes with seven bits each, the last byte below 0x80.
    uint32_t variableLengthNumber() {
        uint32_t value = 0;
        for (int i = 0; i < 4; ++i) {
            const uint32_t byte = number(1);
            value = value << 7 | (byte & 0x7f);
            if (byte < 0x80) return value;
        }
        throw Damage("holds a number of more than four bytes");
    }

  private:
    std::string_view bytes_;
};

}  // namespace platform
