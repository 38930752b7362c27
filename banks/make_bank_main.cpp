// Compiles a bank source into a bank file: make_bank SOURCE.bank FILE.fxb
#include <iostream>

#include "banks/bank_source.h"
#include "platform/file.h"
#include "platform/product.h"
#include "state/fx_file.h"

namespace {

std::string fileOf(const state::BankChunk& bank) {
    constexpr int kPluginVersion = 1;
    const auto* const bytes = reinterpret_cast<const char*>(&bank);
    return state::fxBytes(
        state::FxBank{kPluginVersion, state::kNumPrograms, state::FxBank::kNoProgram,
                      state::FxChunk(bytes, sizeof bank)},
        platform::kProductCode);
}

}  // namespace

int main(int argumentCount, char** arguments) {
    constexpr std::size_t kLargestSource = 1 << 20;
    if (argumentCount != 3) {
        std::cerr << "Usage: make_bank SOURCE.bank FILE.fxb\n";
        return 2;
    }
    const std::string sourcePath = arguments[1];
    const std::string filePath = arguments[2];
    const auto text = platform::readFile(sourcePath, kLargestSource);
    if (!text) {
        std::cerr << sourcePath << ": cannot be read\n";
        return 1;
    }
    try {
        banks::BankSource source = banks::parseBankSource(*text);
        if (!platform::writeFile(filePath, fileOf(source.bank.chunk()))) {
            std::cerr << filePath << ": cannot be written\n";
            return 1;
        }
    } catch (const banks::BankSourceError& error) {
        std::cerr << sourcePath << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
