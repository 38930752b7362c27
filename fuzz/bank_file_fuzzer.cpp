// The default bank file: any bytes, or a good file with damage anywhere.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"
#include "platform/input_error.h"
#include "state/fx_file.h"
#include "state/chunks.h"

#include <optional>

namespace {

constexpr std::uint32_t kId = 0x73656E69;
constexpr state::FxOwner kOwner = {kId, state::kNumPrograms, state::kNumParams};

std::string bytesOf(state::Bank& bank) {
    return {reinterpret_cast<const char*>(&bank.chunk()), sizeof(state::BankChunk)};
}

std::string fileOf(state::Bank& bank) {
    return state::fxBytes(state::FxBank{1, state::kNumPrograms, 0, bytesOf(bank)}, kId);
}

// The number of messages that loading the file shows.
std::size_t load(const fuzz::World& world, const std::string& file, state::Bank& bank) {
    world.module.write("default.fxb", file);
    const std::size_t before = world.messages.all.size();
    state::loadDefaultBank(bank, kId);
    fuzz::require(!state::defaultBankMissing(), "a file that is there is not missed");
    return world.messages.all.size() - before;
}

// The chunk in the file, if a strict reader accepts it.
std::optional<std::string> strictlyRead(const std::string& file) {
    try {
        const auto bank = state::parseFxBank(file, kOwner, "");
        if (const auto* const chunk = std::get_if<state::FxChunk>(&bank.content)) return *chunk;
    } catch (const platform::InputError&) {
    }
    return std::nullopt;
}

void run(std::string_view bytes) {
    const fuzz::World world;
    fuzz::Input input(bytes);
    state::Bank bank;
    const std::string untouched = bytesOf(bank);
    std::string file;
    if (input.byte() % 2 == 0) {
        file = input.rest();
    } else {
        file = fileOf(bank);
        fuzz::damage(file, input);
    }
    const std::size_t messages = load(world, file, bank);
    const std::string loaded = bytesOf(bank);
    fuzz::require(messages <= 1, "one file, one message");
    fuzz::require(messages == 0 || loaded == untouched, "a refused file changes nothing");
    if (const auto chunk = strictlyRead(file); chunk && chunk->size() == loaded.size()) {
        fuzz::require(loaded == *chunk, "a whole file is loaded as it lies there");
    }
    if (file.size() > 12 && file.compare(8, 4, "FxBk") == 0) {
        for (int i = 0; i < state::kNumPrograms * state::kNumParams; ++i) {
            const float value = bank.value(i / state::kNumParams, i % state::kNumParams);
            fuzz::require(value >= 0.0f && value <= 1.0f, "values of a list are limited");
        }
    }
    load(world, file, bank);
    fuzz::require(bytesOf(bank) == loaded, "loading twice is loading once");

    state::Bank again;
    fuzz::require(load(world, fileOf(bank), again) == 0, "what is written is read");
    fuzz::require(bytesOf(again) == loaded, "what is written is read the same");
}

const fuzz::Registered registered("bank_file", run);

}  // namespace
