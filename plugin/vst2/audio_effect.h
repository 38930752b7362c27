// The VST 2 base class of an effect: owns the record a host holds and answers the opcodes of VST 1.
#pragma once

#include <atomic>
#include <memory>

#include "plugin/vst2/aeff_editor.h"
#include "plugin/vst2/vst2.h"

namespace vst2 {

// Operations keep their published names. A host reaches each through the opcode of the same name;
// the defaults do nothing and answer "no". Text buffers are the host's and never null: the
// dispatcher turns null pointers away. Parameter indices arrive as the host gave them.
class AudioEffect {
  public:
    // Host may be null, for an effect that no host drives.
    AudioEffect(audioMasterCallback host, VstInt32 numPrograms, VstInt32 numParams);
    virtual ~AudioEffect();  // deletes the editor
    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    // Host UI thread. Unknown opcodes and missing arguments are answered with 0.
    virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                                 float opt);

    virtual void open() {}
    virtual void close() {}
    virtual void suspend() {}
    virtual void resume() {}
    virtual void setSampleRate(float sampleRate);      // Hz; above 0, or nothing changes
    virtual void setBlockSize(VstInt32 sampleFrames);  // above 0, or nothing changes

    // Audio thread. One array of sampleFrames values for each channel.
    virtual void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) = 0;
    virtual void processDoubleReplacing(double** inputs, double** outputs, VstInt32 sampleFrames);

    // Any thread. Values are 0..1.
    virtual void setParameter(VstInt32, float) {}
    virtual float getParameter(VstInt32) { return 0.0f; }
    virtual void setParameterAutomated(VstInt32 index, float value);  // and tells the host

    virtual VstInt32 getProgram() { return currentProgram_; }
    virtual void setProgram(VstInt32 program) { currentProgram_ = program; }
    virtual void setProgramName(const char*) {}
    virtual void getProgramName(char* name) { *name = '\0'; }
    virtual void getParameterLabel(VstInt32, char* label) { *label = '\0'; }
    virtual void getParameterDisplay(VstInt32, char* text) { *text = '\0'; }
    virtual void getParameterName(VstInt32, char* text) { *text = '\0'; }

    // Points *data at bytes that stay valid until the next call and returns how many.
    virtual VstInt32 getChunk(void** /*data*/, bool /*isPreset*/) { return 0; }
    virtual VstInt32 setChunk(void* /*data*/, VstInt32 /*byteSize*/, bool /*isPreset*/) {
        return 0;
    }

    // What the record says to the host. Call them before the host has the record.
    void setUniqueID(VstInt32 id) { cEffect_.uniqueID = id; }
    void setNumInputs(VstInt32 channels) { cEffect_.numInputs = channels; }
    void setNumOutputs(VstInt32 channels) { cEffect_.numOutputs = channels; }
    void setInitialDelay(VstInt32 sampleFrames) { cEffect_.initialDelay = sampleFrames; }
    void canProcessReplacing(bool state = true) { setFlag(effFlagsCanReplacing, state); }
    void canDoubleReplacing(bool state = true) { setFlag(effFlagsCanDoubleReplacing, state); }
    void programsAreChunks(bool state = true) { setFlag(effFlagsProgramChunks, state); }

    // Takes the editor over and deletes the one before; null leaves the effect without.
    void setEditor(AEffEditor* editor);
    AEffEditor* getEditor() const { return editor_.get(); }

    AEffect* getAeffect() { return &cEffect_; }
    float getSampleRate() const { return sampleRate_; }
    VstInt32 getBlockSize() const { return blockSize_; }

    // Questions to the host.
    virtual VstInt32 getMasterVersion();  // 1 when it does not say
    virtual VstInt32 getCurrentUniqueId();
    virtual void masterIdle();

    // Deprecated. Level 0..1, and the accumulating process entry, which adds to its outputs.
    virtual float getVu() { return 0.0f; }
    virtual void process(float** inputs, float** outputs, VstInt32 sampleFrames);

  protected:
    // The host's answer, 0 without a host.
    VstIntPtr callHost(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f);
    void setFlag(VstInt32 flag, bool state);

    audioMasterCallback audioMaster_;
    std::unique_ptr<AEffEditor> editor_;
    // Set by the host's user-interface thread, read by any.
    std::atomic<float> sampleRate_{44100.0f};  // Hz
    std::atomic<VstInt32> blockSize_{1024};    // the most frames a block will have
    VstInt32 numPrograms_;
    VstInt32 numParams_;
    VstInt32 currentProgram_ = 0;
    AEffect cEffect_ = {};
};

}  // namespace vst2
