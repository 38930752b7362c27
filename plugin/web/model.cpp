// Keeps both sides equal: each change is made here, then sent.
#include "plugin/web/model.h"

#include <algorithm>
#include <utility>

#include "plugin/web/page_script.h"
#include "state/sound_file.h"

namespace web {

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
    quarzelSend(kSendName, 0, 0.0f);
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

std::string Model::bankFile() {
    return state::bankFileOf(savedState());
}

std::string Model::presetFile() {
    return state::soundFileOf(programRecord(program()));
}

}  // namespace web
