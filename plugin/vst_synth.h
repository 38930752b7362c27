// The instrument as its host sees it: identity, parameters, programs, events and sound, each
// forwarded.
#pragma once

#include <atomic>
#include <memory>

#include "engine/midi_input.h"
#include "plugin/audio_effect_x.h"
#include "plugin/event_queue.h"
#include "state/controller_map.h"
#include "state/instrument.h"

namespace plugin {

constexpr VstInt32 kUniqueId = fourCharCode("seni");

// One instance lives from VSTPluginMain to the host's effClose.
class VstSynth : public AudioEffectX, private engine::EventSource, private engine::MidiListener {
  public:
    // Host may be null, for an instance that no host drives.
    explicit VstSynth(audioMasterCallback host);
    // The same around an engine of the caller's choice.
    VstSynth(audioMasterCallback host, std::unique_ptr<engine::SoundEngine> engine);
    ~VstSynth() override;

    void suspend() override;
    void resume() override;
    void setSampleRate(float sampleRate) override;
    void setBlockSize(VstInt32 sampleFrames) override;
    void processReplacing(float** inputs, float** outputs, VstInt32 sampleFrames) override;

    void setParameter(VstInt32 index, float value) override;
    float getParameter(VstInt32 index) override;
    VstInt32 getProgram() override { return instrument_.program(); }
    void setProgram(VstInt32 program) override;
    void setProgramName(const char* name) override;
    void setProgramNameIndexed(VstInt32 program, const char* name);
    void getProgramName(char* name) override;
    void getParameterLabel(VstInt32 index, char* label) override;
    void getParameterDisplay(VstInt32 index, char* text) override;
    void getParameterName(VstInt32 index, char* text) override;
    VstInt32 getChunk(void** data, bool isPreset) override;
    VstInt32 setChunk(void* data, VstInt32 byteSize, bool isPreset) override;
    bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text) override;

    bool getOutputProperties(VstInt32 pin, VstPinProperties* properties) override;
    VstInt32 getNumMidiInputChannels() override { return 1; }
    VstInt32 getNumMidiOutputChannels() override { return 0; }
    VstInt32 processEvents(VstEvents* events) override;
    bool getEffectName(char* name) override;
    bool getVendorString(char* text) override;
    bool getProductString(char* text) override;
    VstInt32 getVendorVersion() override { return 1; }
    VstInt32 canDo(const char* text) override;  // 1 or -1
    bool copyProgram(VstInt32 destination) override;
    bool keysRequired() override;  // while the editor is typed into

    // A turn of the wheel as some hosts pass it on: codes 'stCA' and 'Whee', distance in clicks.
    // 1 when the editor used it, else 0.
    virtual VstIntPtr onWheelMessage(VstInt32 lArg, VstIntPtr lArg2, void* ptr, float floatArg);
    // Audio thread. Hands the engine the host's events due up to the frame, the block's first being
    // 1; returns the index of the next event, -1 when none is pending.
    virtual VstInt32 processPendingEvents(VstInt32 frame);
    // Called once after each program push.
    virtual void afterProgramPush() {}

    // The next controller is bound to the parameter armed here.
    state::LearnSlot& learnSlot() { return learnSlot_; }
    // For its queries.
    const engine::SoundEngine& engine() const { return instrument_.engine(); }

  private:
    int dispatchUpTo(int frame) override {
        processPendingEvents(frame);
        return events_.nextFrame();
    }
    void programChange(int program) override { setProgram(program); }
    bool controlChange(int controller, int value) override;
    void tellEditor(VstInt32 index);
    void announceProgram();

    state::Instrument instrument_;
    EventQueue events_;
    state::LearnSlot learnSlot_;
    // Set while the engine is being built: events and parameters have no effect yet.
    std::atomic<bool> initialising_{true};
};

}  // namespace plugin
