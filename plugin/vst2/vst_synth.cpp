// Forwards the published operations to the instrument. "Intentional" marks behaviour that saved
// sessions or hosts depend on.
#include "plugin/vst2/vst_synth.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "engine/engine.h"
#include "plugin/vst2/editor_adapter.h"

namespace vst2 {

namespace {

constexpr std::string_view kVendor = platform::kCompanyDomain;
constexpr std::string_view kPinLabel = "ZLM";
static_assert(kVendor.size() == 13);

constexpr VstInt32 kStereoPins = 2;
constexpr VstInt32 kAnsweredPins = 6;  // intentional: four more than there are outputs

constexpr VstInt32 kWheelMessage = platform::fourCharCode("stCA");
constexpr VstInt32 kWheelTurn = platform::fourCharCode("Whee");

// Copies a text and its terminating zero, truncated to fit.
void copyText(std::string_view text, char* buffer, size_t bufferSize) {
    const size_t length = std::min(text.size(), bufferSize - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

}  // namespace

VstSynth::VstSynth(audioMasterCallback host)
    : VstSynth(host, std::make_unique<engine::Engine>(engine::kInitialRate)) {}

VstSynth::VstSynth(audioMasterCallback host, std::unique_ptr<engine::SoundEngine> engine)
    : AudioEffectX(host, state::kNumPrograms, state::kNumParams),
      instrument_(*this, std::move(engine)) {
    programsAreChunks();
    if (host) {
        setNumInputs(0);
        setNumOutputs(2);
        isSynth();
        canProcessReplacing();
        setUniqueID(kUniqueId);
    }
    if (!engine::isAcceptedRate(updateSampleRate())) sampleRate_ = engine::kInitialRate;
    instrument_.start(sampleRate_);
    updateDisplay();
    setEditor(new EditorAdapter(*this, instrument_));
    displayChanged(instrument::DisplayChange::kProgram);
}

VstSynth::~VstSynth() {
    // An open editor uses the instrument, which is destroyed before the editor.
    if (editor_) editor_->close();
}

bool VstSynth::getOutputProperties(VstInt32 pin, VstPinProperties* properties) {
    if (pin < 0 || pin >= kAnsweredPins) return false;
    properties->flags = pin < kStereoPins ? kVstPinIsActive | kVstPinIsStereo : kVstPinIsActive;
    copyText(kPinLabel, properties->label, kVstMaxLabelLen);
    return true;
}

bool VstSynth::getEffectName(char* name) {
    copyText(platform::kProductName, name, kVstMaxEffectNameLen);
    name[kVstMaxEffectNameLen] = '\0';  // intentional: one past the published limit
    return true;
}

bool VstSynth::getVendorString(char* text) {
    copyText(kVendor, text, kVstMaxVendorStrLen);
    return true;
}

bool VstSynth::getProductString(char* text) {
    copyText(platform::kProductName, text, kVstMaxProductStrLen);
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
    instrument_.suspend();
}

void VstSynth::resume() {
    instrument_.resume();
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

// An event never plays before an earlier one in the list, whatever their types.
VstInt32 VstSynth::processEvents(VstEvents* events) {
    instrument_.discardEvents();
    VstInt32 frame = 0;
    for (VstInt32 i = 0; events && i < events->numEvents;) {
        // The record declares two events, but the list is longer.
        const VstEvent* const* const list = events->events;
        const VstEvent* const event = list[i];
        if (event) frame = std::max(frame, event->deltaFrames);
        const bool midi = event && event->type == kVstMidiType;
        if (midi) {
            const auto& message = reinterpret_cast<const VstMidiEvent*>(event)->midiData;
            instrument_.addMessage(frame, reinterpret_cast<const std::uint8_t*>(message));
        }
        // Intentional: an event of another type also skips its successor.
        i += midi ? 1 : 2;
    }
    return 1;
}

void VstSynth::processReplacing(float**, float** outputs, VstInt32 sampleFrames) {
    instrument_.render(outputs ? outputs[0] : nullptr, outputs ? outputs[1] : nullptr,
                       sampleFrames);
}

VstInt32 VstSynth::processPendingEvents(VstInt32 frame) {
    return instrument_.playEventsUpTo(frame - 1);
}

void VstSynth::setParameter(VstInt32 index, float value) {
    instrument_.setParameter(index, value);
}

float VstSynth::getParameter(VstInt32 index) {
    return instrument_.parameter(index);
}

void VstSynth::getParameterLabel(VstInt32 index, char* label) {
    copyText(instrument_.parameterLabel(index), label, kVstMaxParamStrLen);
}

void VstSynth::getParameterDisplay(VstInt32 index, char* text) {
    copyText(instrument_.parameterDisplay(index), text, kVstMaxParamStrLen);
}

void VstSynth::getParameterName(VstInt32 index, char* text) {
    copyText(instrument_.parameterName(index), text, state::kNameSize);
}

void VstSynth::getProgramName(char* name) {
    copyText(instrument_.programName(getProgram()), name, state::kNameSize);
}

bool VstSynth::getProgramNameIndexed(VstInt32, VstInt32 index, char* text) {
    if (!state::isProgram(index)) return false;
    copyText(instrument_.programName(index), text, state::kNameSize);
    return true;
}

bool VstSynth::keysRequired() {
    return editor_ && editor_->wantsKeys();
}

VstInt32 VstSynth::getChunk(void** data, bool isPreset) {
    if (isPreset) {
        *data = &instrument_.programChunk();
        return sizeof(state::ProgramRecord);
    }
    *data = &instrument_.bankChunk();
    return sizeof(state::BankChunk);
}

VstInt32 VstSynth::setChunk(void* data, VstInt32 byteSize, bool isPreset) {
    if (isPreset) {
        instrument_.loadProgramChunk(data, byteSize);
    } else {
        instrument_.loadBankChunk(data, byteSize);
    }
    return 1;
}

void VstSynth::edited(int parameter, float value) {
    callHost(audioMasterAutomate, parameter, 0, nullptr, value);
}

void VstSynth::displayChanged(instrument::DisplayChange change) {
    const bool isProgram = change == instrument::DisplayChange::kProgram;
    if (isProgram) afterProgramPush();
    if (updateDisplay() && isProgram) updateDisplay();
}

}  // namespace vst2
