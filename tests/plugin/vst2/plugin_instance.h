// One instance in the hands of a host.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "tests/plugin/vst2/test_host.h"

using PluginEntry = AEffect* (*)(audioMasterCallback host);

// An event list in its own memory: one message per frame, on keys from 60 upwards.
class EventList {
  public:
    explicit EventList(std::initializer_list<VstInt32> frames = {}, int status = 0x90,
                       int data1 = 60, int data2 = 100) {
        for (const VstInt32 frame : frames) add(frame, status, data1 + list_.count, data2);
    }
    EventList(const EventList&) = delete;
    EventList& operator=(const EventList&) = delete;

    void add(VstInt32 frame, int status, int data1, int data2) {
        VstMidiEvent& midi = midi_[list_.count];
        midi.type = kVstMidiType;
        midi.byteSize = sizeof midi;
        midi.deltaFrames = frame;
        midi.midiData[0] = static_cast<char>(status);
        midi.midiData[1] = static_cast<char>(data1);
        midi.midiData[2] = static_cast<char>(data2);
        list_.events[list_.count++] = reinterpret_cast<VstEvent*>(&midi);
    }
    VstMidiEvent& operator[](int i) { return midi_[i]; }
    void setCount(VstInt32 count) { list_.count = count; }
    void loseEntry(int i) { list_.events[i] = nullptr; }
    void* address() { return &list_; }

  private:
    struct {
        VstInt32 count = 0;
        VstIntPtr reserved = 0;
        VstEvent* events[8] = {};
    } list_;
    VstMidiEvent midi_[8] = {};
};

// The destructor sends effClose.
class PluginInstance {
  public:
    explicit PluginInstance(AEffect* record) : record_(record) {}
    explicit PluginInstance(PluginEntry entry, audioMasterCallback host = TestHost::callback)
        : PluginInstance(entry(host)) {}
    ~PluginInstance() { dispatch(effClose); }
    PluginInstance(const PluginInstance&) = delete;
    PluginInstance& operator=(const PluginInstance&) = delete;

    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) {
        return record_->dispatcher(record_, opcode, index, value, ptr, opt);
    }
    AEffect* operator->() { return record_; }
    AEffect* record() { return record_; }

    void set(VstInt32 index, float value) { record_->setParameter(record_, index, value); }
    float value(VstInt32 index) { return record_->getParameter(record_, index); }
    void rate(float hz) { dispatch(effSetSampleRate, 0, 0, nullptr, hz); }
    void mains(bool on) { dispatch(effMainsChanged, 0, on); }
    // A text that the opcode writes, after which the buffer must be untouched.
    std::string text(VstInt32 opcode, VstInt32 index = 0) {
        char buffer[256];
        std::memset(buffer, '#', sizeof buffer);
        dispatch(opcode, index, 0, buffer);
        return std::string(buffer, std::find(buffer, std::end(buffer), '\0'));
    }
    ERect rect() {
        ERect* rect = nullptr;
        return dispatch(effEditGetRect, 0, 0, &rect) == 1 ? *rect : ERect{};
    }

    void send(EventList& list) { dispatch(effProcessEvents, 0, 0, list.address()); }
    // Renders a block of frames: left, then right.
    std::vector<float> block(VstInt32 frames = 64) {
        const int size = std::max(frames, 1);
        std::vector<float> samples(2 * size, NAN);
        float* outputs[] = {samples.data(), samples.data() + size};
        record_->processReplacing(record_, nullptr, outputs, frames);
        if (frames <= 0) samples.clear();
        return samples;
    }
    // Plays a message at the start of a block.
    std::vector<float> play(int status, int data1, int data2) {
        EventList list({0}, status, data1, data2);
        send(list);
        return block();
    }
    // The peak of a block, or NaN if a sample is not finite.
    float peak(VstInt32 frames = 64) {
        float peak = 0.0f;
        for (const float sample : block(frames)) {
            if (!std::isfinite(sample)) return NAN;
            peak = std::max(peak, std::fabs(sample));
        }
        return peak;
    }
    // The same of so many frames, in blocks of 64.
    float listen(int frames = 4096) {
        float highest = 0.0f;
        for (; frames > 0; frames -= 64) {
            const float next = peak();
            if (!std::isfinite(next)) return next;
            highest = std::max(highest, next);
        }
        return highest;
    }
    // Plays two new notes. Returns whether they sound.
    bool sounds(int frames = 4096) {
        set(7, 0.0f);  // attack
        EventList notes({0, 0});
        send(notes);
        return listen(frames) > 1e-3f;
    }

  private:
    AEffect* record_;
};
