// The VST 2 base class of an effect. It owns the host's record and answers the opcodes of VST 1.
#pragma once

#include <atomic>
#include <memory>

#include "plugin/vst2/aeff_editor.h"
#include "plugin/vst2/vst2.h"

namespace vst2 {

// Operations keep their published names. A host reaches each through the opcode of the same name.
// The defaults do nothing and answer "no". Text buffers belong to the host and are never null,
// because the dispatcher rejects null pointers. Parameter indices are not checked.
class AudioEffect {
  public:
    // host may be null for an effect without a host.
    AudioEffect(audioMasterCallback host, VstInt32 numPrograms, VstInt32 numParams);
    virtual ~AudioEffect();  // deletes the editor
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    // Host UI thread. Returns 0 for unknown opcodes and missing arguments.
    virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                 float opt);

    virtual void open() {}
    virtual void close() {}
    virtual void suspend() {}
    virtual void resume() {}
    virtual void setSampleRate(float sampleRate);      // Hz; ignored unless above 0
    virtual void setBlockSize(VstInt32 sampleFrames);  // ignored unless above 0

    // Audio thread. One array of sampleFrames values per channel.
    virtual void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) = 0;
    virtual void processDoubleReplacing(double** inputs, double** outputs, VstInt32 sampleFrames);

    // Any thread. Values are 0..1.
    virtual void setParameter(VstInt32, float) {}
    virtual float getParameter(VstInt32) { return 0.0f; }
    virtual void setParameterAutomated(VstInt32 index, float value);  // also tells the host

    virtual VstInt32 getProgram() { return currentProgram_; }
    virtual void setProgram(VstInt32 program) { currentProgram_ = program; }
    virtual void setProgramName(const char*) {}
    virtual void getProgramName(char* name) { *name = '\0'; }
    virtual void getParameterLabel(VstInt32, char* label) { *label = '\0'; }
    virtual void getParameterDisplay(VstInt32, char* text) { *text = '\0'; }
    virtual void getParameterName(VstInt32, char* text) { *text = '\0'; }

    // Points *data at bytes that are valid until the next call. Returns their number.
    virtual VstInt32 getChunk(void** /*data*/, bool /*isPreset*/) { return 0; }
    virtual VstInt32 setChunk(void* /*data*/, VstInt32 /*byteSize*/, bool /*isPreset*/) {
        return 0;
    }

    // Fields of the record. Call these before the host has it.
    void setUniqueID(VstInt32 id) { cEffect_.uniqueID = id; }
    void setNumInputs(VstInt32 channels) { cEffect_.numInputs = channels; }
    void setNumOutputs(VstInt32 channels) { cEffect_.numOutputs = channels; }
    void setInitialDelay(VstInt32 sampleFrames) { cEffect_.initialDelay = sampleFrames; }
    void canProcessReplacing(bool state = true) { setFlag(effFlagsCanReplacing, state); }
    void canDoubleReplacing(bool state = true) { setFlag(effFlagsCanDoubleReplacing, state); }
    void programsAreChunks(bool state = true) { setFlag(effFlagsProgramChunks, state); }

    // Takes ownership and deletes the previous editor. Null removes it.
    void setEditor(AEffEditor* editor);
    AEffEditor* getEditor() const { return editor_.get(); }

    AEffect* getAeffect() { return &cEffect_; }
    float getSampleRate() const { return sampleRate_; }
    VstInt32 getBlockSize() const { return blockSize_; }

    // Questions to the host.
    virtual VstInt32 getMasterVersion();  // 1 if the host does not tell
    virtual VstInt32 getCurrentUniqueId();
    virtual void masterIdle();

    // Deprecated: the level, 0..1, and the process entry that adds to its outputs.
    virtual float getVu() { return 0.0f; }
    virtual void process(float** inputs, float** outputs, VstInt32 sampleFrames);

  protected:
    // Returns the host's answer, or 0 without a host.
    VstIntPtr callHost(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f);
    void setFlag(VstInt32 flag, bool state);

    audioMasterCallback audioMaster_;
    std::unique_ptr<AEffEditor> editor_;
    // Written by the host's user-interface thread, read by any thread.
    std::atomic<float> sampleRate_{44100.0f};  // Hz
    std::atomic<VstInt32> blockSize_{1024};    // largest block, frames
    VstInt32 numPrograms_;
    VstInt32 numParams_;
    VstInt32 currentProgram_ = 0;
    AEffect cEffect_ = {};
};

}  // namespace vst2
