// An instrument for tests of hosts. It marks the frame of each event.
//
// A MIDI program change chooses a program. Left: "Level" for a note-on. Right: velocity / 128 for a
// note-on, the negative for a note-off. For "Ring" x 10 s after each note-on, both channels hold
// "Level" / 2. "Fault" makes every sample NaN. If a host breaks the rules of the interface, the
// output is kAlarm.
//
// Its state is saved as parameter lists. Programs do not contain "Ring" and "Fault": a program
// change sets them to 0. It refuses banks and programs of version 13.
#include <cmath>
#include <cstdio>
#include <cstring>

#include "plugin/vst2/audio_effect_x.h"

namespace {

enum Parameter { kLevel, kFirstViola, kSecondViola, kRing, kFault, kNumParameters };

constexpr const char* kParameterNames[] = {"Level", "Viola", "Viola", "Ring", "Fault"};
constexpr int kNumPrograms = 3;
constexpr int kNumHeldByPrograms = 3;
constexpr VstInt32 kRefusedVersion = 13;
constexpr float kAlarm = 9.0f;

struct Program {
    char name[kVstMaxProgNameLen];
    float values[kNumHeldByPrograms];
};

class Instrument final : public vst2::AudioEffectX {
  public:
    explicit Instrument(audioMasterCallback host)
        : AudioEffectX(host, kNumPrograms, kNumParameters) {
        setNumInputs(0);
        setUniqueID(platform::fourCharCode("TstI"));
        isSynth();
        cEffect_.version = 3;
    }

    void open() override { open_ = true; }
    void suspend() override { running_ = false; }
    void resume() override { running_ = true; }
    void setSampleRate(float hz) override { rate_ = hz; }
    void setBlockSize(VstInt32 frames) override { largestBlock_ = frames; }
    void setProgram(VstInt32 program) override {
        currentProgram_ = program;
        std::memcpy(parameters_, programs_[program].values, sizeof(Program::values));
        parameters_[kRing] = parameters_[kFault] = 0.0f;
    }
    void getProgramName(char* name) override { std::strcpy(name, programs_[getProgram()].name); }
    void setProgramName(const char* name) override {
        std::strcpy(programs_[getProgram()].name, name);
    }
    VstInt32 beginLoadBank(VstPatchChunkInfo* info) override {
        return info->pluginVersion == kRefusedVersion ? -1 : 1;
    }
    VstInt32 beginLoadProgram(VstPatchChunkInfo* info) override { return beginLoadBank(info); }
    void getParameterName(VstInt32 index, char* text) override {
        std::strcpy(text, kParameterNames[index]);
    }
    void getParameterDisplay(VstInt32 index, char* text) override {
        std::snprintf(text, kVstMaxParamStrLen, "%d", static_cast<int>(parameters_[index] * 100));
    }
    void getParameterLabel(VstInt32 index, char* text) override {
        std::strcpy(text, index == kLevel ? "%" : "");
    }
    bool getEffectName(char* text) override { return std::strcpy(text, "Test Instrument"); }
    VstInt32 processEvents(VstEvents* events) override {
        events_ = events;
        return 1;
    }
    float getParameter(VstInt32 index) override { return parameters_[index]; }
    void setParameter(VstInt32 index, float value) override {
        parameters_[index] = value;
        if (index < kNumHeldByPrograms) programs_[getProgram()].values[index] = value;
    }

    void processReplacing(float**, float** outputs, VstInt32 frames) override {
        const float level = parameters_[kLevel];
        const bool obeyed = keepsTheRules(frames);
        int next = 0;
        for (int frame = 0; frame < frames; ++frame) {
            float left = ringing_ > 0.0 ? level / 2 : 0.0f;
            float right = left;
            ringing_ -= 1.0;
            for (; events_ && next < events_->numEvents; ++next) {
                const VstEvent& event = *events_->events[next];
                if (obeyed && event.deltaFrames != frame) break;
                const char* const midi = reinterpret_cast<const VstMidiEvent&>(event).midiData;
                const int kind = midi[0] & 0xf0;
                if (kind == 0x80) right -= static_cast<float>(midi[2]) / 128.0f;
                if (kind == 0xc0) setProgram(midi[1] % kNumPrograms);
                if (kind != 0x90) continue;
                left = level;
                right += static_cast<float>(midi[2]) / 128.0f;
                ringing_ = parameters_[kRing] * 10.0 * rate_;
            }
            if (!obeyed) left = right = kAlarm;
            if (parameters_[kFault] > 0.5f) left = right = std::nanf("");
            outputs[0][frame] = left;
            outputs[1][frame] = right;
        }
        events_ = nullptr;
    }

  private:
    bool keepsTheRules(int frames) const {
        if (!open_ || !running_ || rate_ <= 0.0f) return false;
        if (frames < 1 || frames > largestBlock_) return false;
        int previous = 0;
        for (int i = 0; events_ && i < events_->numEvents; ++i) {
            const VstEvent& event = *events_->events[i];
            const bool isInOrder = event.deltaFrames >= previous && event.deltaFrames < frames;
            if (event.type != kVstMidiType || !isInOrder) return false;
            previous = event.deltaFrames;
        }
        return true;
    }

    Program programs_[kNumPrograms] = {{"Init", {0.5f, 0.25f, 0.75f}},
                                       {"Init", {0.375f, 0.25f, 0.75f}},
                                       {"Soft", {0.25f, 0.25f, 0.75f}}};
    float parameters_[kNumParameters] = {0.5f, 0.25f, 0.75f, 0.0f, 0.0f};
    float rate_ = 0.0f;
    VstInt32 largestBlock_ = 0;
    bool open_ = false;
    bool running_ = false;
    const VstEvents* events_ = nullptr;
    double ringing_ = 0.0;  // frames
};

}  // namespace

extern "C" AEffect* VSTPluginMain(audioMasterCallback host) {
    if (host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) < 2400) return nullptr;
    return (new Instrument(host))->getAeffect();
}
