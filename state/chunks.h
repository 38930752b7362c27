// Loads chunks from the host, and the default bank from its file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "state/bank.h"

namespace state {

constexpr const char* kWrongPresetSize = "Can't load preset, wrong file size!";
constexpr const char* kWrongBankSize = "Can't load bank, wrong file size!";

// Overwrites the beginning of the program, up to a whole record. For any other size, shows a
// message, changes nothing and returns false.
bool takeProgramChunk(Bank& bank, int program, const void* data, std::int32_t size);

// Replaces the bank. Unless the size is that of a bank, shows a message, changes nothing and
// returns false.
bool takeBankChunk(Bank& bank, const void* data, std::int32_t size);

// The bank chunk inside a bank file (.fxb) that was made for the instrument with this ID.
struct BankInFile {
    const void* chunk;
    int program;  // current; 0 if the file does not say
};
std::optional<BankInFile> findBankChunk(const std::string& file, std::uint32_t uniqueId);

// Loads the default bank from the library's folder. An invalid file shows a message and changes
// nothing. A missing or unreadable file, or an unknown folder, shows no message:
// defaultBankMissing() reports it.
void loadDefaultBank(Bank& bank, std::uint32_t uniqueId);

// Whether the last loadDefaultBank in this process found no file.
bool defaultBankMissing();

}  // namespace state
