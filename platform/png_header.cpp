// A PNG file begins with the signature and the header chunk: length, name, width, height.
#include "platform/png_header.h"

namespace platform {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kNameAt = 12;
constexpr std::size_t kWidthAt = 16;
constexpr std::size_t kHeightAt = 20;

std::uint32_t bigEndian(std::string_view bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

}  // namespace

std::optional<PngSize> readPngSize(std::string_view start) {
    if (start.size() < kPngHeaderBytes) return std::nullopt;
    if (start.substr(0, kSignature.size()) != kSignature) return std::nullopt;
    if (start.substr(kNameAt, 4) != "IHDR") return std::nullopt;
    return PngSize{bigEndian(start, kWidthAt), bigEndian(start, kHeightAt)};
}

}  // namespace platform
