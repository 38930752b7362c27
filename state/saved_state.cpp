// The forms of a saved state.
#include "state/saved_state.h"

#include <cstdint>
#include <cstring>

#include "platform/product.h"
#include "state/bank.h"
#include "state/chunks.h"

namespace state {

namespace {

constexpr char kMagic[] = "QZS1";
constexpr std::size_t kWord = 4;
constexpr std::size_t kBankAt = 2 * kWord;
constexpr std::size_t kSize = kBankAt + sizeof(BankChunk);

void append(std::string& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift & 0xFF);
}

std::uint32_t wordAt(const std::string& bytes, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t i = kWord; i-- > 0;)
        word = word << 8 | static_cast<unsigned char>(bytes[at + i]);
    return word;
}

std::optional<SavedState> readOwn(const std::string& bytes) {
    const bool hasBypass = bytes.size() == kSize + kWord;
    if (bytes.size() != kSize && !hasBypass) return std::nullopt;
    const std::uint32_t program = wordAt(bytes, kWord);
    const std::uint32_t bypassed = hasBypass ? wordAt(bytes, kSize) : 0;
    if (program >= kNumPrograms || bypassed > 1) return std::nullopt;
    return SavedState{static_cast<int>(program), bypassed == 1,
                      bytes.substr(kBankAt, sizeof(BankChunk))};
}

// A chunk without any header has no mark of its own; its flags are one or the other.
bool looksLikeBank(const std::string& bytes) {
    BankChunk chunk;
    if (bytes.size() != sizeof chunk) return false;
    std::memcpy(&chunk, bytes.data(), sizeof chunk);
    for (const ParameterRecord& record : chunk.parameters) {
        if (record.programHeld > 1 || record.unclamped > 1) return false;
    }
    return true;
}

// Header of a host around the bank file: mark, size of what follows of it, version, bypass; words
// are big-endian.
std::size_t wrapperSize(const std::string& bytes, bool& bypassed) {
    constexpr std::size_t kSmallest = 2 * kWord;
    if (bytes.compare(0, kWord, "VstW") != 0 || bytes.size() < kSmallest) return 0;
    const auto size = static_cast<unsigned char>(bytes[kSmallest - 1]);
    constexpr std::size_t kBypassEnd = 4 * kWord;
    bypassed = size >= 2 * kWord && bytes.size() >= kBypassEnd && bytes[kBypassEnd - 1] == 1;
    return kSmallest + size;
}

std::optional<SavedState> readVst2(const std::string& bytes) {
    if (looksLikeBank(bytes)) return SavedState{0, false, bytes};
    bool bypassed = false;
    const std::size_t start = wrapperSize(bytes, bypassed);
    if (start > bytes.size()) return std::nullopt;
    const std::string file = bytes.substr(start);
    const auto found = findBankChunk(file, platform::kProductCode);
    if (!found) return std::nullopt;
    return SavedState{found->program, bypassed,
                      std::string(static_cast<const char*>(found->chunk), sizeof(BankChunk))};
}

}  // namespace

std::string bytesOf(const SavedState& saved) {
    std::string bytes = kMagic;
    append(bytes, static_cast<std::uint32_t>(saved.program));
    bytes += saved.bank;
    if (saved.bypassed) append(bytes, 1);
    return bytes;
}

std::optional<SavedState> readSavedState(const std::string& bytes) {
    return bytes.compare(0, kWord, kMagic) == 0 ? readOwn(bytes) : readVst2(bytes);
}

}  // namespace state
