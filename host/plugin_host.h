// Hosts one VST 2.4 instrument.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/shared_library.h"
#include "plugin/vst2/vst2.h"
#include "host/midi_song.h"

namespace host {

struct BlockEvent {
    int frame;  // from the start of the block
    MidiMessage message;
};

// What a chunk contains, with the interface's numbers.
enum class Extent : VstInt32 { kBank = 0, kProgram = 1 };

// How the host introduces itself to the instrument.
struct HostIdentity {
    const char* product;
    bool isRealtime;
};
constexpr HostIdentity kRenderer = {"quarzel-render", false};

// One thread makes all calls, except that process may run on a thread of its own between resume and
// suspend.
class PluginHost {
  public:
    // Loads and opens the instrument. sampleRate is in Hz, blockSize the largest block in frames.
    // Throws Error if the file is not a playable instrument.
    PluginHost(const std::string& path, int sampleRate, int blockSize,
               const HostIdentity& identity = kRenderer);
    ~PluginHost();
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;

    std::string name() const;
    int sampleRate() const { return sampleRate_; }
    int blockSize() const { return blockSize_; }
    // Changes both. Call it only while suspended.
    void setFormat(int sampleRate, int blockSize);
    int outputCount() const { return effect_->numOutputs; }

    VstInt32 uniqueId() const { return effect_->uniqueID; }
    int version() const { return effect_->version; }

    int programCount() const { return effect_->numPrograms; }
    int program() const;
    void setProgram(int index);
    std::string programName(int index);
    void setProgramName(const std::string& name);  // of the current program, cut to 23 bytes

    int parameterCount() const { return effect_->numParams; }
    float parameter(int index) const;
    void setParameter(int index, float value);  // 0..1
    std::string parameterName(int index) const;
    std::string parameterDisplay(int index) const;  // value and unit

    // Whether the instrument stores its state in opaque chunks.
    bool hasChunks() const { return (effect_->flags & effFlagsProgramChunks) != 0; }
    std::string chunk(Extent extent) const;  // empty if the instrument returns none
    void setChunk(Extent extent, std::string chunk);
    // Call before loading a bank or program with this origin and number of programs or parameters.
    // Returns false if the instrument refuses.
    bool acceptsLoading(Extent extent, VstInt32 id, int version, int count) const;

    bool hasEditor() const { return (effect_->flags & effFlagsHasEditor) != 0; }
    // Called with a width and a height in pixels when the editor wants its window resized. Returns
    // whether it was resized.
    using WindowSizer = std::function<bool(int, int)>;
    void onSizeWindow(WindowSizer sizer) { sizeWindow_ = std::move(sizer); }

    // Calls the instrument's dispatcher. The arguments have their published meaning.
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) const;

    // Blocks with at most count events allocate nothing afterwards.
    void reserveEvents(std::size_t count);

    // Call process only between these two.
    void resume();
    void suspend();

    // Renders a block of 1..blockSize() frames. events are sorted by frame; every frame is inside
    // the block.
    void process(const std::vector<BlockEvent>& events, int frames);

    // One channel of the last block.
    const float* output(int channel) const { return outputs_[channel].data(); }

  private:
    struct Closer {
        void operator()(AEffect* effect) const;
    };

    static VstIntPtr answer(AEffect* effect, VstInt32 opcode, VstInt32 index, VstIntPtr value,
                            void* ptr, float opt);
    VstIntPtr answer(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* ptr);
    VstIntPtr processLevel() const;
    void start(const std::string& path);
    void sendEvents(const std::vector<BlockEvent>& events);
    std::string text(VstInt32 opcode, VstInt32 index = 0) const;

    HostIdentity identity_;
    int sampleRate_;
    int blockSize_;
    WindowSizer sizeWindow_;
    VstTimeInfo time_ = {};
    platform::SharedLibrary library_;
    std::unique_ptr<AEffect, Closer> effect_;
    bool running_ = false;
    std::vector<std::vector<float>> inputs_;
    std::vector<std::vector<float>> outputs_;
    std::vector<float*> inputPointers_;
    std::vector<float*> outputPointers_;
    std::vector<VstMidiEvent> midiEvents_;
    std::vector<VstIntPtr> eventList_;  // room for a VstEvents of any length
};

}  // namespace host
