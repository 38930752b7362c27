// The instrument as its host sees it: construction and identity.
#include "plugin/vst_synth.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "engine/engine.h"
#include "plugin/editor_adapter.h"
#include "state/chunks.h"

namespace plugin {

namespace {

constexpr std::string_view kName = "Quarzel Strings";
constexpr std::string_view kVendor = "tembrilon.com";
constexpr std::string_view kPinLabel = "ZLM";
static_assert(kVendor.size() == 13);

constexpr float kInitialRate = 44100.0f;
constexpr VstInt32 kStereoPins = 2;
constexpr VstInt32 kAnsweredPins = 6;  // four more than there are outputs: kept

constexpr VstInt32 kWheelMessage = fourCharCode("stCA");
constexpr VstInt32 kWheelTurn = fourCharCode("Whee");

// Copies a text and its terminating zero, cut to fit.
void copyText(std::string_view text, char* buffer, size_t bufferSize) {
    const size_t length = std::min(text.size(), bufferSize - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

}  // namespace

VstSynth::VstSynth(audioMasterCallback host)
    : VstSynth(host, std::make_unique<engine::Engine>(kInitialRate)) {}

VstSynth::VstSynth(audioMasterCallback host, std::unique_ptr<engine::SoundEngine> engine)
    : AudioEffectX(host, state::kNumPrograms, state::kNumParams), instrument_(std::move(engine)) {
    programsAreChunks();
    if (host) {
        setNumInputs(0);
        setNumOutputs(2);
        isSynth();
        canProcessReplacing();
        setUniqueID(kUniqueId);
    }

    state::controllerMap().load();

    if (!engine::isAcceptedRate(updateSampleRate())) sampleRate_ = kInitialRate;
    instrument_.setSampleRate(sampleRate_);
    state::loadDefaultBank(instrument_.bank(), kUniqueId);
    updateDisplay();
    initialising_ = false;

    setEditor(new EditorAdapter(*this));
    setProgram(0);
}

VstSynth::~VstSynth() {
    // The editor asks this instance to the end, and is deleted after it.
    if (editor_) editor_->close();
    state::controllerMap().save();
}

bool VstSynth::getOutputProperties(VstInt32 pin, VstPinProperties* properties) {
    if (pin < 0 || pin >= kAnsweredPins) return false;
    properties->flags = pin < kStereoPins ? kVstPinIsActive | kVstPinIsStereo : kVstPinIsActive;
    copyText(kPinLabel, properties->label, kVstMaxLabelLen);
    return true;
}

bool VstSynth::getEffectName(char* name) {
    copyText(kName, name, kVstMaxEffectNameLen);
    name[kVstMaxEffectNameLen] = '\0';  // one past the published limit: kept
    return true;
}

bool VstSynth::getVendorString(char* text) {
    copyText(kVendor, text, kVstMaxVendorStrLen);
    return true;
}

bool VstSynth::getProductString(char* text) {
    copyText(kName, text, kVstMaxProductStrLen);
    return true;
}

VstInt32 VstSynth::canDo(const char* text) {
    const std::string_view ability = text;
    return ability == "receiveVstEvents" || ability == "receiveVstMidiEvent" ? 1 : -1;
}

VstIntPtr VstSynth::onWheelMessage(VstInt32 lArg, VstIntPtr lArg2, void*, float floatArg) {
    if (!editor_ || lArg != kWheelMessage || lArg2 != kWheelTurn) return 0;
    return editor_->onWheel(floatArg);
}

void VstSynth::suspend() {
    instrument_.engine().forgetHeldNotes();
    instrument_.stopRendering();
    events_.forget();
}

void VstSynth::resume() {
    instrument_.engine().forgetHeldNotes();
    events_.forget();
    wantEvents(1);
}

void VstSynth::setSampleRate(float sampleRate) {
    if (!engine::isAcceptedRate(sampleRate)) return;
    AudioEffectX::setSampleRate(sampleRate);
    instrument_.setSampleRate(sampleRate);
}

void VstSynth::setBlockSize(VstInt32 sampleFrames) {
    AudioEffectX::setBlockSize(sampleFrames);
}

VstInt32 VstSynth::processEvents(VstEvents* events) {
    if (!initialising_) events_.receive(events);
    return 1;
}

// A block without frames, or without a place for its sound, costs no event either.
void VstSynth::processReplacing(float**, float** outputs, VstInt32 sampleFrames) {
    const VstInt32 frames = std::max(sampleFrames, VstInt32{0});
    float* const left = outputs ? outputs[0] : nullptr;
    float* const right = outputs ? outputs[1] : nullptr;
    const bool playable = frames > 0 && left && right && !initialising_;
    events_.beginBlock();
    if (!playable || !instrument_.render(left, right, frames, *this)) {
        if (left) std::fill_n(left, frames, 0.0f);
        if (right) std::fill_n(right, frames, 0.0f);
        events_.postpone();
    }
    events_.finishBlock();
}

VstInt32 VstSynth::processPendingEvents(VstInt32 frame) {
    events_.dispatchUpTo(frame, [this](const std::uint8_t* message) {
        engine::handleMidi(instrument_.engine(), *this, message);
    });
    return events_.nextIndex();
}

bool VstSynth::controlChange(int controller, int value) {
    const int learning = learnSlot_.take();
    if (state::isParameter(learning)) state::controllerMap().bind(learning, controller);

    bool bound = false;
    for (int index = 0; index < state::kNumParams; ++index) {
        if (state::controllerMap().controller(index) != controller) continue;
        setParameter(index, static_cast<float>(value) * (1.0f / 127.0f));
        bound = true;
    }
    return bound;
}

void VstSynth::tellEditor(VstInt32 index) {
    if (editor_) editor_->setParameter(index, instrument_.value(index));
}

void VstSynth::setParameter(VstInt32 index, float value) {
    if (!initialising_) instrument_.setValue(index, value);
    if (editor_) editor_->setParameter(index, value);
}

float VstSynth::getParameter(VstInt32 index) {
    return instrument_.value(index);
}

void VstSynth::getParameterLabel(VstInt32, char* label) {
    *label = '\0';
}

void VstSynth::getParameterDisplay(VstInt32 index, char* text) {
    copyText(state::valueText(getParameter(index)), text, kVstMaxParamStrLen);
}

void VstSynth::getParameterName(VstInt32 index, char* text) {
    const bool named = state::isParameter(index);
    copyText(named ? instrument_.bank().parameterName(index) : "", text, state::kNameSize);
}

void VstSynth::setProgram(VstInt32 program) {
    if (instrument_.setProgram(program)) announceProgram();
}

// Tells the editor and the host of a program that was sent.
void VstSynth::announceProgram() {
    for (VstInt32 index = 0; index < state::kNumParams; ++index) {
        tellEditor(index);
    }
    afterProgramPush();
    if (updateDisplay()) updateDisplay();
}

void VstSynth::setProgramName(const char* name) {
    setProgramNameIndexed(getProgram(), name);
}

void VstSynth::setProgramNameIndexed(VstInt32 program, const char* name) {
    instrument_.bank().setProgramName(program, name);
}

void VstSynth::getProgramName(char* name) {
    copyText(instrument_.bank().programName(getProgram()), name, state::kNameSize);
}

bool VstSynth::getProgramNameIndexed(VstInt32, VstInt32 index, char* text) {
    if (!state::isProgram(index)) return false;
    copyText(instrument_.bank().programName(index), text, state::kNameSize);
    return true;
}

bool VstSynth::copyProgram(VstInt32 destination) {
    if (!state::isProgram(destination)) return false;
    instrument_.bank().copyProgram(getProgram(), destination);
    return true;
}

bool VstSynth::keysRequired() {
    return editor_ && editor_->wantsKeys();
}

VstInt32 VstSynth::getChunk(void** data, bool isPreset) {
    state::BankChunk& chunk = instrument_.bank().chunk();
    if (isPreset) {
        *data = &chunk.programs[getProgram()];
        return sizeof(state::ProgramRecord);
    }
    *data = &chunk;
    return sizeof chunk;
}

VstInt32 VstSynth::setChunk(void* data, VstInt32 byteSize, bool isPreset) {
    state::Bank& bank = instrument_.bank();
    // A refused bank still sends the current program anew, a refused preset does not: kept.
    if (isPreset) {
        if (!state::takeProgramChunk(bank, getProgram(), data, byteSize)) return 1;
    } else {
        state::takeBankChunk(bank, data, byteSize);
    }
    instrument_.resendProgram();
    announceProgram();
    return 1;
}

}  // namespace plugin
