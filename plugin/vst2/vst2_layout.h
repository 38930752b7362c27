// The 64-bit layout of every VST 2.4 record, checked at compile time. Included by vst2.h alone.
#pragma once

// If two neighbours have no gap, the offset of the second proves the size of the first.
#define VST_OFFSET(record, field, offset) static_assert(offsetof(record, field) == (offset))

static_assert(sizeof(void*) == 8);

VST_OFFSET(AEffect, magic, 0);
VST_OFFSET(AEffect, dispatcher, 8);
VST_OFFSET(AEffect, process, 16);
VST_OFFSET(AEffect, setParameter, 24);
VST_OFFSET(AEffect, getParameter, 32);
VST_OFFSET(AEffect, numPrograms, 40);
VST_OFFSET(AEffect, numParams, 44);
VST_OFFSET(AEffect, numInputs, 48);
VST_OFFSET(AEffect, numOutputs, 52);
VST_OFFSET(AEffect, flags, 56);
VST_OFFSET(AEffect, resvd1, 64);
VST_OFFSET(AEffect, resvd2, 72);
VST_OFFSET(AEffect, initialDelay, 80);
VST_OFFSET(AEffect, realQualities, 84);
VST_OFFSET(AEffect, offQualities, 88);
VST_OFFSET(AEffect, ioRatio, 92);
VST_OFFSET(AEffect, object, 96);
VST_OFFSET(AEffect, user, 104);
VST_OFFSET(AEffect, uniqueID, 112);
VST_OFFSET(AEffect, version, 116);
VST_OFFSET(AEffect, processReplacing, 120);
VST_OFFSET(AEffect, processDoubleReplacing, 128);
VST_OFFSET(AEffect, future, 136);
static_assert(sizeof(AEffect) == 192);

VST_OFFSET(ERect, top, 0);
VST_OFFSET(ERect, left, 2);
VST_OFFSET(ERect, bottom, 4);
VST_OFFSET(ERect, right, 6);
static_assert(sizeof(ERect) == 8);

VST_OFFSET(VstEvent, type, 0);
VST_OFFSET(VstEvent, byteSize, 4);
VST_OFFSET(VstEvent, deltaFrames, 8);
VST_OFFSET(VstEvent, flags, 12);
VST_OFFSET(VstEvent, data, 16);
static_assert(sizeof(VstEvent) == 32);

VST_OFFSET(VstEvents, numEvents, 0);
VST_OFFSET(VstEvents, reserved, 8);
VST_OFFSET(VstEvents, events, 16);
static_assert(sizeof(VstEvents) == 32);

VST_OFFSET(VstMidiEvent, type, 0);
VST_OFFSET(VstMidiEvent, byteSize, 4);
VST_OFFSET(VstMidiEvent, deltaFrames, 8);
VST_OFFSET(VstMidiEvent, flags, 12);
VST_OFFSET(VstMidiEvent, noteLength, 16);
VST_OFFSET(VstMidiEvent, noteOffset, 20);
VST_OFFSET(VstMidiEvent, midiData, 24);
VST_OFFSET(VstMidiEvent, detune, 28);
VST_OFFSET(VstMidiEvent, noteOffVelocity, 29);
VST_OFFSET(VstMidiEvent, reserved1, 30);
VST_OFFSET(VstMidiEvent, reserved2, 31);
static_assert(sizeof(VstMidiEvent) == 32);

VST_OFFSET(VstMidiSysexEvent, type, 0);
VST_OFFSET(VstMidiSysexEvent, byteSize, 4);
VST_OFFSET(VstMidiSysexEvent, deltaFrames, 8);
VST_OFFSET(VstMidiSysexEvent, flags, 12);
VST_OFFSET(VstMidiSysexEvent, dumpBytes, 16);
VST_OFFSET(VstMidiSysexEvent, resvd1, 24);
VST_OFFSET(VstMidiSysexEvent, sysexDump, 32);
VST_OFFSET(VstMidiSysexEvent, resvd2, 40);
static_assert(sizeof(VstMidiSysexEvent) == 48);

VST_OFFSET(VstTimeInfo, samplePos, 0);
VST_OFFSET(VstTimeInfo, sampleRate, 8);
VST_OFFSET(VstTimeInfo, nanoSeconds, 16);
VST_OFFSET(VstTimeInfo, ppqPos, 24);
VST_OFFSET(VstTimeInfo, tempo, 32);
VST_OFFSET(VstTimeInfo, barStartPos, 40);
VST_OFFSET(VstTimeInfo, cycleStartPos, 48);
VST_OFFSET(VstTimeInfo, cycleEndPos, 56);
VST_OFFSET(VstTimeInfo, timeSigNumerator, 64);
VST_OFFSET(VstTimeInfo, timeSigDenominator, 68);
VST_OFFSET(VstTimeInfo, smpteOffset, 72);
VST_OFFSET(VstTimeInfo, smpteFrameRate, 76);
VST_OFFSET(VstTimeInfo, samplesToNextClock, 80);
VST_OFFSET(VstTimeInfo, flags, 84);
static_assert(sizeof(VstTimeInfo) == 88);

VST_OFFSET(VstPinProperties, label, 0);
VST_OFFSET(VstPinProperties, flags, 64);
VST_OFFSET(VstPinProperties, arrangementType, 68);
VST_OFFSET(VstPinProperties, shortLabel, 72);
VST_OFFSET(VstPinProperties, future, 80);
static_assert(sizeof(VstPinProperties) == 128);

VST_OFFSET(VstParameterProperties, stepFloat, 0);
VST_OFFSET(VstParameterProperties, smallStepFloat, 4);
VST_OFFSET(VstParameterProperties, largeStepFloat, 8);
VST_OFFSET(VstParameterProperties, label, 12);
VST_OFFSET(VstParameterProperties, flags, 76);
VST_OFFSET(VstParameterProperties, minInteger, 80);
VST_OFFSET(VstParameterProperties, maxInteger, 84);
VST_OFFSET(VstParameterProperties, stepInteger, 88);
VST_OFFSET(VstParameterProperties, largeStepInteger, 92);
VST_OFFSET(VstParameterProperties, shortLabel, 96);
VST_OFFSET(VstParameterProperties, displayIndex, 104);
VST_OFFSET(VstParameterProperties, category, 106);
VST_OFFSET(VstParameterProperties, numParametersInCategory, 108);
VST_OFFSET(VstParameterProperties, reserved, 110);
VST_OFFSET(VstParameterProperties, categoryLabel, 112);
VST_OFFSET(VstParameterProperties, future, 136);
static_assert(sizeof(VstParameterProperties) == 152);

VST_OFFSET(MidiProgramName, thisProgramIndex, 0);
VST_OFFSET(MidiProgramName, name, 4);
VST_OFFSET(MidiProgramName, midiProgram, 68);
VST_OFFSET(MidiProgramName, midiBankMsb, 69);
VST_OFFSET(MidiProgramName, midiBankLsb, 70);
VST_OFFSET(MidiProgramName, reserved, 71);
VST_OFFSET(MidiProgramName, parentCategoryIndex, 72);
VST_OFFSET(MidiProgramName, flags, 76);
static_assert(sizeof(MidiProgramName) == 80);

VST_OFFSET(MidiProgramCategory, thisCategoryIndex, 0);
VST_OFFSET(MidiProgramCategory, name, 4);
VST_OFFSET(MidiProgramCategory, parentCategoryIndex, 68);
VST_OFFSET(MidiProgramCategory, flags, 72);
static_assert(sizeof(MidiProgramCategory) == 76);

VST_OFFSET(MidiKeyName, thisProgramIndex, 0);
VST_OFFSET(MidiKeyName, thisKeyNumber, 4);
VST_OFFSET(MidiKeyName, keyName, 8);
VST_OFFSET(MidiKeyName, reserved, 72);
VST_OFFSET(MidiKeyName, flags, 76);
static_assert(sizeof(MidiKeyName) == 80);

VST_OFFSET(vst2::VstKeyCode, character, 0);
VST_OFFSET(vst2::VstKeyCode, virt, 4);
VST_OFFSET(vst2::VstKeyCode, modifier, 5);
static_assert(sizeof(vst2::VstKeyCode) == 8);

VST_OFFSET(VstPatchChunkInfo, version, 0);
VST_OFFSET(VstPatchChunkInfo, pluginUniqueID, 4);
VST_OFFSET(VstPatchChunkInfo, pluginVersion, 8);
VST_OFFSET(VstPatchChunkInfo, numElements, 12);
VST_OFFSET(VstPatchChunkInfo, future, 16);
static_assert(sizeof(VstPatchChunkInfo) == 64);

#undef VST_OFFSET
