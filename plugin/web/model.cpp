// Keeps both sides equal: each change is made here, then sent.
#include "plugin/web/model.h"

#include <algorithm>
#include <utility>

#include "platform/input_error.h"
#include "platform/product.h"
#include "plugin/web/page_script.h"
#include "state/fx_file.h"
#include "state/saved_state.h"

namespace web {

namespace {

constexpr int kVersion = 1;  // of the instrument, as hosts write it into files
constexpr state::FxOwner kOwner = {platform::kProductCode, state::kNumPrograms, state::kNumParams};

std::string bytesAt(const void* data, std::size_t size) {
    return {static_cast<const char*>(data), size};
}

[[noreturn]] void refuse(const std::string& name) {
    throw platform::InputError(name + " holds no sounds of this instrument.");
}

}  // namespace

std::array<float, kNewsSize> Model::initialNews() {
    std::array<float, kNewsSize> news{};
    news[kLastKey] = -1.0f;
    return news;
}

std::array<std::int32_t, state::kNumParams> Model::nothingBound() {
    std::array<std::int32_t, state::kNumParams> controllers{};
    controllers.fill(state::ControllerMap::kUnbound);
    return controllers;
}

void Model::newsCame() {
    peaks_.left = std::max(peaks_.left, news_[kPeakLeft]);
    peaks_.right = std::max(peaks_.right, news_[kPeakRight]);
}

editor::OutputPeaks Model::takeOutputPeaks() {
    return std::exchange(peaks_, {});
}

std::bitset<128> Model::heldKeys() const {
    std::bitset<128> held;
    for (int key = 0; key < 128; ++key) {
        const auto number = static_cast<int>(news_[kFirstHeldKeys + key / kKeysPerNumber]);
        held[key] = number >> key % kKeysPerNumber & 1;
    }
    return held;
}

void Model::playKey(int key, int velocity) {
    quarzelSend(kSendKey, key, static_cast<float>(velocity));
}

// The instrument plays messages while it renders. A frame is enough, and nobody hears it.
void Model::play(const std::uint8_t* message) {
    float left = 0.0f;
    float right = 0.0f;
    instrument_.addMessage(0, message);
    instrument_.render(&left, &right, 1);
    sendBindings();
}

void Model::sendBindings() {
    for (int index = 0; index < state::kNumParams; ++index) {
        const std::int32_t controller = state::controllerMap().controller(index);
        if (controller == boundInWorklet_[index]) continue;
        boundInWorklet_[index] = controller;
        quarzelSend(kSendBinding, index, static_cast<float>(controller));
    }
}

void Model::setParameter(int index, float value) {
    instrument_.setParameter(index, value);
    quarzelSend(kSendParameter, index, value);
}

void Model::setProgram(int program) {
    instrument_.setProgram(program);
    quarzelSend(kSendProgram, program, 0.0f);
}

void Model::renameProgram(int program, const std::string& name) {
    instrument_.renameProgram(program, name);
    quarzelSend(kSendNothing, 0, 0.0f);
}

void Model::putProgram(int program, const state::ProgramRecord& record) {
    instrument_.putProgram(program, record);
    sendEverything();
}

void Model::loadProgram(int program, const state::ProgramRecord& record) {
    instrument_.loadProgram(program, record);
    sendEverything();
}

void Model::loadSavedState(const state::SavedState& saved) {
    instrument_.loadSavedState(saved);
    sendEverything();
}

void Model::sendEverything() {
    quarzelSend(kSendState, 0, 0.0f);
}

void Model::takeState(const std::string& bytes, const std::string& name) {
    const auto saved = state::readSavedState(bytes);
    if (!saved) refuse(name);
    loadSavedState(*saved);
}

void Model::takeBank(const std::string& file, const std::string& name) {
    const state::FxBank bank = state::parseFxBank(file, kOwner, name);
    if (const auto* const chunk = std::get_if<state::FxChunk>(&bank.content)) {
        if (chunk->size() != sizeof(state::BankChunk)) refuse(name);
        instrument_.loadBankChunk(chunk->data(), sizeof(state::BankChunk));
    } else {
        const int before = instrument_.program();
        int program = 0;
        for (const state::FxProgram& from : std::get<std::vector<state::FxProgram>>(bank.content)) {
            instrument_.setProgram(program++);
            instrument_.setProgramName(from.name.c_str());
            takeValues(from.values);
        }
        instrument_.setProgram(before);
    }
    if (bank.currentProgram != state::FxBank::kNoProgram) {
        instrument_.setProgram(bank.currentProgram);
    }
    sendEverything();
}

void Model::takePreset(const std::string& file, const std::string& name) {
    const state::FxPreset preset = state::parseFxPreset(file, kOwner, name);
    if (const auto* const chunk = std::get_if<state::FxChunk>(&preset.content)) {
        if (chunk->size() != sizeof(state::ProgramRecord)) refuse(name);
        instrument_.loadProgramChunk(chunk->data(), sizeof(state::ProgramRecord));
    } else {
        instrument_.setProgramName(preset.name.c_str());
        takeValues(std::get<std::vector<float>>(preset.content));
    }
    sendEverything();
}

void Model::takeValues(const std::vector<float>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        instrument_.setParameter(static_cast<int>(i), values[i]);
    }
}

std::string Model::bankFile() {
    const state::FxBank bank = {kVersion, state::kNumPrograms, program(),
                                bytesAt(&instrument_.bankChunk(), sizeof(state::BankChunk))};
    return state::fxBytes(bank, kOwner.id);
}

std::string Model::presetFile() {
    const state::FxPreset preset = {
        kVersion, state::kNumParams, programName(program()),
        bytesAt(&instrument_.programChunk(), sizeof(state::ProgramRecord))};
    return state::fxBytes(preset, kOwner.id);
}

}  // namespace web
