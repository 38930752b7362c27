// Puts chunks and lists of values into a bank, where they are limited.
#include "state/sound_file.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "platform/input_error.h"
#include "platform/product.h"
#include "state/chunks.h"
#include "state/fx_file.h"

namespace state {

namespace {

constexpr int kInstrumentVersion = 1;
constexpr FxOwner kOwner = {platform::kProductCode, kNumPrograms, kNumParams};

template <typename Value>
std::string bytesAt(const Value& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}

void setProgram(Bank& bank, int program, const std::string& name,
                const std::vector<float>& values) {
    bank.setProgramName(program, name.c_str());
    for (std::size_t i = 0; i < values.size(); ++i) {
        bank.setValue(program, static_cast<int>(i), values[i]);
    }
}

}  // namespace

ProgramRecord readSoundFile(const std::string& bytes, const std::string& name,
                            const ProgramRecord& before) {
    const FxPreset preset = parseFxPreset(bytes, kOwner, name);
    if (const auto* const chunk = std::get_if<FxChunk>(&preset.content)) {
        if (chunk->size() > sizeof(ProgramRecord)) throw platform::InputError(kWrongPresetSize);
        ProgramRecord sound = before;
        std::memcpy(&sound, chunk->data(), chunk->size());
        return sound;
    }
    const auto bank = std::make_unique<Bank>();
    bank->chunk().programs[0] = before;
    setProgram(*bank, 0, preset.name, std::get<std::vector<float>>(preset.content));
    return bank->program(0);
}

SavedState readBankFile(const std::string& bytes, const std::string& name,
                        const SavedState& before) {
    const FxBank file = parseFxBank(bytes, kOwner, name);
    SavedState saved = before;
    if (file.currentProgram != FxBank::kNoProgram) saved.program = file.currentProgram;
    if (const auto* const chunk = std::get_if<FxChunk>(&file.content)) {
        if (chunk->size() != sizeof(BankChunk)) throw platform::InputError(kWrongBankSize);
        saved.bank = *chunk;
        return saved;
    }
    const auto bank = std::make_unique<Bank>();
    std::memcpy(&bank->chunk(), before.bank.data(),
                std::min(before.bank.size(), sizeof(BankChunk)));
    int program = 0;
    for (const FxProgram& entry : std::get<std::vector<FxProgram>>(file.content)) {
        setProgram(*bank, program++, entry.name, entry.values);
    }
    saved.bank = bytesAt(bank->chunk());
    return saved;
}

std::string soundFileOf(const ProgramRecord& sound) {
    return fxBytes(FxPreset{kInstrumentVersion, kNumParams, nameOf(sound), bytesAt(sound)},
                   platform::kProductCode);
}

std::string bankFileOf(const SavedState& saved) {
    return fxBytes(FxBank{kInstrumentVersion, kNumPrograms, saved.program, saved.bank},
                   platform::kProductCode);
}

}  // namespace state
