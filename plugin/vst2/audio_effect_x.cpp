// Maps opcodes to operations and implements the host calls.
#include "plugin/vst2/audio_effect_x.h"

#include <iterator>

#include "plugin/vst2/dispatch_table.h"

namespace vst2 {

namespace {

template <bool (AEffEditor::*operation)(const VstKeyCode&)>
VstIntPtr editorsKey(AudioEffectX& effect, const HostCall& call) {
    AEffEditor* const editor = effect.getEditor();
    if (!editor) return 0;
    const float modifiers = call.opt >= 0.0f && call.opt <= 255.0f ? call.opt : 0.0f;
    return (editor->*operation)({call.index, static_cast<unsigned char>(call.value),
                                 static_cast<unsigned char>(modifiers)});
}

VstIntPtr setKnobMode(AudioEffectX& effect, const HostCall& call) {
    AEffEditor* const editor = effect.getEditor();
    return editor && editor->setKnobMode(toInt32(call.value));
}

// Reversed, because the opcode originally asked the opposite.
VstIntPtr keysNotRequired(AudioEffectX& effect, const HostCall&) {
    return !effect.keysRequired();
}

// The answer means that the opcode is supported, whatever the result.
template <auto operation, From... from>
VstIntPtr acknowledged(AudioEffectX& effect, const HostCall& call) {
    invoke<from...>(effect, operation, call);
    return 1;
}

template <auto operation, From... from>
constexpr auto to = reach<AudioEffectX, operation, from...>;

using Fx = AudioEffectX;
constexpr DispatchRow<AudioEffectX> kRows[] = {
    {effProcessEvents, to<&Fx::processEvents, kPtr>},
    {effCanBeAutomated, to<&Fx::canParameterBeAutomated, kIndex>},
    {effString2Parameter, to<&Fx::string2parameter, kIndex, kPtrOrNull>},
    {effGetNumProgramCategories, to<&Fx::getNumCategories>},
    {effGetProgramNameIndexed, to<&Fx::getProgramNameIndexed, kValue, kIndex, kPtr>},
    {effCopyProgram, to<&Fx::copyProgram, kIndex>},
    {effConnectInput, acknowledged<&Fx::inputConnected, kIndex, kValue>},
    {effConnectOutput, acknowledged<&Fx::outputConnected, kIndex, kValue>},
    {effGetInputProperties, to<&Fx::getInputProperties, kIndex, kPtr>},
    {effGetOutputProperties, to<&Fx::getOutputProperties, kIndex, kPtr>},
    {effGetPlugCategory, to<&Fx::getPlugCategory>},
    {effGetCurrentPosition, to<&Fx::reportCurrentPosition>},
    {effGetDestinationBuffer, to<&Fx::reportDestinationBuffer>},
    {effOfflineNotify, to<&Fx::offlineNotify, kPtr, kValue, kIndex>},
    {effOfflinePrepare, to<&Fx::offlinePrepare, kPtr, kValue>},
    {effOfflineRun, to<&Fx::offlineRun, kPtr, kValue>},
    {effProcessVarIo, to<&Fx::processVariableIo, kPtr>},
    {effSetSpeakerArrangement, to<&Fx::setSpeakerArrangement, kValue, kPtrOrNull>},
    {effSetBlockSizeAndSampleRate, acknowledged<&Fx::setBlockSizeAndSampleRate, kValue, kOpt>},
    {effSetBypass, to<&Fx::setBypass, kValue>},
    {effGetEffectName, to<&Fx::getEffectName, kPtr>},
    {effGetErrorText, to<&Fx::getErrorText, kPtr>},
    {effGetVendorString, to<&Fx::getVendorString, kPtr>},
    {effGetProductString, to<&Fx::getProductString, kPtr>},
    {effGetVendorVersion, to<&Fx::getVendorVersion>},
    {effVendorSpecific, to<&Fx::vendorSpecific, kIndex, kValue, kPtrOrNull, kOpt>},
    {effCanDo, to<&Fx::canDo, kPtr>},
    {effGetTailSize, to<&Fx::getGetTailSize>},
    {effIdle, to<&Fx::fxIdle>},
    {effGetIcon, to<&Fx::getIcon>},
    {effSetViewPosition, to<&Fx::setViewPosition, kIndex, kValue>},
    {effGetParameterProperties, to<&Fx::getParameterProperties, kIndex, kPtr>},
    {effKeysRequired, keysNotRequired},
    {effGetVstVersion, to<&Fx::getVstVersion>},
    {effEditKeyDown, editorsKey<&AEffEditor::onKeyDown>},
    {effEditKeyUp, editorsKey<&AEffEditor::onKeyUp>},
    {effSetEditKnobMode, setKnobMode},
    {effGetMidiProgramName, to<&Fx::getMidiProgramName, kIndex, kPtr>},
    {effGetCurrentMidiProgram, to<&Fx::getCurrentMidiProgram, kIndex, kPtr>},
    {effGetMidiProgramCategory, to<&Fx::getMidiProgramCategory, kIndex, kPtr>},
    {effHasMidiProgramsChanged, to<&Fx::hasMidiProgramsChanged, kIndex>},
    {effGetMidiKeyName, to<&Fx::getMidiKeyName, kIndex, kPtr>},
    {effBeginSetProgram, to<&Fx::beginSetProgram>},
    {effEndSetProgram, to<&Fx::endSetProgram>},
    {effGetSpeakerArrangement, to<&Fx::getSpeakerArrangement, kValue, kPtrOrNull>},
    {effShellGetNextPlugin, to<&Fx::getNextShellPlugin, kPtr>},
    {effStartProcess, to<&Fx::startProcess>},
    {effStopProcess, to<&Fx::stopProcess>},
    {effSetTotalSampleToProcess, to<&Fx::setTotalSampleToProcess, kValue>},
    {effSetPanLaw, to<&Fx::setPanLaw, kValue, kOpt>},
    {effBeginLoadBank, to<&Fx::beginLoadBank, kPtr>},
    {effBeginLoadProgram, to<&Fx::beginLoadProgram, kPtr>},
    {effSetProcessPrecision, to<&Fx::setProcessPrecision, kValue>},
    {effGetNumMidiInputChannels, to<&Fx::getNumMidiInputChannels>},
    {effGetNumMidiOutputChannels, to<&Fx::getNumMidiOutputChannels>},
};
static_assert(inOpcodeOrder(kRows, effProcessEvents));
static_assert(effProcessEvents + std::size(kRows) == kNumEffectOpcodes);

}  // namespace

VstIntPtr AudioEffectX::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                   float opt) {
    if (opcode < effProcessEvents) return AudioEffect::dispatcher(opcode, index, value, ptr, opt);
    if (opcode >= kNumEffectOpcodes) return 0;
    return kRows[opcode - effProcessEvents].answer(*this, {index, value, ptr, opt});
}

float AudioEffectX::updateSampleRate() {
    const VstIntPtr hz = callHost(audioMasterGetSampleRate);
    if (hz > 0) sampleRate_ = static_cast<float>(hz);
    return sampleRate_;
}

VstInt32 AudioEffectX::updateBlockSize() {
    const VstInt32 sampleFrames = toInt32(callHost(audioMasterGetBlockSize));
    if (sampleFrames > 0) blockSize_ = sampleFrames;
    return blockSize_;
}

VstInt32 AudioEffectX::getInputLatency() {
    return toInt32(callHost(audioMasterGetInputLatency));
}

VstInt32 AudioEffectX::getOutputLatency() {
    return toInt32(callHost(audioMasterGetOutputLatency));
}

bool AudioEffectX::getSpeakerArrangement(VstSpeakerArrangement** input,
                                         VstSpeakerArrangement** output) {
    if (input) *input = nullptr;
    if (output) *output = nullptr;
    return false;
}

VstTimeInfo* AudioEffectX::getTimeInfo(VstInt32 filter) {
    return reinterpret_cast<VstTimeInfo*>(callHost(audioMasterGetTime, 0, filter));
}

bool AudioEffectX::sendVstEventsToHost(VstEvents* events) {
    return callHost(audioMasterProcessEvents, 0, 0, events);
}

bool AudioEffectX::getHostVendorString(char* text) {
    return callHost(audioMasterGetVendorString, 0, 0, text);
}

bool AudioEffectX::getHostProductString(char* text) {
    return callHost(audioMasterGetProductString, 0, 0, text);
}

VstInt32 AudioEffectX::getHostVendorVersion() {
    return toInt32(callHost(audioMasterGetVendorVersion));
}

VstInt32 AudioEffectX::getHostLanguage() {
    return toInt32(callHost(audioMasterGetLanguage));
}

VstIntPtr AudioEffectX::hostVendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt) {
    return callHost(audioMasterVendorSpecific, index, value, ptr, opt);
}

VstInt32 AudioEffectX::canHostDo(const char* text) {
    return toInt32(callHost(audioMasterCanDo, 0, 0, const_cast<char*>(text)));
}

VstInt32 AudioEffectX::getCurrentProcessLevel() {
    return toInt32(callHost(audioMasterGetCurrentProcessLevel));
}

VstInt32 AudioEffectX::getAutomationState() {
    return toInt32(callHost(audioMasterGetAutomationState));
}

const char* AudioEffectX::getDirectory() {
    return reinterpret_cast<const char*>(callHost(audioMasterGetDirectory));
}

bool AudioEffectX::sizeWindow(VstInt32 width, VstInt32 height) {
    return callHost(audioMasterSizeWindow, width, height);
}

bool AudioEffectX::openFileSelector(VstFileSelect* selector) {
    return callHost(audioMasterOpenFileSelector, 0, 0, selector);
}

bool AudioEffectX::closeFileSelector(VstFileSelect* selector) {
    return callHost(audioMasterCloseFileSelector, 0, 0, selector);
}

VstPlugCategory AudioEffectX::getPlugCategory() {
    return cEffect_.flags & effFlagsIsSynth ? kPlugCategSynth : kPlugCategUnknown;
}

void AudioEffectX::setBlockSizeAndSampleRate(VstInt32 sampleFrames, float sampleRate) {
    setBlockSize(sampleFrames);
    setSampleRate(sampleRate);
}

}  // namespace vst2
