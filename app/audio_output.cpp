// Opens RtAudio streams and turns its errors into sentences.
#include "app/audio_output.h"

#include <algorithm>
#include <thread>

#include <RtAudio.h>

#include "host/error.h"
#include "platform/product.h"

namespace app {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 2s;  // with a device that requests no block
constexpr int kUsualRate = 48000;

// Mixing servers come first, then the desktop's default. PulseAudio is last because of RtAudio's
// long latency there.
constexpr const char* kApiNames[] = {"jack", "alsa", "pulse"};

std::atomic<bool> streamFailed{false};

// "RtApiAlsa::probeDeviceOpen: pcm device (default) won't open." without its beginning and end.
std::string reasonOf(const RtAudioError& error) {
    std::string text = error.getMessage();
    const auto colons = text.find("::");
    const auto prefix = text.find(": ");
    if (colons < prefix && prefix != std::string::npos) text.erase(0, prefix + 2);
    while (!text.empty() && (text.back() == '.' || text.back() == '!' || text.back() == '\n')) {
        text.pop_back();
    }
    return text;
}

std::unique_ptr<RtAudio> make(const std::string& api) {
    auto audio = std::make_unique<RtAudio>(RtAudio::getCompiledApiByName(api));
    audio->showWarnings(false);
    return audio;
}

struct Output {
    unsigned id;
    RtAudio::DeviceInfo info;
};

std::vector<Output> stereoOutputs(RtAudio& audio) {
    std::vector<Output> outputs;
    const unsigned count = audio.getDeviceCount();
    for (unsigned id = 0; id < count; ++id) {
        const auto info = audio.getDeviceInfo(id);
        if (info.probed && info.outputChannels >= 2) outputs.push_back({id, info});
    }
    return outputs;
}

Output chosen(const std::vector<Output>& outputs, const std::string& name) {
    if (outputs.empty()) throw host::Error("no device");
    const auto find = [&](auto matches) {
        return std::find_if(outputs.begin(), outputs.end(), matches);
    };
    auto found = find([&](const Output& output) { return output.info.isDefaultOutput; });
    if (!name.empty()) {
        found = find([&](const Output& output) { return output.info.name == name; });
        if (found == outputs.end()) {
            found = find([&](const Output& output) {
                return output.info.name.find(name) != std::string::npos;
            });
        }
        if (found == outputs.end()) throw host::Error("no device named " + name);
    }
    return found == outputs.end() ? outputs.front() : *found;
}

unsigned rateFor(const RtAudio::DeviceInfo& info, std::optional<int> wish) {
    const auto& rates = info.sampleRates;
    const auto has = [&](unsigned rate) {
        return std::find(rates.begin(), rates.end(), rate) != rates.end();
    };
    if (wish && (rates.empty() || has(static_cast<unsigned>(*wish)))) return *wish;
    return info.preferredSampleRate > 0 ? info.preferredSampleRate : kUsualRate;
}

}  // namespace

std::vector<std::string> audioApis() {
    std::vector<std::string> names;
    for (const char* const name : kApiNames) {
        if (RtAudio::getCompiledApiByName(name) != RtAudio::UNSPECIFIED) names.push_back(name);
    }
    return names;
}

std::string apiTitle(const std::string& api) {
    return RtAudio::getApiDisplayName(RtAudio::getCompiledApiByName(api));
}

std::vector<AudioDevices> audioDevices() {
    std::vector<AudioDevices> all;
    for (const auto& api : audioApis()) {
        AudioDevices found = {api, {}};
        try {
            const auto audio = make(api);
            for (const auto& output : stereoOutputs(*audio)) {
                found.devices.push_back({output.info.name, output.info.isDefaultOutput});
            }
        } catch (const RtAudioError&) {  // there is none
        }
        all.push_back(std::move(found));
    }
    return all;
}

AudioOutput::AudioOutput(Render render) : render_(std::move(render)) {}

AudioOutput::~AudioOutput() {
    close();
}

AudioFormat AudioOutput::open(const AudioWish& wish) {
    close();
    std::string reasons;
    const auto apis = wish.api.empty() ? audioApis() : std::vector<std::string>{wish.api};
    for (const auto& api : apis) {
        std::string reason;
        try {
            return openOn(api, wish);
        } catch (const RtAudioError& error) {
            reason = reasonOf(error);
        } catch (const host::Error& error) {
            reason = error.what();
        }
        audio_.reset();
        reasons += (reasons.empty() ? "" : "; ") + api + ": " + reason;
    }
    throw host::Error("No audio (" + reasons + ").");
}

AudioFormat AudioOutput::openOn(const std::string& api, const AudioWish& wish) {
    audio_ = make(api);
    RtAudio::StreamOptions options;
    options.flags = RTAUDIO_NONINTERLEAVED | RTAUDIO_SCHEDULE_REALTIME;
    options.numberOfBuffers = 2;
    options.streamName = platform::kProductName;

    Output output = {};
    const bool isAlsaDefault = wish.device.empty() && api == "alsa";
    if (isAlsaDefault) {
        // Use the device that the desktop shares. Probing the cards themselves would disturb other
        // players.
        options.flags |= RTAUDIO_ALSA_USE_DEFAULT;
        if (audio_->getDeviceCount() == 0) throw host::Error("no device");
        output.info.name = "default";
    } else {
        output = chosen(stereoOutputs(*audio_), wish.device);
    }

    RtAudio::StreamParameters parameters;
    parameters.deviceId = output.id;
    parameters.nChannels = 2;
    auto frames = static_cast<unsigned>(wish.blockSize);
    streamFailed = false;
    audio_->openStream(&parameters, nullptr, RTAUDIO_FLOAT32, rateFor(output.info, wish.rate),
                       &frames, &AudioOutput::called, this, &options,
                       [](RtAudioError::Type, const std::string&) { streamFailed = true; });
    return {apiTitle(api), output.info.name, static_cast<int>(audio_->getStreamSampleRate()),
            static_cast<int>(frames)};
}

void AudioOutput::start() {
    try {
        audio_->startStream();
    } catch (const RtAudioError& error) {
        throw host::Error("No audio (" + reasonOf(error) + ").");
    }
    seenAt_ = std::chrono::steady_clock::now();
}

void AudioOutput::close() {
    if (!audio_) return;
    // When a server dies, one of RtAudio's threads closes the stream: let it finish.
    if (!audio_->isStreamRunning()) std::this_thread::sleep_for(200ms);
    try {
        if (audio_->isStreamOpen()) audio_->closeStream();
    } catch (const RtAudioError&) {  // it is gone anyway
    }
    audio_.reset();
}

bool AudioOutput::isAlive() {
    if (streamFailed || !audio_ || !audio_->isStreamRunning()) return false;
    const auto now = std::chrono::steady_clock::now();
    const unsigned blocks = blocks_;
    if (blocks != seenBlocks_) {
        seenBlocks_ = blocks;
        seenAt_ = now;
    }
    return now - seenAt_ < kPatience;
}

int AudioOutput::called(void* out, void*, unsigned frames, double, unsigned status, void* self) {
    auto& output = *static_cast<AudioOutput*>(self);
    auto* const samples = static_cast<float*>(out);
    output.render_(samples, samples + frames, static_cast<int>(frames),
                   (status & RTAUDIO_OUTPUT_UNDERFLOW) != 0);
    output.blocks_.fetch_add(1, std::memory_order_relaxed);
    return 0;
}

}  // namespace app
