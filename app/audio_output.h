// The sound card, or what plays its part, through RtAudio.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class RtAudio;

namespace app {

struct AudioWish {
    std::string api;          // as RtAudio names it; empty: the first one that has a device
    std::string device;       // its name or a part of it; empty: the default one
    std::optional<int> rate;  // Hz; none: the one the device prefers
    int blockSize = 256;
};

// What was opened.
struct AudioFormat {
    std::string api;  // for display
    std::string device;
    int rate;
    int blockSize;
};

struct AudioDevices {
    std::string api;
    struct Device {
        std::string name;
        bool isDefault;
    };
    std::vector<Device> devices;
};

// The names by which --api asks for one, the preferred first.
std::vector<std::string> audioApis();

// The stereo outputs of every API. Takes a while.
std::vector<AudioDevices> audioDevices();

// One at a time: RtAudio reports a failure without saying whose.
class AudioOutput {
  public:
    // Audio thread: fills both channels. late says that the block before was not ready in time.
    using Render = std::function<void(float* left, float* right, int frames, bool late)>;

    explicit AudioOutput(Render render);
    ~AudioOutput();

    // Throws host::Error, with the reason of every API that was tried.
    AudioFormat open(const AudioWish& wish);
    // Begins to call render. Throws host::Error.
    void start();
    void close();
    bool isOpen() const { return audio_ != nullptr; }
    // Whether the device still asks for sound. To be called now and then while it is open.
    bool isAlive();

  private:
    AudioFormat openOn(const std::string& api, const AudioWish& wish);
    static int called(void* out, void*, unsigned frames, double, unsigned status, void* self);

    Render render_;
    std::unique_ptr<RtAudio> audio_;
    std::atomic<unsigned> blocks_{0};
    unsigned seenBlocks_ = 0;
    std::chrono::steady_clock::time_point seenAt_;
};

}  // namespace app
