// The VST 2.4 plug-in interface: records and constants shared by host and effect.
//
// Names, numbers and layouts are as published. vst2_layout.h checks the 64-bit layout of every
// record. Only 64-bit systems are supported; they have a single calling convention.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/four_char_code.h"
#include "plugin/vst2/vst2_opcodes.h"

using VstInt16 = int16_t;
using VstInt32 = int32_t;
using VstInt64 = int64_t;
using VstIntPtr = intptr_t;

struct AEffect;

// The host's callback. effect may be null before the host knows the effect.
using audioMasterCallback = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                          VstIntPtr value, void* ptr, float opt);
using AEffectDispatcherProc = VstIntPtr (*)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                            VstIntPtr value, void* ptr, float opt);
using AEffectProcessProc = void (*)(AEffect* effect, float** inputs, float** outputs,
                                    VstInt32 sampleFrames);
using AEffectProcessDoubleProc = void (*)(AEffect* effect, double** inputs, double** outputs,
                                          VstInt32 sampleFrames);
using AEffectSetParameterProc = void (*)(AEffect* effect, VstInt32 index, float parameter);
using AEffectGetParameterProc = float (*)(AEffect* effect, VstInt32 index);

constexpr VstInt32 kEffectMagic = platform::fourCharCode("VstP");
constexpr VstInt32 kEffectIdentify = platform::fourCharCode("NvEf");
constexpr VstInt32 kVstVersion = 2400;

// The host's handle of a loaded effect.
struct AEffect {
    VstInt32 magic;  // kEffectMagic
    AEffectDispatcherProc dispatcher;
    AEffectProcessProc process;  // deprecated; adds to the outputs
    AEffectSetParameterProc setParameter;
    AEffectGetParameterProc getParameter;
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;      // channels
    VstInt32 numOutputs;     // channels
    VstInt32 flags;          // VstAEffectFlags
    VstIntPtr resvd1;        // the host's
    VstIntPtr resvd2;        // the host's
    VstInt32 initialDelay;   // frames of latency
    VstInt32 realQualities;  // deprecated
    VstInt32 offQualities;   // deprecated
    float ioRatio;           // deprecated
    void* object;            // the effect's instance
    void* user;
    VstInt32 uniqueID;
    VstInt32 version;
    AEffectProcessProc processReplacing;
    AEffectProcessDoubleProc processDoubleReplacing;
    char future[56];
};

enum VstAEffectFlags : VstInt32 {
    effFlagsHasEditor = 1 << 0,
    effFlagsHasClip = 1 << 1,  // deprecated
    effFlagsHasVu = 1 << 2,    // deprecated
    effFlagsCanMono = 1 << 3,  // deprecated
    effFlagsCanReplacing = 1 << 4,
    effFlagsProgramChunks = 1 << 5,
    effFlagsIsSynth = 1 << 8,
    effFlagsNoSoundInStop = 1 << 9,
    effFlagsExtIsAsync = 1 << 10,    // deprecated
    effFlagsExtHasBuffer = 1 << 11,  // deprecated
    effFlagsCanDoubleReplacing = 1 << 12
};

// Buffer sizes of texts, including the terminating zero.
enum VstStringConstants : VstInt32 {
    kVstMaxParamStrLen = 8,
    kVstMaxProgNameLen = 24,
    kVstMaxEffectNameLen = 32,
    kVstMaxVendorStrLen = 64,
    kVstMaxProductStrLen = 64,
    kVstMaxNameLen = 64,
    kVstMaxLabelLen = 64,
    kVstMaxShortLabelLen = 8,
    kVstMaxCategLabelLen = 24,
    kVstMaxFileNameLen = 100
};

struct ERect {  // pixels
    VstInt16 top;
    VstInt16 left;
    VstInt16 bottom;
    VstInt16 right;
};

enum VstEventTypes : VstInt32 {
    kVstMidiType = 1,
    kVstAudioType = 2,      // deprecated
    kVstVideoType = 3,      // deprecated
    kVstParameterType = 4,  // deprecated
    kVstTriggerType = 5,    // deprecated
    kVstSysExType = 6
};

// The header of every kind of event.
struct VstEvent {
    VstInt32 type;         // VstEventTypes
    VstInt32 byteSize;     // of the event, excluding type and byteSize
    VstInt32 deltaFrames;  // frames from the start of the block
    VstInt32 flags;
    char data[16];
};

struct VstEvents {
    VstInt32 numEvents;
    VstIntPtr reserved;
    VstEvent* events[2];  // numEvents of them
};

enum VstMidiEventFlags : VstInt32 { kVstMidiEventIsRealtime = 1 << 0 };

struct VstMidiEvent {
    VstInt32 type;      // kVstMidiType
    VstInt32 byteSize;  // sizeof(VstMidiEvent)
    VstInt32 deltaFrames;
    VstInt32 flags;       // VstMidiEventFlags
    VstInt32 noteLength;  // frames, 0 if unknown
    VstInt32 noteOffset;  // frames into the note at which it starts
    char midiData[4];     // status, data 1, data 2, 0
    char detune;          // cents, -64..63
    char noteOffVelocity;
    char reserved1;
    char reserved2;
};

struct VstMidiSysexEvent {
    VstInt32 type;  // kVstSysExType
    VstInt32 byteSize;
    VstInt32 deltaFrames;
    VstInt32 flags;
    VstInt32 dumpBytes;
    VstIntPtr resvd1;
    char* sysexDump;
    VstIntPtr resvd2;
};

enum VstTimeInfoFlags : VstInt32 {
    kVstTransportChanged = 1 << 0,
    kVstTransportPlaying = 1 << 1,
    kVstTransportCycleActive = 1 << 2,
    kVstTransportRecording = 1 << 3,
    kVstAutomationWriting = 1 << 6,
    kVstAutomationReading = 1 << 7,
    kVstNanosValid = 1 << 8,
    kVstPpqPosValid = 1 << 9,
    kVstTempoValid = 1 << 10,
    kVstBarsValid = 1 << 11,
    kVstCyclePosValid = 1 << 12,
    kVstTimeSigValid = 1 << 13,
    kVstSmpteValid = 1 << 14,
    kVstClockValid = 1 << 15
};

struct VstTimeInfo {
    double samplePos;      // frames
    double sampleRate;     // Hz
    double nanoSeconds;    // system time
    double ppqPos;         // quarter notes
    double tempo;          // beats a minute
    double barStartPos;    // quarter notes
    double cycleStartPos;  // quarter notes
    double cycleEndPos;    // quarter notes
    VstInt32 timeSigNumerator;
    VstInt32 timeSigDenominator;
    VstInt32 smpteOffset;  // 1/80 of a SMPTE frame
    VstInt32 smpteFrameRate;
    VstInt32 samplesToNextClock;  // frames, at 24 clocks a quarter note
    VstInt32 flags;               // VstTimeInfoFlags
};

enum VstPinPropertiesFlags : VstInt32 {
    kVstPinIsActive = 1 << 0,
    kVstPinIsStereo = 1 << 1,  // first pin of a stereo pair
    kVstPinUseSpeaker = 1 << 2
};

struct VstPinProperties {
    char label[kVstMaxLabelLen];
    VstInt32 flags;            // VstPinPropertiesFlags
    VstInt32 arrangementType;  // VstSpeakerArrangementType
    char shortLabel[kVstMaxShortLabelLen];
    char future[48];
};

enum VstParameterFlags : VstInt32 {
    kVstParameterIsSwitch = 1 << 0,
    kVstParameterUsesIntegerMinMax = 1 << 1,
    kVstParameterUsesFloatStep = 1 << 2,
    kVstParameterUsesIntStep = 1 << 3,
    kVstParameterSupportsDisplayIndex = 1 << 4,
    kVstParameterSupportsDisplayCategory = 1 << 5,
    kVstParameterCanRamp = 1 << 6
};

struct VstParameterProperties {
    float stepFloat;
    float smallStepFloat;
    float largeStepFloat;
    char label[kVstMaxLabelLen];
    VstInt32 flags;  // VstParameterFlags
    VstInt32 minInteger;
    VstInt32 maxInteger;
    VstInt32 stepInteger;
    VstInt32 largeStepInteger;
    char shortLabel[kVstMaxShortLabelLen];
    VstInt16 displayIndex;
    VstInt16 category;
    VstInt16 numParametersInCategory;
    VstInt16 reserved;
    char categoryLabel[kVstMaxCategLabelLen];
    char future[16];
};

enum VstPlugCategory : VstInt32 {
    kPlugCategUnknown = 0,
    kPlugCategEffect,
    kPlugCategSynth,
    kPlugCategAnalysis,
    kPlugCategMastering,
    kPlugCategSpacializer,
    kPlugCategRoomFx,
    kPlugSurroundFx,
    kPlugCategRestoration,
    kPlugCategOfflineProcess,
    kPlugCategShell,
    kPlugCategGenerator,
    kPlugCategMaxCount
};

struct MidiProgramName {
    VstInt32 thisProgramIndex;
    char name[kVstMaxNameLen];
    char midiProgram;  // -1..127
    char midiBankMsb;  // -1..127
    char midiBankLsb;  // -1..127
    char reserved;
    VstInt32 parentCategoryIndex;  // -1: none
    VstInt32 flags;
};

struct MidiProgramCategory {
    VstInt32 thisCategoryIndex;
    char name[kVstMaxNameLen];
    VstInt32 parentCategoryIndex;  // -1: none
    VstInt32 flags;
};

struct MidiKeyName {
    VstInt32 thisProgramIndex;
    VstInt32 thisKeyNumber;  // 0..127
    char keyName[kVstMaxNameLen];
    VstInt32 reserved;
    VstInt32 flags;
};

// VSTGUI also has types with these names.
namespace vst2 {

enum VstVirtualKey : VstInt32 {
    VKEY_BACK = 1,
    VKEY_TAB,
    VKEY_CLEAR,
    VKEY_RETURN,
    VKEY_PAUSE,
    VKEY_ESCAPE,
    VKEY_SPACE,
    VKEY_NEXT,
    VKEY_END,
    VKEY_HOME,
    VKEY_LEFT,
    VKEY_UP,
    VKEY_RIGHT,
    VKEY_DOWN,
    VKEY_PAGEUP,
    VKEY_PAGEDOWN,
    VKEY_SELECT,
    VKEY_PRINT,
    VKEY_ENTER,
    VKEY_SNAPSHOT,
    VKEY_INSERT,
    VKEY_DELETE,
    VKEY_HELP,
    VKEY_NUMPAD0,
    VKEY_NUMPAD9 = VKEY_NUMPAD0 + 9,
    VKEY_F2 = 41
};

enum VstModifierKey : VstInt32 {
    MODIFIER_SHIFT = 1 << 0,
    MODIFIER_ALTERNATE = 1 << 1,
    MODIFIER_COMMAND = 1 << 2,
    MODIFIER_CONTROL = 1 << 3
};

struct VstKeyCode {
    VstInt32 character;      // upper-case ASCII
    unsigned char virt;      // VstVirtualKey or above; 0 for a plain character
    unsigned char modifier;  // VstModifierKey
};

}  // namespace vst2

enum VstProcessLevels : VstInt32 {
    kVstProcessLevelUnknown = 0,
    kVstProcessLevelUser,
    kVstProcessLevelRealtime,
    kVstProcessLevelPrefetch,
    kVstProcessLevelOffline
};

enum VstAutomationStates : VstInt32 {
    kVstAutomationUnsupported = 0,
    kVstAutomationOff,
    kVstAutomationRead,
    kVstAutomationWrite,
    kVstAutomationReadWrite
};

enum VstProcessPrecision : VstInt32 { kVstProcessPrecision32 = 0, kVstProcessPrecision64 };

enum VstPanLawType : VstInt32 { kLinearPanLaw = 0, kEqualPowerPanLaw };

// What a host is about to load.
struct VstPatchChunkInfo {
    VstInt32 version;  // of this record, 1
    VstInt32 pluginUniqueID;
    VstInt32 pluginVersion;
    VstInt32 numElements;  // programs of a bank, parameters of a program
    char future[48];
};

// Opaque: only passed through.
struct VstSpeakerArrangement;
struct VstVariableIo;
struct VstAudioFile;
struct VstOfflineTask;
struct VstFileSelect;
struct VstWindow;

#include "plugin/vst2/vst2_layout.h"
