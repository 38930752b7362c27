// The instrument as a VST 2.4 effect: forwards each published operation.
#pragma once

#include <memory>

#include "instrument/instrument.h"
#include "platform/product.h"
#include "plugin/vst2/audio_effect_x.h"

namespace vst2 {

constexpr VstInt32 kUniqueId = platform::kProductCode;

// Lives from VSTPluginMain to the host's effClose.
class VstSynth : public AudioEffectX, private instrument::Host {
  public:
    // host may be null for an instance without a host.
    explicit VstSynth(audioMasterCallback host);
    // The same with the caller's engine.
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
    void setProgram(VstInt32 program) override { instrument_.setProgram(program); }
    void setProgramName(const char* name) override { instrument_.setProgramName(name); }
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
    bool copyProgram(VstInt32 destination) override { return instrument_.copyProgram(destination); }
    bool keysRequired() override;  // while a text field or a menu of the editor is open

    // The mouse wheel as some hosts send it: codes 'stCA' and 'Whee', distance in clicks. Returns 1
    // if the editor used it, else 0.
    virtual VstIntPtr onWheelMessage(VstInt32 lArg, VstIntPtr lArg2, void* ptr, float floatArg);
    // Audio thread. Plays pending events that are due up to the frame; the block's first frame is
    // 1. Returns the index of the next event, or -1 if none is pending.
    virtual VstInt32 processPendingEvents(VstInt32 frame);
    // Called once after each program push.
    virtual void afterProgramPush() {}

    instrument::Instrument& instrument() { return instrument_; }

  private:
    void gestureBegins(int parameter) override { beginEdit(parameter); }
    void edited(int parameter, float value) override;
    void gestureEnds(int parameter) override { endEdit(parameter); }
    void displayChanged(instrument::DisplayChange change) override;
    bool resizeEditor(int width, int height) override { return sizeWindow(width, height); }

    instrument::Instrument instrument_;
};

}  // namespace vst2
