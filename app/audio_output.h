// Audio output through RtAudio.
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
    std::string api;          // RtAudio's name; empty: the first with a device
    std::string device;       // all or part of its name; empty: the default device
    std::optional<int> rate;  // Hz; not set: the device's preferred rate
    int blockSize = 256;
};

// The format that was opened.
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

// The names that --api accepts, in order of preference.
std::vector<std::string> audioApis();
// The name of one of them for display.
std::string apiTitle(const std::string& api);

// The stereo outputs of every API. Slow.
std::vector<AudioDevices> audioDevices();

// Only one may exist at a time, because RtAudio does not say which stream an error belongs to.
class AudioOutput {
  public:
    // Audio thread. Fills both channels. late means that the previous block was not ready in time.
    using Render = std::function<void(float* left, float* right, int frames, bool late)>;

    explicit AudioOutput(Render render);
    ~AudioOutput();

    // Throws host::Error with the reasons of all APIs tried.
    AudioFormat open(const AudioWish& wish);
    // Starts calling render. Throws host::Error.
    void start();
    void close();
    bool isOpen() const { return audio_ != nullptr; }
    // Whether the device still requests blocks. Call it regularly while the device is open.
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
