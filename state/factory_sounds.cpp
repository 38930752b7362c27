// The table that the build makes of their document, and the bank beside the library.
#include "state/factory_sounds.h"

#include <cstring>
#include <iterator>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/product.h"
#include "state/chunks.h"
#include "state/data_folder.h"

namespace state {

namespace {

constexpr FactorySound kSounds[] = {
#include "factory_sounds.inc"
};
static_assert(std::size(kSounds) == kNumPrograms);

constexpr std::size_t kLargestFile = 1 << 20;

}  // namespace

const FactorySound* factorySound(int program, const std::string& name) {
    return name == kSounds[program].name ? &kSounds[program] : nullptr;
}

const FactorySound& factorySound(int program) {
    return kSounds[program];
}

bool readFactoryBank(BankChunk& bank) {
    const auto folder = platform::resourceFolder();
    const auto file =
        folder ? platform::readFile(*folder + kDefaultBankFile, kLargestFile) : std::nullopt;
    const auto found = file ? findBankChunk(*file, platform::kProductCode) : std::nullopt;
    if (!found) return false;
    std::memcpy(&bank, found->chunk, sizeof bank);
    return true;
}

}  // namespace state
