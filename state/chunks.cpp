// Checks and copies chunks; parses both forms of the default bank.
#include "state/chunks.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/four_char_code.h"
#include "platform/message_box.h"
#include "state/atomic_word.h"
#include "state/data_folder.h"

namespace state {

namespace {

using platform::fourCharCode;

constexpr std::size_t kLargestFile = 64 << 20;

std::atomic<bool> bankMissing{false};

void say(const char* title, const char* text) {
    platform::showMessage(title, text, platform::MessageIcon::kNone);
}

// Reads fields of a bank file. They are big-endian, except for the machine-order fields of the list
// form.
class BankFile {
  public:
    static constexpr std::size_t kFirstProgram = 156;
    static constexpr std::size_t kChunk = 160;

    explicit BankFile(const std::string& bytes) : bytes_(bytes) {}

    bool holds(std::size_t at, std::size_t size) const {
        return at <= bytes_.size() && size <= bytes_.size() - at;
    }
    // 0 past the end of the file.
    std::uint32_t bigEndian(std::size_t at) const {
        if (!holds(at, 4)) return 0;
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            value = value << 8 | static_cast<unsigned char>(bytes_[at + i]);
        }
        return value;
    }
    template <typename Word>
    Word machineOrder(std::size_t at) const {
        Word value{};
        if (holds(at, sizeof value)) std::memcpy(&value, bytes_.data() + at, sizeof value);
        return value;
    }

    std::uint32_t chunkMagic() const { return bigEndian(0); }
    std::uint32_t fxMagic() const { return bigEndian(8); }
    std::uint32_t fxId() const { return bigEndian(16); }
    std::int32_t numPrograms() const { return static_cast<std::int32_t>(bigEndian(24)); }
    // Bank files of the first version have none.
    std::int32_t currentProgram() const {
        return bigEndian(12) >= 2 ? static_cast<std::int32_t>(bigEndian(28)) : 0;
    }
    std::int32_t chunkSize() const { return static_cast<std::int32_t>(bigEndian(kFirstProgram)); }
    // Null unless the file holds a whole bank.
    const void* chunk() const {
        return holds(kChunk, sizeof(BankChunk)) ? bytes_.data() + kChunk : nullptr;
    }

  private:
    const std::string& bytes_;
};

// intentional: this list form differs from the standard one. Values are in machine order, entries
// are four bytes further apart, and names are skipped. The end of the file ends the list.
void takeProgramList(Bank& bank, const BankFile& file) {
    constexpr std::size_t kNumParamsAt = 24;
    constexpr std::size_t kValuesAt = 56;
    constexpr std::size_t kEntryOverhead = 60;
    const int programs = std::min(file.numPrograms(), static_cast<std::int32_t>(kNumPrograms));
    std::size_t entry = BankFile::kFirstProgram;
    for (int program = 0; program < programs; ++program) {
        const auto count = file.machineOrder<std::int32_t>(entry + kNumParamsAt);
        if (count < 0 || !file.holds(entry + kValuesAt, std::size_t{4} * count)) return;
        for (int i = 0; i < std::min(count, static_cast<std::int32_t>(kNumParams)); ++i) {
            bank.setValue(program, i, file.machineOrder<float>(entry + kValuesAt + 4 * i));
        }
        entry += kEntryOverhead + std::size_t{4} * count;
    }
}

}  // namespace

bool takeProgramChunk(Bank& bank, int program, const void* data, std::int32_t size) {
    constexpr auto kSize = static_cast<std::int32_t>(sizeof(ProgramRecord));
    if (size < 0 || size > kSize || (!data && size > 0)) {
        say("Error!", kWrongPresetSize);
        return false;
    }
    storeBytes(&bank.chunk().programs[program], data, size);
    return true;
}

bool takeBankChunk(Bank& bank, const void* data, std::int32_t size) {
    if (size != static_cast<std::int32_t>(sizeof(BankChunk)) || !data) {
        say("Error!", kWrongBankSize);
        return false;
    }
    storeBytes(&bank.chunk(), data, sizeof(BankChunk));
    return true;
}

std::optional<BankInFile> findBankChunk(const std::string& bytes, std::uint32_t uniqueId) {
    const BankFile file(bytes);
    if (file.chunkMagic() != fourCharCode("CcnK") || file.fxMagic() != fourCharCode("FBCh") ||
        file.fxId() != uniqueId ||
        file.chunkSize() != static_cast<std::int32_t>(sizeof(BankChunk)) || !file.chunk()) {
        return std::nullopt;
    }
    const int program = file.currentProgram();
    return BankInFile{file.chunk(), isProgram(program) ? program : 0};
}

void loadDefaultBank(Bank& bank, std::uint32_t uniqueId) {
    constexpr const char* kTitle = "Preset loader";
    const auto folder = platform::resourceFolder();
    const auto bytes =
        folder ? platform::readFile(*folder + kDefaultBankFile, kLargestFile) : std::nullopt;
    bankMissing = !bytes;
    if (!bytes) return;

    const BankFile file(*bytes);
    const bool list = file.fxMagic() == fourCharCode("FxBk");
    if (file.chunkMagic() != fourCharCode("CcnK") ||
        (!list && file.fxMagic() != fourCharCode("FBCh"))) {
        return say(kTitle, "Default bank error: not an fxb file");
    }
    if (file.fxId() != uniqueId) return say(kTitle, "Default bank error: wrong unique ID");
    if (list) {
        takeProgramList(bank, file);
    } else {
        takeBankChunk(bank, file.chunk(), file.chunkSize());
    }
}

bool defaultBankMissing() {
    return bankMissing;
}

}  // namespace state
