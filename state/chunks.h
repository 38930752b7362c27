// Takes the chunks of hosts into the bank, and the default bank from its file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "state/bank.h"

namespace state {

// Puts the chunk in place of the start of the program: up to a whole record. False, with a message
// and nothing changed, when the size lies outside that.
bool takeProgramChunk(Bank& bank, int program, const void* data, std::int32_t size);

// Puts the chunk in place of the bank. False, with a message and nothing changed, unless the size
// is that of a bank.
bool takeBankChunk(Bank& bank, const void* data, std::int32_t size);

// The bank in the bytes of a bank file (.fxb) with a chunk, made for the instrument of that ID.
struct BankInFile {
    const void* chunk;
    int program;  // current, 0 where the file does not say
};
std::optional<BankInFile> findBankChunk(const std::string& file, std::uint32_t uniqueId);

// Loads the default bank that lies beside the library into `bank`. A file that cannot be used gets
// its message and changes nothing; a missing one is only remembered, and so is a library whose
// folder is unknown.
void loadDefaultBank(Bank& bank, std::uint32_t uniqueId);

// Whether the last instance of the process that looked for the default bank could not open it.
bool defaultBankMissing();

}  // namespace state
