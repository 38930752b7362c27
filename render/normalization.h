// A render whose gain is known only at its end.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "platform/temporary_file.h"
#include "render/levels.h"
#include "render/sample_sink.h"

namespace render {

struct Normalization {
    enum class Of { kLoudness, kPeak };
    Of of;
    double level;  // LUFS or dBFS
};

// In dB; 0 for silence. A loudness is reached only as far as the peak stays below -1 dBFS.
double normalizingGain(const Normalization& normalization, const Levels& levels);

// Keeps samples as floats in a temporary file beside `path`.
class RawTake final : public SampleSink {
  public:
    // Throws host::Error, like every write.
    RawTake(const std::string& path, int channels);

    int channels() const override { return channels_; }
    void write(const std::vector<float>& samples) override;
    // Writes all samples to the other sink, times the gain.
    void playBack(double gainDb, SampleSink& sink);

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string path_;
    platform::TemporaryFile temporary_;
    int channels_;
    std::unique_ptr<std::FILE, Closer> file_;
};

}  // namespace render
