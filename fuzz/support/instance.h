// One instance of the instrument as a host holds it, and what has to hold for each.
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

// A bank's bytes once the program was sent, which limits its values.
inline std::string asSent(const std::string& bytes, int program) {
    state::Bank bank;
    std::memcpy(&bank.chunk(), bytes.data(), sizeof(state::BankChunk));
    bank.limitValues(program);
    return {reinterpret_cast<const char*>(&bank.chunk()), sizeof(state::BankChunk)};
}

// The block's list of events, each in memory of its own and of just its size.
class EventList {
  public:
    EventList() { clear(); }
    void clear();
    // A MIDI message, or for another type the head of an event; a null event for type 0.
    void add(int frame, VstInt32 type, const unsigned char (&message)[3]);
    // Up to eight events of the input, their frames below `frames` or a little beyond.
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

// From VSTPluginMain's work to effClose, its mains on. A World and its host must be there.
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
    // Hands the chunk over in memory of just its size.
    void setChunk(std::string_view chunk, bool isPreset);

    // Sets the parameter, requires it to read back as stored, and nothing else to have changed.
    void setParameter(int index, float value);

    // A block. Requires every sample to be finite, and written; and nothing else to be.
    Sound render(int frames, EventList& events);
    Sound render(int frames);

    // Requires that the bank's bytes are these, and that every value, name and text read so.
    void requireBank(const std::string& expected);

  private:
    vst2::VstSynth* synth_;
    AEffect* record_;
};

// Three keys in a row, some frames each.
std::vector<Sound> playChord(Instance& instance);
bool sameBits(const std::vector<Sound>& a, const std::vector<Sound>& b);

}  // namespace fuzz
