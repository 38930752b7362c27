// WAV files through libsndfile, with our own rounding.
#include "render/wav_writer.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <sndfile.h>

#include "host/error.h"
#include "host/files.h"

namespace render {
namespace {

constexpr std::size_t kBufferedSamples = 16384;
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

// The reason for the last failure, without libsndfile's words around the system's text.
std::string libraryError(SNDFILE* file) {
    std::string text = sf_strerror(file);
    const std::string prefix = "System error : ";
    if (text.compare(0, prefix.size(), prefix) == 0) text.erase(0, prefix.size());
    while (!text.empty() && text.back() == '.') text.pop_back();
    return text;
}

}  // namespace

WavWriter::WavWriter(const std::string& path, const WavSettings& settings)
    : path_(host::writablePath(path)),
      channels_(settings.channels),
      format_(settings.format),
      bits_(8 * bytesOf(settings.format)),
      fullScale_(std::ldexp(1.0, bits_ - 1)) {
    createTemporary();
    SF_INFO info = fileInfo(settings);
    file_ = sf_open(temporaryPath_.c_str(), SFM_WRITE, &info);
    if (!file_) {
        std::remove(temporaryPath_.c_str());
        fail(libraryError(nullptr));
    }
    // A peak chunk would contain the date, so equal renders would differ.
    sf_command(file_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_command(file_, SFC_RF64_AUTO_DOWNGRADE, nullptr, SF_TRUE);
}

WavWriter::~WavWriter() {
    if (file_) sf_close(file_);
    if (!temporaryPath_.empty()) std::remove(temporaryPath_.c_str());
}

// Creates an empty file beside the final one, under an unused name.
void WavWriter::createTemporary() {
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
    if (format_ == SampleFormat::kFloat32) {
        floats_.insert(floats_.end(), samples.begin(), samples.end());
    } else {
        for (const float sample : samples) integers_.push_back(quantized(sample));
    }
    if (floats_.size() + integers_.size() >= kBufferedSamples) flush();
}

// Small blocks are collected, because libsndfile makes a system call for each.
void WavWriter::flush() {
    const auto floats = static_cast<sf_count_t>(floats_.size());
    const auto integers = static_cast<sf_count_t>(integers_.size());
    const bool wrote = sf_write_float(file_, floats_.data(), floats) == floats &&
                       sf_write_int(file_, integers_.data(), integers) == integers;
    if (!wrote) fail(libraryError(file_));
    floats_.clear();
    integers_.clear();
}

// The sample in the upper bits of a 32-bit integer, as libsndfile expects it.
int WavWriter::quantized(float sample) {
    const double exact = sample * fullScale_;
    double value = exact + (exact < 0.0 ? -0.5 : 0.5);  // the conversion below truncates
    if (value <= -fullScale_ - 1.0 || value >= fullScale_) {
        ++clippedSamples_;
        value = value < 0.0 ? -fullScale_ : fullScale_ - 1.0;
    }
    return static_cast<int>(value) * (1 << (32 - bits_));
}

void WavWriter::commit() {
    flush();
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
    throw host::Error(path_ + " cannot be written: " + reason + ".");
}

}  // namespace render
