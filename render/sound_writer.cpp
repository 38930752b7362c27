// Rounds samples to steps and passes them on.
#include "render/sound_writer.h"

#include <cmath>

#include "host/files.h"

namespace render {
namespace {

constexpr std::size_t kBufferedSamples = 16384;

std::unique_ptr<SoundEncoder> encoderOf(const EncodedFile& file, const SoundSettings& settings) {
    if (settings.container == Container::kWav) return encodeWav(file, settings);
    return encodeCompressed(file, settings);
}

}  // namespace

SoundWriter::SoundWriter(const std::string& path, const SoundSettings& settings)
    : path_(host::writablePath(path)),
      temporary_(path_),
      channels_(settings.channels),
      format_(settings.format),
      container_(settings.container),
      bits_(8 * bytesOf(settings.format)),
      fullScale_(std::ldexp(1.0, bits_ - 1)),
      encoder_(encoderOf({temporary_.path(), path_}, settings)) {}

void SoundWriter::write(const std::vector<float>& samples) {
    if (isLossy(container_)) {
        for (const float sample : samples) floats_.push_back(limited(sample));
    } else if (format_ == SampleFormat::kFloat32) {
        floats_.insert(floats_.end(), samples.begin(), samples.end());
    } else {
        for (const float sample : samples) integers_.push_back(quantized(sample));
    }
    if (floats_.size() + integers_.size() >= kBufferedSamples) flush();
}

// Small blocks are collected, because some libraries make a system call for each.
void SoundWriter::flush() {
    if (!floats_.empty()) encoder_->write(floats_);
    if (!integers_.empty()) encoder_->write(integers_);
    floats_.clear();
    integers_.clear();
}

float SoundWriter::limited(float sample) {
    if (std::fabs(sample) <= 1.0f) return sample;
    ++clippedSamples_;
    return sample < 0.0f ? -1.0f : 1.0f;
}

// The sample in the upper bits.
int32_t SoundWriter::quantized(float sample) {
    const double exact = sample * fullScale_;
    double value = exact + (exact < 0.0 ? -0.5 : 0.5);  // the conversion below truncates
    if (value <= -fullScale_ - 1.0 || value >= fullScale_) {
        ++clippedSamples_;
        value = value < 0.0 ? -fullScale_ : fullScale_ - 1.0;
    }
    return static_cast<int32_t>(value) * (1 << (32 - bits_));
}

void SoundWriter::commit() {
    flush();
    encoder_->finish();
    temporary_.commit();
}

}  // namespace render
