// Writes a WAV file under a temporary name and renames it when it is complete.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sf_private_tag;  // libsndfile's SNDFILE

namespace render {

enum class SampleFormat { kInt16, kInt24, kFloat32 };

struct WavSettings {
    int sampleRate;  // Hz
    int channels;
    SampleFormat format;
    int64_t maxFrames;  // largest length; beyond 4 GB the file is RF64
};

class WavWriter {
  public:
    // Throws Error if the file cannot be created.
    WavWriter(const std::string& path, const WavSettings& settings);
    // Removes the file unless commit() was called.
    ~WavWriter();
    WavWriter(const WavWriter&) = delete;
    WavWriter& operator=(const WavWriter&) = delete;

    int channels() const { return channels_; }

    // Appends interleaved finite samples; 1.0 is full scale. Integer formats round to the nearest
    // step and limit what does not fit. Throws Error if writing fails.
    void write(const std::vector<float>& samples);

    // Finishes the file and moves it to its final name. Throws Error.
    void commit();

    int64_t clippedSamples() const { return clippedSamples_; }

  private:
    [[noreturn]] void fail(const std::string& reason) const;
    void createTemporary();
    int quantized(float sample);
    void flush();

    std::string path_;
    std::string temporaryPath_;
    int channels_;
    SampleFormat format_;
    int bits_;
    double fullScale_;  // steps of an integer format
    sf_private_tag* file_ = nullptr;
    std::vector<float> floats_;  // waiting to be written, as are
    std::vector<int> integers_;  // those of an integer format
    int64_t clippedSamples_ = 0;
};

}  // namespace render
