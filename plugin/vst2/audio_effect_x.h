// The VST 2.4 base class of an effect, with the operations and host calls added after VST 1.
#pragma once

#include "plugin/vst2/audio_effect.h"

namespace vst2 {

// Adds no data. As in AudioEffect, each operation answers the opcode of its name. Defaults mean
// "no", "none" or "unknown" unless a comment says otherwise.
class AudioEffectX : public AudioEffect {
  public:
    using AudioEffect::AudioEffect;

    VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                         float opt) override;

    // Parameters.
    virtual bool canParameterBeAutomated(VstInt32) { return true; }
    // Sets a parameter from text. A null text asks whether that is possible.
    virtual bool string2parameter(VstInt32, const char*) { return false; }
    virtual bool getParameterProperties(VstInt32, VstParameterProperties*) { return false; }
    virtual bool beginEdit(VstInt32 index) { return callHost(audioMasterBeginEdit, index); }
    virtual bool endEdit(VstInt32 index) { return callHost(audioMasterEndEdit, index); }

    // Programs.
    virtual bool getProgramNameIndexed(VstInt32 /*category*/, VstInt32 /*index*/, char*) {
        return false;
    }
    virtual bool beginSetProgram() { return false; }
    virtual bool endSetProgram() { return false; }
    virtual VstInt32 beginLoadBank(VstPatchChunkInfo*) { return 0; }
    virtual VstInt32 beginLoadProgram(VstPatchChunkInfo*) { return 0; }

    // Channels and the connection to the host.
    virtual bool ioChanged() { return callHost(audioMasterIOChanged); }
    // These two adopt the host's answer if it is above 0, and return the resulting value.
    virtual float updateSampleRate();     // Hz
    virtual VstInt32 updateBlockSize();   // frames
    virtual VstInt32 getInputLatency();   // frames
    virtual VstInt32 getOutputLatency();  // frames
    virtual bool getInputProperties(VstInt32 /*pin*/, VstPinProperties*) { return false; }
    virtual bool getOutputProperties(VstInt32 /*pin*/, VstPinProperties*) { return false; }
    virtual bool setSpeakerArrangement(VstSpeakerArrangement* /*input*/,
                                       VstSpeakerArrangement* /*output*/) {
        return false;
    }
    // Sets both pointers to null. Either address may be null.
    virtual bool getSpeakerArrangement(VstSpeakerArrangement** input,
                                       VstSpeakerArrangement** output);
    virtual bool setBypass(bool) { return false; }
    virtual bool setPanLaw(VstInt32 /*type*/, float /*gain*/) { return false; }
    virtual bool setProcessPrecision(VstInt32) { return false; }
    virtual VstInt32 getNumMidiInputChannels() { return 0; }
    virtual VstInt32 getNumMidiOutputChannels() { return 0; }

    // Time and events. The host's list stays valid until the processReplacing that follows returns.
    virtual VstTimeInfo* getTimeInfo(VstInt32 filter);  // VstTimeInfoFlags; null if unknown
    virtual VstInt32 processEvents(VstEvents*) { return 0; }
    virtual bool sendVstEventsToHost(VstEvents* events);
    virtual VstInt32 startProcess() { return 0; }
    virtual VstInt32 stopProcess() { return 0; }
    virtual bool processVariableIo(VstVariableIo*) { return false; }
    virtual VstInt32 setTotalSampleToProcess(VstInt32 frames) { return frames; }

    // Host.
    virtual bool getHostVendorString(char* text);   // kVstMaxVendorStrLen
    virtual bool getHostProductString(char* text);  // kVstMaxProductStrLen
    virtual VstInt32 getHostVendorVersion();
    virtual VstIntPtr hostVendorSpecific(VstInt32 index, VstIntPtr value, void* ptr, float opt);
    virtual VstInt32 canHostDo(const char* text);
    virtual VstInt32 getHostLanguage();
    virtual VstInt32 getCurrentProcessLevel();  // VstProcessLevels
    virtual VstInt32 getAutomationState();      // VstAutomationStates
    virtual const char* getDirectory();         // the effect's folder; null if unknown
    virtual bool sizeWindow(VstInt32 width, VstInt32 height);  // pixels
    virtual bool updateDisplay() { return callHost(audioMasterUpdateDisplay); }
    virtual bool openFileSelector(VstFileSelect* selector);
    virtual bool closeFileSelector(VstFileSelect* selector);

    // Identity.
    void isSynth(bool state = true) { setFlag(effFlagsIsSynth, state); }
    virtual bool getEffectName(char*) { return false; }     // kVstMaxEffectNameLen
    virtual bool getVendorString(char*) { return false; }   // kVstMaxVendorStrLen
    virtual bool getProductString(char*) { return false; }  // kVstMaxProductStrLen
    virtual VstInt32 getVendorVersion() { return 0; }
    virtual VstIntPtr vendorSpecific(VstInt32 /*index*/, VstIntPtr, void*, float) { return 0; }
    virtual VstInt32 canDo(const char*) { return 0; }  // 1 yes, -1 no, 0 unknown
    virtual VstInt32 getVstVersion() { return kVstVersion; }
    virtual VstPlugCategory getPlugCategory();       // synth if the flag is set, else unknown
    virtual VstInt32 getGetTailSize() { return 0; }  // frames; 0 default, 1 no tail
    virtual VstInt32 getNextShellPlugin(char* /*name*/) { return 0; }

    // Names that a host displays for MIDI programs and keys, by MIDI channel.
    virtual VstInt32 getMidiProgramName(VstInt32, MidiProgramName*) { return 0; }
    virtual VstInt32 getCurrentMidiProgram(VstInt32, MidiProgramName*) { return -1; }
    virtual VstInt32 getMidiProgramCategory(VstInt32, MidiProgramCategory*) { return 0; }
    virtual bool hasMidiProgramsChanged(VstInt32) { return false; }
    virtual bool getMidiKeyName(VstInt32, MidiKeyName*) { return false; }

    // Offline processing of files.
    virtual bool offlineNotify(VstAudioFile*, VstInt32 /*count*/, bool /*start*/) { return false; }
    virtual bool offlinePrepare(VstOfflineTask*, VstInt32 /*count*/) { return false; }
    virtual bool offlineRun(VstOfflineTask*, VstInt32 /*count*/) { return false; }

    // Deprecated.
    virtual void wantEvents(VstInt32 filter = 1) { callHost(audioMasterWantMidi, 0, filter); }
    virtual VstInt32 getNumCategories() { return 1; }
    virtual bool copyProgram(VstInt32 /*destination*/) { return false; }
    virtual void inputConnected(VstInt32 /*pin*/, bool) {}
    virtual void outputConnected(VstInt32 /*pin*/, bool) {}
    virtual VstInt32 reportCurrentPosition() { return 0; }
    virtual float* reportDestinationBuffer() { return nullptr; }
    virtual void setBlockSizeAndSampleRate(VstInt32 sampleFrames, float sampleRate);
    virtual bool getErrorText(char*) { return false; }
    virtual VstInt32 fxIdle() { return 0; }
    virtual void* getIcon() { return nullptr; }
    virtual bool setViewPosition(VstInt32 /*x*/, VstInt32 /*y*/) { return false; }
    virtual bool keysRequired() { return false; }
};

}  // namespace vst2
