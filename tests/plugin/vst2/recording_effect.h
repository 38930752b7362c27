// An effect and an editor that record every operation called, with its arguments.
#pragma once

#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include "plugin/vst2/audio_effect_x.h"

namespace vst2 {

// The operations since the last call, separated by semicolons: name, then arguments. Pointers are
// "null", "buffer" for the address under test, or "other".
class CallNote {
  public:
    explicit CallNote(const void* buffer) : buffer_(buffer) {}

    template <typename... Args>
    void write(const char* operation, Args... args) {
        std::ostringstream line;
        line << operation;
        ((line << ' ', append(line, args)), ...);
        text_ += text_.empty() ? line.str() : "; " + line.str();
    }
    std::string take() { return std::exchange(text_, std::string()); }

  private:
    template <typename T>
    void append(std::ostream& line, T value) const {
        if constexpr (std::is_pointer_v<T>) {
            line << (!value                                       ? "null"
                     : static_cast<const void*>(value) == buffer_ ? "buffer"
                                                                  : "other");
        } else {
            line << value;
        }
    }

    const void* buffer_;
    std::string text_;
};

class RecordingEditor : public AEffEditor {
  public:
    RecordingEditor(AudioEffect* effect, CallNote& note) : AEffEditor(effect), note_(note) {}
    ~RecordingEditor() override { note_.write("~editor"); }

    bool getRect(ERect** rect) override { return note("getRect", rect); }
    bool open(void* window) override {
        AEffEditor::open(window);
        return note("editor.open", window);
    }
    void close() override {
        AEffEditor::close();
        note("editor.close");
    }
    void idle() override { note("idle"); }
    bool onKeyDown(const VstKeyCode& key) override {
        return note("onKeyDown", key.character, int{key.virt}, int{key.modifier});
    }
    bool onKeyUp(const VstKeyCode& key) override {
        return note("onKeyUp", key.character, int{key.virt}, int{key.modifier});
    }
    bool onWheel(float distance) override { return note("onWheel", distance) && distance > 0.0f; }
    bool setKnobMode(VstInt32 mode) override { return note("setKnobMode", mode); }

  private:
    template <typename... Args>
    bool note(const char* operation, Args... args) {
        note_.write(operation, args...);
        return true;
    }

    CallNote& note_;
};

// Every answer differs from the base class's: true instead of false, 7 instead of 0.
class RecordingEffect : public AudioEffectX {
  public:
    RecordingEffect(audioMasterCallback host, CallNote& note)
        : AudioEffectX(host, 128, 42), note_(note) {}
    ~RecordingEffect() override { note_.write("~effect"); }

    void open() override { note("open"); }
    void close() override { note("close"); }
    void suspend() override { note("suspend"); }
    void resume() override { note("resume"); }
    void setSampleRate(float hz) override { note("setSampleRate", hz); }
    void setBlockSize(VstInt32 frames) override { note("setBlockSize", frames); }
    void process(float** in, float** out, VstInt32 n) override { note("process", in, out, n); }
    void processReplacing(float** in, float** out, VstInt32 n) override {
        note("processReplacing", in, out, n);
    }
    void processDoubleReplacing(double** in, double** out, VstInt32 n) override {
        note("processDoubleReplacing", in, out, n);
    }
    void setParameter(VstInt32 i, float value) override { note("setParameter", i, value); }
    float getParameter(VstInt32 i) override { return note("getParameter", i) * 0.5f; }
    VstInt32 getProgram() override { return note("getProgram"); }
    void setProgram(VstInt32 i) override { note("setProgram", i); }
    void setProgramName(const char* text) override { note("setProgramName", text); }
    void getProgramName(char* text) override { note("getProgramName", text); }
    void getParameterLabel(VstInt32 i, char* text) override { note("getParameterLabel", i, text); }
    void getParameterDisplay(VstInt32 i, char* text) override {
        note("getParameterDisplay", i, text);
    }
    void getParameterName(VstInt32 i, char* text) override { note("getParameterName", i, text); }
    VstInt32 getChunk(void** data, bool preset) override { return note("getChunk", data, preset); }
    VstInt32 setChunk(void* data, VstInt32 size, bool preset) override {
        return note("setChunk", data, size, preset);
    }
    float getVu() override { return note("getVu") / 14.0f; }

    bool canParameterBeAutomated(VstInt32 i) override {
        return !note("canParameterBeAutomated", i);
    }
    bool string2parameter(VstInt32 i, const char* text) override {
        return note("string2parameter", i, text);
    }
    bool getParameterProperties(VstInt32 i, VstParameterProperties* p) override {
        return note("getParameterProperties", i, p);
    }
    bool getProgramNameIndexed(VstInt32 category, VstInt32 i, char* text) override {
        return note("getProgramNameIndexed", category, i, text);
    }
    bool beginSetProgram() override { return note("beginSetProgram"); }
    bool endSetProgram() override { return note("endSetProgram"); }
    VstInt32 beginLoadBank(VstPatchChunkInfo* p) override { return note("beginLoadBank", p); }
    VstInt32 beginLoadProgram(VstPatchChunkInfo* p) override { return note("beginLoadProgram", p); }
    bool getInputProperties(VstInt32 pin, VstPinProperties* p) override {
        return note("getInputProperties", pin, p);
    }
    bool getOutputProperties(VstInt32 pin, VstPinProperties* p) override {
        return note("getOutputProperties", pin, p);
    }
    bool setSpeakerArrangement(VstSpeakerArrangement* in, VstSpeakerArrangement* out) override {
        return note("setSpeakerArrangement", in, out);
    }
    bool getSpeakerArrangement(VstSpeakerArrangement** in, VstSpeakerArrangement** out) override {
        return note("getSpeakerArrangement", in, out);
    }
    bool setBypass(bool on) override { return note("setBypass", on); }
    bool setPanLaw(VstInt32 type, float gain) override { return note("setPanLaw", type, gain); }
    bool setProcessPrecision(VstInt32 p) override { return note("setProcessPrecision", p); }
    VstInt32 getNumMidiInputChannels() override { return note("getNumMidiInputChannels"); }
    VstInt32 getNumMidiOutputChannels() override { return note("getNumMidiOutputChannels"); }
    VstInt32 processEvents(VstEvents* events) override { return note("processEvents", events); }
    VstInt32 startProcess() override { return note("startProcess"); }
    VstInt32 stopProcess() override { return note("stopProcess"); }
    bool processVariableIo(VstVariableIo* p) override { return note("processVariableIo", p); }
    VstInt32 setTotalSampleToProcess(VstInt32 frames) override {
        return note("setTotalSampleToProcess", frames);
    }
    bool getEffectName(char* text) override { return note("getEffectName", text); }
    bool getVendorString(char* text) override { return note("getVendorString", text); }
    bool getProductString(char* text) override { return note("getProductString", text); }
    VstInt32 getVendorVersion() override { return note("getVendorVersion"); }
    VstIntPtr vendorSpecific(VstInt32 i, VstIntPtr value, void* p, float opt) override {
        return note("vendorSpecific", i, value, p, opt);
    }
    VstInt32 canDo(const char* text) override { return note("canDo", text); }
    VstInt32 getVstVersion() override { return note("getVstVersion"); }
    VstPlugCategory getPlugCategory() override {
        note("getPlugCategory");
        return kPlugSurroundFx;  // 7
    }
    VstInt32 getGetTailSize() override { return note("getGetTailSize"); }
    VstInt32 getNextShellPlugin(char* text) override { return note("getNextShellPlugin", text); }
    VstInt32 getMidiProgramName(VstInt32 channel, MidiProgramName* p) override {
        return note("getMidiProgramName", channel, p);
    }
    VstInt32 getCurrentMidiProgram(VstInt32 channel, MidiProgramName* p) override {
        return note("getCurrentMidiProgram", channel, p);
    }
    VstInt32 getMidiProgramCategory(VstInt32 channel, MidiProgramCategory* p) override {
        return note("getMidiProgramCategory", channel, p);
    }
    bool hasMidiProgramsChanged(VstInt32 channel) override {
        return note("hasMidiProgramsChanged", channel);
    }
    bool getMidiKeyName(VstInt32 channel, MidiKeyName* p) override {
        return note("getMidiKeyName", channel, p);
    }
    bool offlineNotify(VstAudioFile* p, VstInt32 count, bool start) override {
        return note("offlineNotify", p, count, start);
    }
    bool offlinePrepare(VstOfflineTask* p, VstInt32 count) override {
        return note("offlinePrepare", p, count);
    }
    bool offlineRun(VstOfflineTask* p, VstInt32 count) override {
        return note("offlineRun", p, count);
    }
    VstInt32 getNumCategories() override { return note("getNumCategories"); }
    bool copyProgram(VstInt32 destination) override { return note("copyProgram", destination); }
    void inputConnected(VstInt32 pin, bool on) override { note("inputConnected", pin, on); }
    void outputConnected(VstInt32 pin, bool on) override { note("outputConnected", pin, on); }
    VstInt32 reportCurrentPosition() override { return note("reportCurrentPosition"); }
    float* reportDestinationBuffer() override {
        note("reportDestinationBuffer");
        return reinterpret_cast<float*>(7);
    }
    void setBlockSizeAndSampleRate(VstInt32 frames, float hz) override {
        note("setBlockSizeAndSampleRate", frames, hz);
    }
    bool getErrorText(char* text) override { return note("getErrorText", text); }
    VstInt32 fxIdle() override { return note("fxIdle"); }
    void* getIcon() override {
        note("getIcon");
        return reinterpret_cast<void*>(7);
    }
    bool setViewPosition(VstInt32 x, VstInt32 y) override { return note("setViewPosition", x, y); }
    bool keysRequired() override { return note("keysRequired"); }

  private:
    template <typename... Args>
    VstInt32 note(const char* operation, Args... args) {
        note_.write(operation, args...);
        return 7;
    }

    CallNote& note_;
};

}  // namespace vst2
