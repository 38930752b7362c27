// Two passes: the samples are kept, measured, and written with their gain.
#include "render/normalization.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <system_error>

namespace render {

using platform::failToWrite;

namespace {

constexpr double kHighestPeakDb = -1.0;
constexpr std::size_t kSamplesAtOnce = 16384;  // even, so frames stay whole

double decibels(double level) {
    return 20.0 * std::log10(level);
}

}  // namespace

double normalizingGain(const Normalization& normalization, const Levels& levels) {
    if (levels.peak <= 0.0) return 0.0;
    const double peak = decibels(levels.peak);
    if (normalization.of == Normalization::Of::kPeak) return normalization.level - peak;
    if (!levels.loudness || !std::isfinite(*levels.loudness)) return 0.0;
    return std::min(normalization.level - *levels.loudness, kHighestPeakDb - peak);
}

RawTake::RawTake(const std::string& path, int channels)
    : path_(path),
      temporary_(path),
      channels_(channels),
      file_(std::fopen(temporary_.path().c_str(), "wb+")) {
    if (!file_) failToWrite(path_, std::generic_category().message(errno));
}

void RawTake::write(const std::vector<float>& samples) {
    if (std::fwrite(samples.data(), sizeof(float), samples.size(), file_.get()) == samples.size())
        return;
    failToWrite(path_, std::generic_category().message(errno));
}

void RawTake::playBack(double gainDb, SampleSink& sink) {
    const auto gain = static_cast<float>(std::pow(10.0, gainDb / 20.0));
    if (std::fflush(file_.get()) != 0) failToWrite(path_, std::generic_category().message(errno));
    std::rewind(file_.get());
    std::vector<float> samples(kSamplesAtOnce);
    do {
        samples.resize(std::fread(samples.data(), sizeof(float), kSamplesAtOnce, file_.get()));
        for (float& sample : samples) sample *= gain;
        sink.write(samples);
    } while (samples.size() == kSamplesAtOnce);
    if (std::ferror(file_.get()) != 0) failToWrite(path_, "the temporary file cannot be read");
}

}  // namespace render
