// Encodes samples into a sound file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace render {

enum class SampleFormat { kInt16, kInt24, kFloat32 };
enum class Container { kWav, kFlac, kOgg, kOpus };

// Vorbis and Opus, both in Ogg, have no sample format.
constexpr bool isLossy(Container container) {
    return container == Container::kOgg || container == Container::kOpus;
}

constexpr int bytesOf(SampleFormat format) {
    return format == SampleFormat::kInt16 ? 2 : format == SampleFormat::kInt24 ? 3 : 4;
}

struct SoundSettings {
    int sampleRate;  // Hz
    int channels;
    SampleFormat format;
    Container container = Container::kWav;
    int64_t maxFrames = 0;  // largest length; beyond 4 GB a WAV file is RF64
};

// An open file. Errors, host::Error, name the one that it becomes.
class SoundEncoder {
  public:
    virtual ~SoundEncoder() = default;

    // Append interleaved samples. Float and lossy formats take floats, integer formats integers in
    // the upper bits.
    virtual void write(const std::vector<float>& samples) = 0;
    virtual void write(const std::vector<int32_t>& samples) = 0;
    // Completes the file and closes it.
    virtual void finish() = 0;
};

// The names of a file: while it is written, and for the user.
struct EncodedFile {
    std::string path;
    std::string finalPath;
};

std::unique_ptr<SoundEncoder> encodeWav(const EncodedFile& file, const SoundSettings& settings);

// FLAC, Vorbis and Opus need a library, which some builds do without. They never compress.
bool canCompress();
std::unique_ptr<SoundEncoder> encodeCompressed(const EncodedFile& file,
                                               const SoundSettings& settings);

}  // namespace render
