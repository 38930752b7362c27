// The instrument as its host sees it: construction and identity.
#include "plugin/vst_synth.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace plugin {

namespace {

constexpr std::string_view kName = "Quarzel Strings";
constexpr std::string_view kVendor = "tembrilon.com";
constexpr std::string_view kPinLabel = "ZLM";
static_assert(kVendor.size() == 13);

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

VstSynth::VstSynth(audioMasterCallback host) : AudioEffectX(host, kNumPrograms, kNumParams) {
    programsAreChunks();
    if (host) {
        setNumInputs(0);
        setNumOutputs(2);
        isSynth();
        canProcessReplacing();
        setUniqueID(kUniqueId);
    }

    // Here the controller map is loaded.

    // Here the engine is built, at the host's rate, and the default bank loaded.
    updateSampleRate();
    setProgram(currentProgram_);
    updateDisplay();
    initialising_ = false;

    // Here the editor attaches itself and program 0 is pushed.
}

VstSynth::~VstSynth() = default;

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

// Here parameters, programs and chunks are forwarded to the bank, events and sound to the engine.

void VstSynth::suspend() {}

void VstSynth::resume() {}

void VstSynth::setSampleRate(float sampleRate) {
    AudioEffectX::setSampleRate(sampleRate);
}

void VstSynth::setBlockSize(VstInt32 sampleFrames) {
    AudioEffectX::setBlockSize(sampleFrames);
}

void VstSynth::processReplacing(float**, float** outputs, VstInt32 sampleFrames) {
    if (!outputs || sampleFrames <= 0) return;
    for (int channel = 0; channel < 2; ++channel) {
        if (outputs[channel]) std::fill_n(outputs[channel], sampleFrames, 0.0f);
    }
}

void VstSynth::setParameter(VstInt32, float) {}

float VstSynth::getParameter(VstInt32) {
    return 0.0f;
}

void VstSynth::setProgram(VstInt32 program) {
    AudioEffectX::setProgram(program);
}

void VstSynth::setProgramName(const char*) {}

void VstSynth::getProgramName(char* name) {
    *name = '\0';
}

void VstSynth::getParameterLabel(VstInt32, char* label) {
    *label = '\0';
}

void VstSynth::getParameterDisplay(VstInt32, char* text) {
    *text = '\0';
}

void VstSynth::getParameterName(VstInt32, char* text) {
    *text = '\0';
}

VstInt32 VstSynth::getChunk(void**, bool) {
    return 0;
}

VstInt32 VstSynth::setChunk(void*, VstInt32, bool) {
    return 1;
}

bool VstSynth::getProgramNameIndexed(VstInt32, VstInt32, char*) {
    return false;
}

VstInt32 VstSynth::processEvents(VstEvents*) {
    return 1;
}

bool VstSynth::copyProgram(VstInt32) {
    return false;
}

VstInt32 VstSynth::processPendingEvents(VstInt32) {
    return -1;
}

}  // namespace plugin
