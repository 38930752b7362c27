// Sound files through libsndfile, with our own rounding.
#include "render/sound_writer.h"

#include <cmath>

#include <sndfile.h>

#include "host/files.h"

namespace render {
namespace {

constexpr std::size_t kBufferedSamples = 16384;
constexpr double kVorbisQuality = 0.7;        // 0..1; about 220 kbit/s
constexpr double kOpusQuality = 0.168;        // 0..1; about 96 kbit/s
constexpr int64_t kMaxWavBytes = 0xffff0000;  // sizes in the file have 32 bits

int bytesOf(SampleFormat format) {
    switch (format) {
        case SampleFormat::kInt16:
            return 2;
        case SampleFormat::kInt24:
            return 3;
        case SampleFormat::kFloat32:
            break;
    }
    return 4;
}

SF_INFO fileInfo(const SoundSettings& settings) {
    SF_INFO info = {};
    info.samplerate = settings.sampleRate;
    info.channels = settings.channels;
    const int64_t maxBytes = settings.maxFrames * settings.channels * bytesOf(settings.format);
    const bool isLarge = maxBytes > kMaxWavBytes;
    switch (settings.container) {
        case Container::kOgg:
            info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
            return info;
        case Container::kOpus:
            info.format = SF_FORMAT_OGG | SF_FORMAT_OPUS;
            return info;
        case Container::kFlac:
            info.format = SF_FORMAT_FLAC;
            break;
        case Container::kWav:
            info.format = isLarge ? SF_FORMAT_RF64 : SF_FORMAT_WAV;
            break;
    }
    switch (settings.format) {
        case SampleFormat::kInt16:
            info.format |= SF_FORMAT_PCM_16;
            break;
        case SampleFormat::kInt24:
            info.format |= SF_FORMAT_PCM_24;
            break;
        case SampleFormat::kFloat32:
            info.format |= SF_FORMAT_FLOAT;
            break;
    }
    return info;
}

// The reason for the last failure, without libsndfile's words around the system's text.
std::string libraryError(SNDFILE* file) {
    std::string text = sf_strerror(file);
    const std::string prefix = "System error : ";
    if (text.compare(0, prefix.size(), prefix) == 0) text.erase(0, prefix.size());
    while (!text.empty() && text.back() == '.') text.pop_back();
    return text;
}

}  // namespace

SoundWriter::SoundWriter(const std::string& path, const SoundSettings& settings)
    : path_(host::writablePath(path)),
      temporary_(path_),
      channels_(settings.channels),
      format_(settings.format),
      container_(settings.container),
      bits_(8 * bytesOf(settings.format)),
      fullScale_(std::ldexp(1.0, bits_ - 1)) {
    SF_INFO info = fileInfo(settings);
    file_ = sf_open(temporary_.path().c_str(), SFM_WRITE, &info);
    if (!file_) failToWrite(path_, libraryError(nullptr));
    // A peak chunk would contain the date, so equal renders would differ.
    sf_command(file_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_command(file_, SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE);
    double quality = container_ == Container::kOpus ? kOpusQuality : kVorbisQuality;
    sf_command(file_, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
}

SoundWriter::~SoundWriter() {
    if (file_) sf_close(file_);
}

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

// Small blocks are collected, because libsndfile makes a system call for each.
void SoundWriter::flush() {
    const auto floats = static_cast<sf_count_t>(floats_.size());
    const auto integers = static_cast<sf_count_t>(integers_.size());
    const bool wrote = sf_write_float(file_, floats_.data(), floats) == floats &&
                       sf_write_int(file_, integers_.data(), integers) == integers;
    if (!wrote) failToWrite(path_, libraryError(file_));
    floats_.clear();
    integers_.clear();
}

float SoundWriter::limited(float sample) {
    if (std::fabs(sample) <= 1.0f) return sample;
    ++clippedSamples_;
    return sample < 0.0f ? -1.0f : 1.0f;
}

// The sample in the upper bits of a 32-bit integer, as libsndfile expects it.
int SoundWriter::quantized(float sample) {
    const double exact = sample * fullScale_;
    double value = exact + (exact < 0.0 ? -0.5 : 0.5);  // the conversion below truncates
    if (value <= -fullScale_ - 1.0 || value >= fullScale_) {
        ++clippedSamples_;
        value = value < 0.0 ? -fullScale_ : fullScale_ - 1.0;
    }
    return static_cast<int>(value) * (1 << (32 - bits_));
}

void SoundWriter::commit() {
    flush();
    sf_write_sync(file_);
    const int closeError = sf_close(file_);
    file_ = nullptr;
    if (closeError != 0) failToWrite(path_, sf_error_number(closeError));
    temporary_.commit();
}

}  // namespace render
