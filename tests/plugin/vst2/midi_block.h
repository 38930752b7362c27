// Plays a MIDI message at the start of a block.
#pragma once

#include <array>

#include "plugin/vst2/vst_synth.h"

constexpr int kMidiBlockFrames = 64;

using MidiBlock = std::array<float, 2 * kMidiBlockFrames>;  // left, then right

inline MidiBlock playMessage(vst2::VstSynth& synth, int status, int data1, int data2) {
    VstMidiEvent midi = {};
    midi.type = kVstMidiType;
    midi.midiData[0] = static_cast<char>(status);
    midi.midiData[1] = static_cast<char>(data1);
    midi.midiData[2] = static_cast<char>(data2);
    VstEvents list = {};
    list.numEvents = 1;
    list.events[0] = reinterpret_cast<VstEvent*>(&midi);
    synth.processEvents(&list);
    MidiBlock block;
    float* outputs[] = {block.data(), block.data() + kMidiBlockFrames};
    synth.processReplacing(nullptr, outputs, kMidiBlockFrames);
    return block;
}
