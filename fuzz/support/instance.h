// One instance as a host holds it, with the conditions that every instance must meet.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/support/input.h"
#include "plugin/vst2/vst_synth.h"
#include "state/bank.h"

namespace fuzz {

// A bank's bytes after the program was pushed, which clamps its values.
inline std::string asSent(const std::string& bytes, int program) {
    state::Bank bank;
    std::memcpy(&bank.chunk(), bytes.data(), sizeof(state::BankChunk));
    bank.limitValues(program);
    return {reinterpret_cast<const char*>(&bank.chunk()), sizeof(state::BankChunk)};
}

// A block's event list. Each event has its own memory of exactly its size.
class EventList {
  public:
    EventList() { clear(); }
    void clear();
    // Adds a MIDI message, for another type just the header of an event, or a null event for type
    // 0.
    void add(int frame, VstInt32 type, const unsigned char (&message)[3]);
    // Adds up to eight events from the input with frames up to `frames` or slightly beyond.
    void add(Input& input, int frames);
    VstEvents* list() { return reinterpret_cast<VstEvents*>(memory_.data()); }

  private:
    std::vector<std::unique_ptr<char[]>> events_;
    std::vector<VstIntPtr> memory_;
};

struct Sound {
    std::vector<float> left;
    std::vector<float> right;
};

// Lives from VSTPluginMain to effClose, with the mains on. Needs a World and its host.
class Instance {
  public:
    Instance() : Instance(nullptr) {}
    explicit Instance(std::unique_ptr<engine::SoundEngine> engine);  // null: the shipped one
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) {
        return record_->dispatcher(record_, opcode, index, value, ptr, opt);
    }
    AEffect* operator->() { return record_; }
    AEffect* record() { return record_; }
    vst2::VstSynth& synth() { return *synth_; }

    // The live bytes, and a copy of them.
    const state::BankChunk& bank();
    std::string chunk(bool isPreset);
    // Sets the chunk from memory of exactly its size.
    void setChunk(std::string_view chunk, bool isPreset);

    // Sets the parameter and requires that it reads back as stored and that nothing else changed.
    void setParameter(int index, float value);

    // Renders a block. Requires every sample to be written and finite, and nothing else to be
    // written.
    Sound render(int frames, EventList& events);
    Sound render(int frames);

    // Requires that the bank has these bytes and that every value, name and text matches them.
    void requireBank(const std::string& expected);

  private:
    vst2::VstSynth* synth_;
    AEffect* record_;
};

// Plays three keys in a row, some frames each.
std::vector<Sound> playChord(Instance& instance);
bool sameBits(const std::vector<Sound>& a, const std::vector<Sound>& b);

}  // namespace fuzz
