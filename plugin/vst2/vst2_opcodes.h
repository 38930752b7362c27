// The opcodes of the VST 2.4 interface, from host to effect and from effect to host.
#pragma once

#include <cstdint>

// Host to effect, through AEffect::dispatcher. Comments describe index, value, ptr and opt and the
// return value; arguments not mentioned are zero. "Deprecated" opcodes were removed in 2.4, but
// older hosts still send them.
enum AEffectOpcodes : int32_t {
    effOpen = 0,
    effClose = 1,            // destroys the effect
    effSetProgram = 2,       // value: program
    effGetProgram = 3,       // returns the program
    effSetProgramName = 4,   // ptr: text, kVstMaxProgNameLen
    effGetProgramName = 5,   // ptr: buffer, kVstMaxProgNameLen
    effGetParamLabel = 6,    // index: parameter, ptr: buffer, kVstMaxParamStrLen
    effGetParamDisplay = 7,  // index: parameter, ptr: buffer, kVstMaxParamStrLen
    effGetParamName = 8,     // index: parameter, ptr: buffer, kVstMaxParamStrLen
    effGetVu = 9,            // deprecated; returns the level, 0..32767
    effSetSampleRate = 10,   // opt: Hz
    effSetBlockSize = 11,    // value: largest block in frames
    effMainsChanged = 12,    // value: 0 suspends, 1 resumes
    effEditGetRect = 13,     // ptr: ERect**, filled in
    effEditOpen = 14,        // ptr: parent window (HWND, or X11 window number)
    effEditClose = 15,
    effEditDraw = 16,   // deprecated
    effEditMouse = 17,  // deprecated
    effEditKey = 18,    // deprecated
    effEditIdle = 19,
    effEditTop = 20,           // deprecated
    effEditSleep = 21,         // deprecated
    effIdentify = 22,          // deprecated; returns kEffectIdentify
    effGetChunk = 23,          // ptr: void**, filled in, index: 0 bank, 1 program; returns bytes
    effSetChunk = 24,          // ptr: data, value: bytes, index: 0 bank, 1 program
    effProcessEvents = 25,     // ptr: VstEvents*
    effCanBeAutomated = 26,    // index: parameter
    effString2Parameter = 27,  // index: parameter, ptr: text, or null to ask whether it is possible
    effGetNumProgramCategories = 28,    // deprecated
    effGetProgramNameIndexed = 29,      // index: program, value: category, ptr: buffer
    effCopyProgram = 30,                // deprecated; index: destination program
    effConnectInput = 31,               // deprecated; index: pin, value: 1 connected
    effConnectOutput = 32,              // deprecated; index: pin, value: 1 connected
    effGetInputProperties = 33,         // index: pin, ptr: VstPinProperties*
    effGetOutputProperties = 34,        // index: pin, ptr: VstPinProperties*
    effGetPlugCategory = 35,            // returns VstPlugCategory
    effGetCurrentPosition = 36,         // deprecated
    effGetDestinationBuffer = 37,       // deprecated; returns an address
    effOfflineNotify = 38,              // ptr: VstAudioFile[], value: count, index: start flag
    effOfflinePrepare = 39,             // ptr: VstOfflineTask[], value: count
    effOfflineRun = 40,                 // ptr: VstOfflineTask[], value: count
    effProcessVarIo = 41,               // ptr: VstVariableIo*
    effSetSpeakerArrangement = 42,      // value, ptr: VstSpeakerArrangement* of inputs, of outputs
    effSetBlockSizeAndSampleRate = 43,  // deprecated; value: frames, opt: Hz
    effSetBypass = 44,                  // value: 1 bypassed
    effGetEffectName = 45,              // ptr: buffer, kVstMaxEffectNameLen
    effGetErrorText = 46,               // deprecated; ptr: buffer, 256 bytes
    effGetVendorString = 47,            // ptr: buffer, kVstMaxVendorStrLen
    effGetProductString = 48,           // ptr: buffer, kVstMaxProductStrLen
    effGetVendorVersion = 49,
    effVendorSpecific = 50,          // index, value, ptr and opt are the vendor's
    effCanDo = 51,                   // ptr: text; returns 1 yes, -1 no, 0 unknown
    effGetTailSize = 52,             // returns frames; 0 default, 1 no tail
    effIdle = 53,                    // deprecated
    effGetIcon = 54,                 // deprecated; returns an address
    effSetViewPosition = 55,         // deprecated; index: x, value: y, both pixels
    effGetParameterProperties = 56,  // index: parameter, ptr: VstParameterProperties*
    effKeysRequired = 57,            // deprecated; returns 0 when keys are required, else 1
    effGetVstVersion = 58,           // returns 2400
    effEditKeyDown = 59,             // index: character, value: virtual key, opt: modifiers
    effEditKeyUp = 60,               // index: character, value: virtual key, opt: modifiers
    effSetEditKnobMode = 61,         // value: 0 circular, 1 relative circular, 2 linear
    effGetMidiProgramName = 62,      // index: channel, ptr: MidiProgramName*
    effGetCurrentMidiProgram = 63,   // index: channel, ptr: MidiProgramName*
    effGetMidiProgramCategory = 64,  // index: channel, ptr: MidiProgramCategory*
    effHasMidiProgramsChanged = 65,  // index: channel
    effGetMidiKeyName = 66,          // index: channel, ptr: MidiKeyName*
    effBeginSetProgram = 67,
    effEndSetProgram = 68,
    effGetSpeakerArrangement = 69,  // value, ptr: VstSpeakerArrangement** of inputs, of outputs
    effShellGetNextPlugin = 70,     // ptr: buffer, kVstMaxProductStrLen; returns a unique ID or 0
    effStartProcess = 71,
    effStopProcess = 72,
    effSetTotalSampleToProcess = 73,  // value: frames
    effSetPanLaw = 74,                // value: VstPanLawType, opt: gain
    effBeginLoadBank = 75,        // ptr: VstPatchChunkInfo*; returns -1 cannot, 1 can, 0 unknown
    effBeginLoadProgram = 76,     // ptr: VstPatchChunkInfo*; returns as effBeginLoadBank
    effSetProcessPrecision = 77,  // value: VstProcessPrecision
    effGetNumMidiInputChannels = 78,
    effGetNumMidiOutputChannels = 79,
    kNumEffectOpcodes = 80
};

// Effect to host, through the audioMasterCallback. 5 was never assigned.
enum AudioMasterOpcodes : int32_t {
    audioMasterAutomate = 0,   // index: parameter, opt: value
    audioMasterVersion = 1,    // returns the host's interface version, 0 if it is too old
    audioMasterCurrentId = 2,  // returns the unique ID a shell is about to load
    audioMasterIdle = 3,
    audioMasterPinConnected = 4,   // deprecated; index: pin, value: 0 input, 1 output
    audioMasterWantMidi = 6,       // deprecated; value: 1
    audioMasterGetTime = 7,        // value: VstTimeInfoFlags; returns VstTimeInfo*
    audioMasterProcessEvents = 8,  // ptr: VstEvents*
    audioMasterSetTime = 9,        // deprecated
    audioMasterTempoAt = 10,       // deprecated; value: frame; returns BPM x 10000
    audioMasterGetNumAutomatableParameters = 11,  // deprecated
    audioMasterGetParameterQuantization = 12,     // deprecated; index: parameter or -1
    audioMasterIOChanged = 13,
    audioMasterNeedIdle = 14,                 // deprecated
    audioMasterSizeWindow = 15,               // index: width, value: height, both pixels
    audioMasterGetSampleRate = 16,            // returns Hz
    audioMasterGetBlockSize = 17,             // returns frames
    audioMasterGetInputLatency = 18,          // returns frames
    audioMasterGetOutputLatency = 19,         // returns frames
    audioMasterGetPreviousPlug = 20,          // deprecated; index: pin; returns AEffect*
    audioMasterGetNextPlug = 21,              // deprecated; index: pin; returns AEffect*
    audioMasterWillReplaceOrAccumulate = 22,  // deprecated; returns 1 replace, 2 accumulate
    audioMasterGetCurrentProcessLevel = 23,   // returns VstProcessLevels
    audioMasterGetAutomationState = 24,       // returns VstAutomationStates
    audioMasterOfflineStart = 25,             // ptr: VstAudioFile[], value: count, index: new files
    audioMasterOfflineRead = 26,              // index: from source, value: option, ptr: task
    audioMasterOfflineWrite = 27,             // value: option, ptr: task
    audioMasterOfflineGetCurrentPass = 28,
    audioMasterOfflineGetCurrentMetaPass = 29,
    audioMasterSetOutputSampleRate = 30,          // deprecated; opt: Hz
    audioMasterGetOutputSpeakerArrangement = 31,  // deprecated; returns VstSpeakerArrangement*
    audioMasterGetVendorString = 32,              // ptr: buffer, kVstMaxVendorStrLen
    audioMasterGetProductString = 33,             // ptr: buffer, kVstMaxProductStrLen
    audioMasterGetVendorVersion = 34,
    audioMasterVendorSpecific = 35,
    audioMasterSetIcon = 36,  // deprecated
    audioMasterCanDo = 37,    // ptr: text
    audioMasterGetLanguage = 38,
    audioMasterOpenWindow = 39,    // deprecated; ptr: VstWindow*
    audioMasterCloseWindow = 40,   // deprecated; ptr: VstWindow*
    audioMasterGetDirectory = 41,  // returns the effect's folder as text
    audioMasterUpdateDisplay = 42,
    audioMasterBeginEdit = 43,                   // index: parameter
    audioMasterEndEdit = 44,                     // index: parameter
    audioMasterOpenFileSelector = 45,            // ptr: VstFileSelect*
    audioMasterCloseFileSelector = 46,           // ptr: VstFileSelect*
    audioMasterEditFile = 47,                    // deprecated
    audioMasterGetChunkFile = 48,                // deprecated; ptr: buffer, 2048 bytes
    audioMasterGetInputSpeakerArrangement = 49,  // deprecated; returns VstSpeakerArrangement*
    kNumAudioMasterOpcodes = 50
};
