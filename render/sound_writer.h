// Writes a sound file under a temporary name and renames it when it is complete.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/temporary_file.h"
#include "render/sample_sink.h"
#include "render/sound_encoder.h"

namespace render {

class SoundWriter final : public SampleSink {
  public:
    // Throws Error if the file cannot be created.
    SoundWriter(const std::string& path, const SoundSettings& settings);
    // Removes the file unless commit() was called.
    ~SoundWriter() override = default;
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
    int32_t quantized(float sample);
    void flush();

    std::string path_;
    platform::TemporaryFile temporary_;
    int channels_;
    SampleFormat format_;
    Container container_;
    int bits_;
    double fullScale_;  // steps of an integer format
    std::unique_ptr<SoundEncoder> encoder_;
    std::vector<float> floats_;      // waiting to be written, as are
    std::vector<int32_t> integers_;  // those of an integer format
    int64_t clippedSamples_ = 0;
};

}  // namespace render
