// WAV files, and RF64 files where 32 bits are too few for their size.
#include "render/sound_encoder.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#include "platform/temporary_file.h"

namespace render {
namespace {

constexpr int kPcm = 1, kFloat = 3;           // of the chunk "fmt "
constexpr int64_t kMaxWavBytes = 0xffff0000;  // leaves room for the header
constexpr uint32_t kSeeLongSizes = 0xffffffff;

class Header {
  public:
    void text(const char* chunk) { bytes_ += chunk; }
    void number(uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) bytes_ += static_cast<char>(value >> (8 * i) & 0xff);
    }
    const std::string& bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

class WavEncoder final : public SoundEncoder {
  public:
    WavEncoder(const EncodedFile& file, const SoundSettings& settings)
        : path_(file.finalPath),
          settings_(settings),
          mayGrowLarge_(settings.maxFrames * frameBytes() > kMaxWavBytes),
          file_(std::fopen(file.path.c_str(), "wb")) {
        if (!file_) fail();
        put(header());
    }

    void write(const std::vector<float>& samples) override {
        for (const float sample : samples) {
            uint32_t bits = 0;
            std::memcpy(&bits, &sample, sizeof bits);
            append(bits);
        }
        flush();
    }

    void write(const std::vector<int32_t>& samples) override {
        for (const int32_t sample : samples) append(static_cast<uint32_t>(sample));
        flush();
    }

    void finish() override {
        if (dataBytes_ % 2 != 0) put(std::string(1, '\0'));  // chunks begin at even places
        if (std::fseek(file_.get(), 0, SEEK_SET) != 0) fail();
        put(header());
        if (std::fclose(file_.release()) != 0) fail();
    }

  private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    int frameBytes() const { return settings_.channels * bytesOf(settings_.format); }

    // The upper bytes, low byte first.
    void append(uint32_t sample) {
        for (int byte = 4 - bytesOf(settings_.format); byte < 4; ++byte) {
            waiting_ += static_cast<char>(sample >> (8 * byte) & 0xff);
        }
    }

    void flush() {
        put(waiting_);
        dataBytes_ += static_cast<int64_t>(waiting_.size());
        waiting_.clear();
    }

    // The same length whatever the length of the data.
    std::string header() const {
        const bool isFloat = settings_.format == SampleFormat::kFloat32;
        const bool isLarge = dataBytes_ > kMaxWavBytes;
        const auto data = static_cast<uint64_t>(dataBytes_);
        const auto rate = static_cast<uint64_t>(settings_.sampleRate);
        const uint64_t frames = data / static_cast<uint64_t>(frameBytes());
        const uint64_t ahead = 36 + (mayGrowLarge_ ? 36 : 0) + (isFloat ? 12 : 0);
        const uint64_t whole = ahead + data + data % 2;
        Header header;
        header.text(isLarge ? "RF64" : "RIFF");
        header.number(isLarge ? kSeeLongSizes : whole, 4);
        header.text("WAVE");
        if (mayGrowLarge_) {
            header.text(isLarge ? "ds64" : "JUNK");
            header.number(28, 4);
            for (const uint64_t size : {whole, data, frames}) header.number(isLarge ? size : 0, 8);
            header.number(0, 4);
        }
        header.text("fmt ");
        header.number(16, 4);
        header.number(isFloat ? kFloat : kPcm, 2);
        header.number(static_cast<uint64_t>(settings_.channels), 2);
        header.number(rate, 4);
        header.number(rate * static_cast<uint64_t>(frameBytes()), 4);
        header.number(static_cast<uint64_t>(frameBytes()), 2);
        header.number(8 * static_cast<uint64_t>(bytesOf(settings_.format)), 2);
        if (isFloat) {
            header.text("fact");
            header.number(4, 4);
            header.number(isLarge ? kSeeLongSizes : frames, 4);
        }
        header.text("data");
        header.number(isLarge ? kSeeLongSizes : data, 4);
        return header.bytes();
    }

    void put(const std::string& bytes) {
        if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) fail();
    }

    [[noreturn]] void fail() const {
        platform::failToWrite(path_, std::generic_category().message(errno));
    }

    std::string path_;
    SoundSettings settings_;
    bool mayGrowLarge_;
    std::unique_ptr<std::FILE, Closer> file_;
    std::string waiting_;
    int64_t dataBytes_ = 0;
};

}  // namespace

std::unique_ptr<SoundEncoder> encodeWav(const EncodedFile& file, const SoundSettings& settings) {
    return std::make_unique<WavEncoder>(file, settings);
}

}  // namespace render
