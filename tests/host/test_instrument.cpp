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

#include "plugin/vst2/vst2.h"

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

struct Instrument {
    AEffect effect = {};
    Program programs[kNumPrograms] = {{"Init", {0.5f, 0.25f, 0.75f}},
                                      {"Init", {0.375f, 0.25f, 0.75f}},
                                      {"Soft", {0.25f, 0.25f, 0.75f}}};
    float parameters[kNumParameters] = {0.5f, 0.25f, 0.75f, 0.0f, 0.0f};
    int program = 0;
    float sampleRate = 0.0f;
    VstIntPtr blockSize = 0;
    bool open = false;
    bool running = false;
    const VstEvents* events = nullptr;
    double ringing = 0.0;  // frames
};

Instrument& instrumentOf(AEffect* effect) {
    return *static_cast<Instrument*>(effect->object);
}

void copyText(void* buffer, const char* text) {
    std::strcpy(static_cast<char*>(buffer), text);
}

void choose(Instrument& self, int program) {
    self.program = program;
    std::memcpy(self.parameters, self.programs[program].values, sizeof(Program::values));
    self.parameters[kRing] = self.parameters[kFault] = 0.0f;
}

VstIntPtr dispatch(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr,
                   float opt) {
    Instrument& self = instrumentOf(effect);
    switch (opcode) {
        case effOpen:
            self.open = true;
            return 1;
        case effClose:
            delete &self;
            return 1;
        case effSetProgram:
            choose(self, static_cast<int>(value));
            return 1;
        case effGetProgram:
            return self.program;
        case effGetProgramName:
            copyText(ptr, self.programs[self.program].name);
            return 1;
        case effSetProgramName:
            copyText(self.programs[self.program].name, static_cast<const char*>(ptr));
            return 1;
        case effBeginLoadBank:
        case effBeginLoadProgram:
            return static_cast<VstPatchChunkInfo*>(ptr)->pluginVersion == kRefusedVersion ? -1 : 1;
        case effGetParamName:
            copyText(ptr, kParameterNames[index]);
            return 1;
        case effGetParamDisplay:
            std::snprintf(static_cast<char*>(ptr), kVstMaxParamStrLen, "%d",
                          static_cast<int>(self.parameters[index] * 100.0f));
            return 1;
        case effGetParamLabel:
            copyText(ptr, index == kLevel ? "%" : "");
            return 1;
        case effGetEffectName:
            copyText(ptr, "Test Instrument");
            return 1;
        case effSetSampleRate:
            self.sampleRate = opt;
            return 1;
        case effSetBlockSize:
            self.blockSize = value;
            return 1;
        case effMainsChanged:
            self.running = value != 0;
            return 1;
        case effProcessEvents:
            self.events = static_cast<const VstEvents*>(ptr);
            return 1;
    }
    return 0;
}

bool keepsTheRules(const Instrument& self, int frames) {
    if (!self.open || !self.running || self.sampleRate <= 0.0f) return false;
    if (frames < 1 || frames > self.blockSize) return false;
    int previous = 0;
    for (int i = 0; self.events && i < self.events->numEvents; ++i) {
        const VstEvent& event = *self.events->events[i];
        const bool isInOrder = event.deltaFrames >= previous && event.deltaFrames < frames;
        if (event.type != kVstMidiType || !isInOrder) return false;
        previous = event.deltaFrames;
    }
    return true;
}

void processReplacing(AEffect* effect, float**, float** outputs, VstInt32 frames) {
    Instrument& self = instrumentOf(effect);
    const float level = self.parameters[kLevel];
    const bool obeyed = keepsTheRules(self, frames);
    int next = 0;
    for (int frame = 0; frame < frames; ++frame) {
        float left = self.ringing > 0.0 ? level / 2 : 0.0f;
        float right = left;
        self.ringing -= 1.0;
        for (; self.events && next < self.events->numEvents; ++next) {
            const VstEvent& event = *self.events->events[next];
            if (obeyed && event.deltaFrames != frame) break;
            const char* const midi = reinterpret_cast<const VstMidiEvent&>(event).midiData;
            const int kind = midi[0] & 0xf0;
            if (kind == 0x80) right -= static_cast<float>(midi[2]) / 128.0f;
            if (kind == 0xc0) choose(self, midi[1] % kNumPrograms);
            if (kind != 0x90) continue;
            left = level;
            right += static_cast<float>(midi[2]) / 128.0f;
            self.ringing = self.parameters[kRing] * 10.0 * self.sampleRate;
        }
        if (!obeyed) left = right = kAlarm;
        if (self.parameters[kFault] > 0.5f) left = right = std::nanf("");
        outputs[0][frame] = left;
        outputs[1][frame] = right;
    }
    self.events = nullptr;
}

void setParameter(AEffect* effect, VstInt32 index, float value) {
    Instrument& self = instrumentOf(effect);
    self.parameters[index] = value;
    if (index < kNumHeldByPrograms) self.programs[self.program].values[index] = value;
}

float getParameter(AEffect* effect, VstInt32 index) {
    return instrumentOf(effect).parameters[index];
}

}  // namespace

extern "C" AEffect* VSTPluginMain(audioMasterCallback host) {
    if (host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) < 2400) return nullptr;
    auto* const self = new Instrument;
    AEffect& effect = self->effect;
    effect.magic = kEffectMagic;
    effect.dispatcher = dispatch;
    effect.setParameter = setParameter;
    effect.getParameter = getParameter;
    effect.processReplacing = processReplacing;
    effect.numPrograms = kNumPrograms;
    effect.numParams = kNumParameters;
    effect.numOutputs = 2;
    effect.flags = effFlagsIsSynth | effFlagsCanReplacing;
    effect.object = self;
    effect.uniqueID = platform::fourCharCode("TstI");
    effect.version = 3;
    return &effect;
}
