// Writes a sound file under a temporary name and renames it when it is complete.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "render/sample_sink.h"
#include "render/temporary_file.h"

struct sf_private_tag;  // libsndfile's SNDFILE

namespace render {

enum class SampleFormat { kInt16, kInt24, kFloat32 };
enum class Container { kWav, kFlac, kOgg, kOpus };

// Vorbis and Opus, both in Ogg, have no sample format.
constexpr bool isLossy(Container container) {
    return container == Container::kOgg || container == Container::kOpus;
}

struct SoundSettings {
    int sampleRate;  // Hz
    int channels;
    SampleFormat format;
    Container container = Container::kWav;
    int64_t maxFrames = 0;  // largest length; beyond 4 GB a WAV file is RF64
};

class SoundWriter final : public SampleSink {
  public:
    // Throws Error if the file cannot be created.
    SoundWriter(const std::string& path, const SoundSettings& settings);
    // Removes the file unless commit() was called.
    ~SoundWriter() override;
    SoundWriter(const SoundWriter&) = delete;
    SoundWriter& operator=(const SoundWriter&) = delete;

    int channels() const override { return channels_; }

    // Integer formats round to the nearest step. They and Ogg limit what does not fit.
    void write(const std::vector<float>& samples) override;

    // Finishes the file and moves it to its final name. Throws Error.
    void commit();

    int64_t clippedSamples() const { return clippedSamples_; }

  private:
    float limited(float sample);
    int quantized(float sample);
    void flush();

    std::string path_;
    TemporaryFile temporary_;
    int channels_;
    SampleFormat format_;
    Container container_;
    int bits_;
    double fullScale_;  // steps of an integer format
    sf_private_tag* file_ = nullptr;
    std::vector<float> floats_;  // waiting to be written, as are
    std::vector<int> integers_;  // those of an integer format
    int64_t clippedSamples_ = 0;
};

}  // namespace render
