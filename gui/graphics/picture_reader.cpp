// Reads PNG pictures of any colour type into premultiplied pixels.
#include "gui/graphics/picture_reader.h"

#include "gui/graphics/png_pixels.h"
#include "platform/png_header.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

#define STBI_NO_STDIO
#define STBI_ONLY_PNG
#define STBI_MAX_DIMENSIONS 16384
#ifndef __clang_analyzer__  // which sees a leak in stb_image where there is none
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#endif
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb_image.h>
#pragma GCC diagnostic pop

namespace VSTGUI {
namespace {

constexpr int kChannels = 4;
// Allowance for data other than pixels, such as a colour profile.
constexpr uint64_t kMostOtherBytes = 1u << 20;

uint32_t bigEndian(const uint8_t* bytes) {
    return uint32_t{bytes[0]} << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

// Returns the bytes of compressed pixels that the chunks claim to hold. Returns 0 if a chunk claims
// none, because stb_image would copy such a chunk to a null pointer.
uint64_t compressedSize(const uint8_t* bytes, size_t size) {
    constexpr size_t kSignature = 8;
    constexpr size_t kHead = 8;  // length and name
    constexpr size_t kChecksum = 4;
    uint64_t total = 0;
    for (size_t position = kSignature; position + kHead <= size;) {
        const uint32_t length = bigEndian(bytes + position);
        const std::string_view name(reinterpret_cast<const char*>(bytes + position + 4), 4);
        if (name == "IDAT") total += length;
        if (name == "IDAT" && length == 0) return 0;
        position += kHead + size_t{length} + kChecksum;
    }
    return total;
}

bool isPermitted(const platform::PngSize& size) {
    return size.width >= 1 && size.height >= 1 && size.width <= kLargestPictureSide &&
           size.height <= kLargestPictureSide &&
           uint64_t{size.width} * size.height <= kLargestPictureArea;
}

// The most compressed bytes a valid file can need: 8 bytes per pixel plus a little framing. A
// larger claim is a small picture that would unpack into gigabytes.
uint64_t mostCompressed(const platform::PngSize& size) {
    const uint64_t unpacked = uint64_t{size.width} * size.height * 8 + size.height;
    return unpacked + unpacked / 64 + 4096;
}

struct FreePixels {
    void operator()(uint8_t* pixels) const { stbi_image_free(pixels); }
};

// The pixels of the pictures of skins, several times as fast as by the general way.
std::optional<PictureRows> plainPixels(const PlainPng& png) {
    return pictureOf(png, [](uint8_t* to, size_t length, const std::vector<uint8_t>& compressed) {
        const int unpacked = stbi_zlib_decode_buffer(
            reinterpret_cast<char*>(to), static_cast<int>(length),
            reinterpret_cast<const char*>(compressed.data()), static_cast<int>(compressed.size()));
        return unpacked == static_cast<int>(length);
    });
}

std::optional<PictureRows> generalPixels(const std::vector<uint8_t>& bytes) {
    int width = 0;
    int height = 0;
    int channels = 0;
    const auto length = static_cast<int>(bytes.size());
    const std::unique_ptr<uint8_t, FreePixels> pixels(
        stbi_load_from_memory(bytes.data(), length, &width, &height, &channels, kChannels));
    if (!pixels) return std::nullopt;

    PixelBuffer picture(width, height);
    const uint8_t* from = pixels.get();
    for (int y = 0; y < height; ++y) {
        uint32_t* const row = picture.row(y);
        for (int x = 0; x < width; ++x, from += kChannels)
            row[x] = premultiplied(CColor(from[0], from[1], from[2], from[3]));
    }
    return PictureRows(std::move(picture));
}

}  // namespace

std::optional<PictureRows> readPicture(std::vector<uint8_t> bytes) {
    const size_t size = bytes.size();
    const auto claimed = platform::readPngSize({reinterpret_cast<const char*>(bytes.data()), size});
    if (!claimed || !isPermitted(*claimed)) return std::nullopt;
    const uint64_t compressed = compressedSize(bytes.data(), size);
    const uint64_t most = mostCompressed(*claimed);
    if (compressed == 0 || compressed > most || size > most + kMostOtherBytes) return std::nullopt;

    auto png = findPlainPng(bytes.data(), size);
    if (!png) return generalPixels(bytes);
    const bool isIntact = png->isIntact;
    const int width = png->width;
    const int height = png->height;
    auto unpack = [png = std::move(*png), bytes = std::move(bytes)] {
        auto pixels = plainPixels(png);
        return pixels ? std::move(pixels) : generalPixels(bytes);
    };
    if (!isIntact) return unpack();
    return PictureRows(width, height, std::move(unpack));
}

std::optional<PictureRows> readPictureFile(const std::string& utf8Path) {
    try {
        const auto path = std::filesystem::u8path(utf8Path);
        if (!std::filesystem::is_regular_file(path)) return std::nullopt;  // a pipe would block
        const auto size = std::filesystem::file_size(path);
        std::ifstream file(path, std::ios::binary);
        std::array<char, platform::kPngHeaderBytes> start{};
        if (!file.read(start.data(), start.size())) return std::nullopt;
        const auto claimed = platform::readPngSize({start.data(), start.size()});
        if (!claimed || !isPermitted(*claimed) || size > mostCompressed(*claimed) + kMostOtherBytes)
            return std::nullopt;  // before the contents take memory

        std::vector<uint8_t> bytes(size);
        file.seekg(0);
        if (!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size)))
            return std::nullopt;
        return readPicture(std::move(bytes));
    } catch (const std::exception&) {
        return std::nullopt;  // malformed path or out of memory
    }
}

}  // namespace VSTGUI
