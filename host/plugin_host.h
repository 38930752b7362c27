// Loads one VST 2.4 instrument and drives it as a host does.
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

// What a chunk holds; the numbers are those of the interface.
enum class Extent : VstInt32 { kBank = 0, kProgram = 1 };

// What an instrument is told about the program that plays it.
struct HostIdentity {
    const char* product;
    bool isRealtime;
};
constexpr HostIdentity kRenderer = {"quarzel-render", false};

// One thread calls everything; between resume and suspend, process may have a thread of its own.
class PluginHost {
  public:
    // Loads and opens the instrument; sampleRate in Hz, blockSize the most frames of a block.
    // Throws Error when the file is no instrument that can be played.
    PluginHost(const std::string& path, int sampleRate, int blockSize,
               const HostIdentity& identity = kRenderer);
    ~PluginHost();
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;

    std::string name() const;
    int sampleRate() const { return sampleRate_; }
    int blockSize() const { return blockSize_; }
    // Other ones, while suspended.
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
    std::string parameterDisplay(int index) const;  // its value and unit, as the instrument says

    // Whether the instrument keeps its state in chunks that only it understands.
    bool hasChunks() const { return (effect_->flags & effFlagsProgramChunks) != 0; }
    std::string chunk(Extent extent) const;  // empty when the instrument gives none
    void setChunk(Extent extent, std::string chunk);
    // Asks before a bank or program of that origin is loaded; count of programs or parameters.
    // False when the instrument says that it cannot.
    bool acceptsLoading(Extent extent, VstInt32 id, int version, int count) const;

    bool hasEditor() const { return (effect_->flags & effFlagsHasEditor) != 0; }
    // Called with a width and a height in pixels when the editor wants its window resized; returns
    // whether that was done.
    using WindowSizer = std::function<bool(int, int)>;
    void onSizeWindow(WindowSizer sizer) { sizeWindow_ = std::move(sizer); }

    // Passes one request to the instrument, with the published meaning of the arguments.
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0,
                       void* ptr = nullptr, float opt = 0.0f) const;

    // A block with at most that many events allocates nothing.
    void reserveEvents(std::size_t count);

    // Blocks are processed between these two.
    void resume();
    void suspend();

    // Renders frames, 1..blockSize(). events are in the order of their frames, each below frames.
    void process(const std::vector<BlockEvent>& events, int frames);

    // The frames of the last block. channel is below outputCount().
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
