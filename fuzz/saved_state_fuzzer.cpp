// The state of formats that are saved whole: any bytes, or good ones of each form with damage.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"
#include "platform/product.h"
#include "state/bank.h"
#include "state/saved_state.h"

namespace {

std::string bigEndian(std::uint32_t word) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(word >> shift & 0xFF);
    return bytes;
}

// A bank file around the chunk, as VST 2 hosts write it.
std::string bankFile(const std::string& chunk) {
    const std::string content = "FBCh" + bigEndian(2) + bigEndian(platform::kProductCode) +
                                bigEndian(1) + bigEndian(state::kNumPrograms) + bigEndian(5) +
                                std::string(124, '\0') +
                                bigEndian(static_cast<std::uint32_t>(chunk.size())) + chunk;
    return "CcnK" + bigEndian(static_cast<std::uint32_t>(content.size())) + content;
}

std::string goodState(int form) {
    state::Bank bank;
    const std::string chunk(reinterpret_cast<const char*>(&bank.chunk()), sizeof(state::BankChunk));
    switch (form) {
        case 0:
            return state::bytesOf({17, false, chunk});
        case 1:
            return state::bytesOf({127, true, chunk});
        case 2:
            return chunk;
        case 3:
            return bankFile(chunk);
        default:
            return "VstW" + bigEndian(8) + bigEndian(1) + bigEndian(form == 5) + bankFile(chunk);
    }
}

void run(std::string_view bytes) {
    constexpr int kForms = 6;
    fuzz::Input input(bytes);
    std::string given;
    if (const int form = input.below(kForms + 1); form == kForms) {
        given = input.rest();
    } else {
        given = goodState(form);
        const bool whole = input.empty();
        fuzz::damage(given, input);
        if (whole) fuzz::require(state::readSavedState(given).has_value(), "a good state is read");
    }
    const auto saved = state::readSavedState(given);
    if (!saved) return;
    fuzz::require(saved->program >= 0 && saved->program < state::kNumPrograms, "a program is one");
    fuzz::require(saved->bank.size() == sizeof(state::BankChunk), "a bank is whole");
    const auto again = state::readSavedState(state::bytesOf(*saved));
    fuzz::require(again && again->program == saved->program && again->bank == saved->bank &&
                      again->bypassed == saved->bypassed,
                  "what is written is read the same");
}

const fuzz::Registered registered("saved_state", run);

}  // namespace
