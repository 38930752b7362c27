// WAV files through libsndfile, with our own rounding.
#include "render/wav_writer.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <sndfile.h>

#include "render/error.h"

namespace render {
namespace {

constexpr int64_t kMaxWavBytes = 0xffff0000;  // the sizes in the file have 32 bits

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

SF_INFO fileInfo(const WavSettings& settings) {
    SF_INFO info = {};
    info.samplerate = settings.sampleRate;
    info.channels = settings.channels;
    const int64_t maxBytes = settings.maxFrames * settings.channels * bytesOf(settings.format);
    info.format = maxBytes > kMaxWavBytes ? SF_FORMAT_RF64 : SF_FORMAT_WAV;
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

// The file that path leads to, so that renaming onto it keeps a link.
std::string resolved(const std::string& path) {
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

}  // namespace

WavWriter::WavWriter(const std::string& path, const WavSettings& settings)
    : path_(resolved(path)),
      channels_(settings.channels),
      format_(settings.format),
      bits_(8 * bytesOf(settings.format)),
      fullScale_(std::ldexp(1.0, bits_ - 1)) {
    createTemporary();
    SF_INFO info = fileInfo(settings);
    file_ = sf_open(temporaryPath_.c_str(), SFM_WRITE, &info);
    if (!file_) {
        std::remove(temporaryPath_.c_str());
        fail(sf_strerror(nullptr));
    }
    // A peak chunk would carry the date, and equal renders would differ.
    sf_command(file_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_command(file_, SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE);
}

WavWriter::~WavWriter() {
    if (file_) sf_close(file_);
    if (!temporaryPath_.empty()) std::remove(temporaryPath_.c_str());
}

// Creates an empty file beside the final one, under a name that nobody uses.
void WavWriter::createTemporary() {
    std::error_code error;
    const auto status = std::filesystem::status(path_, error);
    if (exists(status) && !is_regular_file(status)) fail("it is not a regular file");
    for (int attempt = 1;; ++attempt) {
        temporaryPath_ = path_ + ".part" + std::to_string(attempt);
        errno = 0;
        std::FILE* const file = std::fopen(temporaryPath_.c_str(), "wbx");
        if (file) {
            std::fclose(file);
            return;
        }
        if (errno != EEXIST) {
            const int reason = errno;
            temporaryPath_.clear();
            fail(std::generic_category().message(reason));
        }
    }
}

void WavWriter::write(const std::vector<float>& samples) {
    const auto count = static_cast<sf_count_t>(samples.size());
    sf_count_t written = 0;
    if (format_ == SampleFormat::kFloat32) {
        written = sf_write_float(file_, samples.data(), count);
    } else {
        integers_.clear();
        for (const float sample : samples) integers_.push_back(quantized(sample));
        written = sf_write_int(file_, integers_.data(), count);
    }
    if (written != count) fail(sf_strerror(file_));
}

// The sample as the upper bits of a 32-bit integer, which is how libsndfile takes it.
int WavWriter::quantized(float sample) {
    double value = std::nearbyint(sample * fullScale_);
    if (value < -fullScale_ || value > fullScale_ - 1.0) {
        ++clippedSamples_;
        value = value < 0.0 ? -fullScale_ : fullScale_ - 1.0;
    }
    return static_cast<int>(value) * (1 << (32 - bits_));
}

void WavWriter::commit() {
    sf_write_sync(file_);
    const int closeError = sf_close(file_);
    file_ = nullptr;
    if (closeError != 0) fail(sf_error_number(closeError));
    std::error_code error;
    std::filesystem::rename(temporaryPath_, path_, error);
    if (error) fail(error.message());
    temporaryPath_.clear();
}

void WavWriter::fail(const std::string& reason) const {
    throw Error(path_ + " cannot be written: " + reason + ".");
}

}  // namespace render
