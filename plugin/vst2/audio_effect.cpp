// The record's entry points and the opcodes of VST 1.
#include "plugin/vst2/audio_effect.h"

#include <cmath>
#include <iterator>

#include "plugin/vst2/dispatch_table.h"

namespace vst2 {

namespace {

AudioEffect* instanceOf(AEffect* record) {
    return record ? static_cast<AudioEffect*>(record->object) : nullptr;
}

// The record's entry points. No exception may reach the host.

VstIntPtr dispatchEntry(AEffect* record, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                        void* ptr, float opt) {
    AudioEffect* const effect = instanceOf(record);
    if (!effect) return 0;
    try {
        const VstIntPtr answer = effect->dispatcher(opcode, index, value, ptr, opt);
        if (opcode != effClose) return answer;
    } catch (...) {
        if (opcode != effClose) return 0;
    }
    delete effect;
    return 1;
}

void processEntry(AEffect* record, float** inputs, float** outputs, VstInt32 sampleFrames) {
    if (AudioEffect* const effect = instanceOf(record)) {
        effect->process(inputs, outputs, sampleFrames);
    }
}

void processReplacingEntry(AEffect* record, float** inputs, float** outputs,
                           VstInt32 sampleFrames) {
    if (AudioEffect* const effect = instanceOf(record)) {
        effect->processReplacing(inputs, outputs, sampleFrames);
    }
}

void processDoubleReplacingEntry(AEffect* record, double** inputs, double** outputs,
                                 VstInt32 sampleFrames) {
    if (AudioEffect* const effect = instanceOf(record)) {
        effect->processDoubleReplacing(inputs, outputs, sampleFrames);
    }
}

void setParameterEntry(AEffect* record, VstInt32 index, float value) {
    if (AudioEffect* const effect = instanceOf(record)) effect->setParameter(index, value);
}

float getParameterEntry(AEffect* record, VstInt32 index) {
    AudioEffect* const effect = instanceOf(record);
    return effect ? effect->getParameter(index) : 0.0f;
}

// Answers that take more than one call.

VstIntPtr closeEffect(AudioEffect& effect, const HostCall&) {
    // Some hosts leave the editor open. Close it while the instance is still complete.
    AEffEditor* const editor = effect.getEditor();
    if (editor && editor->isOpen()) editor->close();
    effect.close();
    return 0;
}

VstIntPtr setProgramInRange(AudioEffect& effect, const HostCall& call) {
    const VstInt32 program = toInt32(call.value);
    if (program >= 0 && program < effect.getAeffect()->numPrograms) effect.setProgram(program);
    return 0;
}

VstIntPtr vuLevel(AudioEffect& effect, const HostCall&) {
    return static_cast<VstIntPtr>(effect.getVu() * 32767.0f);
}

VstIntPtr switchMains(AudioEffect& effect, const HostCall& call) {
    if (call.value != 0) {
        effect.resume();
    } else {
        effect.suspend();
    }
    return 0;
}

template <auto operation, From... from>
VstIntPtr editorsAnswer(AudioEffect& effect, const HostCall& call) {
    AEffEditor* const editor = effect.getEditor();
    return editor ? invoke<from...>(*editor, operation, call) : 0;
}

VstIntPtr identify(AudioEffect&, const HostCall&) {
    return kEffectIdentify;
}

VstIntPtr unanswered(AudioEffect&, const HostCall&) {
    return 0;
}

template <auto operation, From... from>
constexpr auto to = reach<AudioEffect, operation, from...>;

using Fx = AudioEffect;
constexpr DispatchRow<AudioEffect> kRows[] = {
    {effOpen, to<&Fx::open>},
    {effClose, closeEffect},
    {effSetProgram, setProgramInRange},
    {effGetProgram, to<&Fx::getProgram>},
    {effSetProgramName, to<&Fx::setProgramName, kPtr>},
    {effGetProgramName, to<&Fx::getProgramName, kPtr>},
    {effGetParamLabel, to<&Fx::getParameterLabel, kIndex, kPtr>},
    {effGetParamDisplay, to<&Fx::getParameterDisplay, kIndex, kPtr>},
    {effGetParamName, to<&Fx::getParameterName, kIndex, kPtr>},
    {effGetVu, vuLevel},
    {effSetSampleRate, to<&Fx::setSampleRate, kOpt>},
    {effSetBlockSize, to<&Fx::setBlockSize, kValue>},
    {effMainsChanged, switchMains},
    {effEditGetRect, editorsAnswer<&AEffEditor::getRect, kPtr>},
    {effEditOpen, editorsAnswer<&AEffEditor::open, kPtrOrNull>},
    {effEditClose, editorsAnswer<&AEffEditor::close>},
    {effEditDraw, unanswered},
    {effEditMouse, unanswered},
    {effEditKey, unanswered},
    {effEditIdle, editorsAnswer<&AEffEditor::idle>},
    {effEditTop, unanswered},
    {effEditSleep, unanswered},
    {effIdentify, identify},
    {effGetChunk, to<&Fx::getChunk, kPtr, kIndex>},
    {effSetChunk, to<&Fx::setChunk, kPtr, kValue, kIndex>},
};
static_assert(inOpcodeOrder(kRows, effOpen));

}  // namespace

AudioEffect::AudioEffect(audioMasterCallback host, VstInt32 numPrograms, VstInt32 numParams)
    : audioMaster_(host), numPrograms_(numPrograms), numParams_(numParams) {
    cEffect_.magic = kEffectMagic;
    cEffect_.dispatcher = dispatchEntry;
    cEffect_.process = processEntry;
    cEffect_.setParameter = setParameterEntry;
    cEffect_.getParameter = getParameterEntry;
    cEffect_.numPrograms = numPrograms;
    cEffect_.numParams = numParams;
    cEffect_.numInputs = 1;
    cEffect_.numOutputs = 2;
    cEffect_.flags = effFlagsCanReplacing;
    cEffect_.ioRatio = 1.0f;
    cEffect_.object = this;
    cEffect_.uniqueID = platform::fourCharCode("NoEf");
    cEffect_.version = 1;
    cEffect_.processReplacing = processReplacingEntry;
    cEffect_.processDoubleReplacing = processDoubleReplacingEntry;
}

AudioEffect::~AudioEffect() = default;

VstIntPtr AudioEffect::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                  float opt) {
    if (opcode < 0 || opcode >= static_cast<VstInt32>(std::size(kRows))) return 0;
    return kRows[opcode].answer(*this, {index, value, ptr, opt});
}

void AudioEffect::setSampleRate(float sampleRate) {
    if (std::isfinite(sampleRate) && sampleRate > 0.0f) sampleRate_ = sampleRate;
}

void AudioEffect::setBlockSize(VstInt32 sampleFrames) {
    if (sampleFrames > 0) blockSize_ = sampleFrames;
}

// The record does not offer double precision. If a host calls it anyway, nothing is written.
void AudioEffect::processDoubleReplacing(double**, double**, VstInt32) {}

// Adding to the outputs would need a buffer for a block of any length. VST 2 hosts call
// processReplacing if the record offers it, as ours does. A host that calls this one anyway hears
// nothing added, which the contract allows.
void AudioEffect::process(float**, float**, VstInt32) {}

void AudioEffect::setParameterAutomated(VstInt32 index, float value) {
    setParameter(index, value);
    callHost(audioMasterAutomate, index, 0, nullptr, value);
}

void AudioEffect::setEditor(AEffEditor* editor) {
    if (editor != editor_.get()) editor_.reset(editor);
    setFlag(effFlagsHasEditor, editor != nullptr);
}

VstInt32 AudioEffect::getMasterVersion() {
    const VstInt32 version = toInt32(callHost(audioMasterVersion));
    return version != 0 ? version : 1;
}

VstInt32 AudioEffect::getCurrentUniqueId() {
    return toInt32(callHost(audioMasterCurrentId));
}

void AudioEffect::masterIdle() {
    callHost(audioMasterIdle);
}

VstIntPtr AudioEffect::callHost(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                float opt) {
    return audioMaster_ ? audioMaster_(&cEffect_, opcode, index, value, ptr, opt) : 0;
}

void AudioEffect::setFlag(VstInt32 flag, bool state) {
    cEffect_.flags = state ? cEffect_.flags | flag : cEffect_.flags & ~flag;
}

}  // namespace vst2
