// Compressed files through libsndfile.
#include "render/sound_encoder.h"

#include <sndfile.h>

#include "platform/temporary_file.h"

namespace render {
namespace {

constexpr double kVorbisQuality = 0.7;  // 0..1; about 220 kbit/s
constexpr double kOpusQuality = 0.168;  // 0..1; about 96 kbit/s

int formatOf(const SoundSettings& settings) {
    if (settings.container == Container::kOgg) return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    if (settings.container == Container::kOpus) return SF_FORMAT_OGG | SF_FORMAT_OPUS;
    const bool isShort = settings.format == SampleFormat::kInt16;
    return SF_FORMAT_FLAC | (isShort ? SF_FORMAT_PCM_16 : SF_FORMAT_PCM_24);
}

// The reason for the last failure, without libsndfile's words around the system's text.
std::string libraryError(SNDFILE* file) {
    std::string text = sf_strerror(file);
    const std::string prefix = "System error : ";
    if (text.compare(0, prefix.size(), prefix) == 0) text.erase(0, prefix.size());
    while (!text.empty() && text.back() == '.') text.pop_back();
    return text;
}

class CompressedEncoder final : public SoundEncoder {
  public:
    CompressedEncoder(const EncodedFile& file, const SoundSettings& settings)
        : path_(file.finalPath) {
        SF_INFO info = {};
        info.samplerate = settings.sampleRate;
        info.channels = settings.channels;
        info.format = formatOf(settings);
        file_ = sf_open(file.path.c_str(), SFM_WRITE, &info);
        if (!file_) platform::failToWrite(path_, libraryError(nullptr));
        double quality = settings.container == Container::kOpus ? kOpusQuality : kVorbisQuality;
        sf_command(file_, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    }
    ~CompressedEncoder() override {
        if (file_) sf_close(file_);
    }
    CompressedEncoder(const CompressedEncoder&) = delete;
    CompressedEncoder& operator=(const CompressedEncoder&) = delete;

    void write(const std::vector<float>& samples) override {
        const auto count = static_cast<sf_count_t>(samples.size());
        check(sf_write_float(file_, samples.data(), count) == count);
    }

    void write(const std::vector<int32_t>& samples) override {
        const auto count = static_cast<sf_count_t>(samples.size());
        check(sf_write_int(file_, samples.data(), count) == count);
    }

    void finish() override {
        const int closeError = sf_close(file_);
        file_ = nullptr;
        if (closeError != 0) platform::failToWrite(path_, sf_error_number(closeError));
    }

  private:
    void check(bool wrote) const {
        if (!wrote) platform::failToWrite(path_, libraryError(file_));
    }

    std::string path_;
    SNDFILE* file_ = nullptr;
};

}  // namespace

bool canCompress() {
    return true;
}

std::unique_ptr<SoundEncoder> encodeCompressed(const EncodedFile& file,
                                               const SoundSettings& settings) {
    return std::make_unique<CompressedEncoder>(file, settings);
}

}  // namespace render
