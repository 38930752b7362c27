// The picture reader and the factory: every colour type, and damaged files.
#include "gui/graphics/picture_reader.h"
#include "tests/gui/gui_fixture.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace VSTGUI {
namespace {

const std::string kSamples = QUARZEL_PICTURE_SAMPLES;

std::vector<uint8_t> bytesOf(const std::string& name) {
    std::ifstream file(kSamples + "/" + name, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {});
}

std::optional<PictureRows> read(const std::vector<uint8_t>& bytes) {
    return readPicture(bytes);
}

void addBigEndian(std::vector<uint8_t>& bytes, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<uint8_t>(value >> shift));
}

void addChunk(std::vector<uint8_t>& bytes, const char* name, const std::vector<uint8_t>& data) {
    addBigEndian(bytes, static_cast<uint32_t>(data.size()));
    bytes.insert(bytes.end(), name, name + 4);
    bytes.insert(bytes.end(), data.begin(), data.end());
    addBigEndian(bytes, 0);  // nobody checks the sum
}

// A sound black-and-white picture, one bit a pixel, stored without compression. `idle` bytes follow
// the compressed pixels.
std::vector<uint8_t> blackPicture(uint32_t width, uint32_t height, size_t idle = 0) {
    std::vector<uint8_t> data = {0x78, 0x01};
    for (size_t left = size_t{height} * (1 + (width + 7) / 8); left > 0;) {
        const auto part = static_cast<uint16_t>(std::min<size_t>(left, 0xFFFF));
        left -= part;
        const auto inverse = static_cast<uint16_t>(~part);
        for (const int byte :
             {left == 0 ? 1 : 0, part & 255, part >> 8, inverse & 255, inverse >> 8})
            data.push_back(static_cast<uint8_t>(byte));
        data.insert(data.end(), part, 0);
    }
    data.insert(data.end(), 4 + idle, 0);
    std::vector<uint8_t> bytes = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<uint8_t> header;
    addBigEndian(header, width);
    addBigEndian(header, height);
    header.insert(header.end(), {1, 0, 0, 0, 0});
    addChunk(bytes, "IHDR", header);
    addChunk(bytes, "IDAT", data);
    addChunk(bytes, "IEND", {});
    return bytes;
}

TEST(Pictures, AreReadFromEveryColourType) {
    struct Case {
        const char* file;
        std::vector<uint32_t> pixels;
    };
    const Case cases[] = {
        {"grey.png", {0xFF101010, 0xFFF0F0F0}},    {"rgb.png", {0xFFFF0000, 0xFF00FF00}},
        {"palette.png", {0x80800000, 0xFF0000FF}}, {"greyalpha.png", {0xFF404040, 0x80808080}},
        {"rgba.png", {0x80804000, 0xFF010203}},    {"sixteen.png", {0xFF12569A}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.file);
        const auto picture = read(bytesOf(row.file));
        ASSERT_TRUE(picture);
        ASSERT_EQ(picture->width(), static_cast<int>(row.pixels.size()));
        for (int x = 0; x < picture->width(); ++x) EXPECT_EQ(picture->at(x, 0), row.pixels[x]);
    }
}

// Each is sound but for its size, so nothing but the limit refuses it.
TEST(Pictures, OfAbsurdSizeAreRefusedBeforeTheyTakeMemory) {
    EXPECT_TRUE(read(blackPicture(16384, 1)));
    EXPECT_FALSE(read(blackPicture(16385, 1)));
    EXPECT_TRUE(read(blackPicture(1, 16384)));
    EXPECT_FALSE(read(blackPicture(1, 16385)));
    EXPECT_FALSE(read(blackPicture(8193, 8192))) << "64 million pixels are the most";
    EXPECT_FALSE(read(blackPicture(0, 1)));
    EXPECT_FALSE(read(blackPicture(1, 0)));
    auto huge = blackPicture(1, 1);
    std::fill(huge.begin() + 16, huge.begin() + 24, 0xFF);
    EXPECT_FALSE(read(huge));
}

TEST(Pictures, ThatClaimToBeSmallMayNotUnpackIntoGigabytes) {
    constexpr size_t kOwn = 2 + 5 + 2 + 4;  // of the data of one pixel
    constexpr size_t kMost = 9 + 4096;
    EXPECT_TRUE(read(blackPicture(1, 1, kMost - kOwn)));
    EXPECT_FALSE(read(blackPicture(1, 1, kMost - kOwn + 1)));
    auto bytes = blackPicture(100, 100);
    EXPECT_TRUE(read(bytes));
    constexpr size_t kMostOfThat = 80100 + 80100 / 64 + 4096 + (1 << 20);
    bytes.resize(kMostOfThat);  // behind the end
    EXPECT_TRUE(read(bytes));
    bytes.push_back(0);
    EXPECT_FALSE(read(bytes));

    bytes = bytesOf("rgb.png");  // a claim where the file ends
    bytes.resize(bytes.size() - 12);
    bytes.insert(bytes.end(), {0x3F, 0, 0, 0, 'I', 'D', 'A', 'T'});
    EXPECT_FALSE(read(bytes));
    bytes = blackPicture(1, 1);
    std::fill(bytes.begin() + 33, bytes.begin() + 37, 0);  // no data
    EXPECT_FALSE(read(bytes));
}

TEST(Pictures, CutShortNeverCrash) {
    const auto whole = bytesOf("palette.png");
    ASSERT_TRUE(read(whole));
    for (size_t length = 0; length < whole.size(); ++length)
        read(std::vector<uint8_t>(whole.begin(), whole.begin() + length));
    EXPECT_FALSE(read({}));
    EXPECT_FALSE(read(std::vector<uint8_t>(64, 0)));
}

// Nobody has written such a file, but it would reach the first drawing.
TEST(Pictures, OfRightChecksumsAndDamagedPixelsShowNothing) {
    auto bytes = bytesOf("rgb.png");
    bytes[43] ^= 0xFF;
    EXPECT_FALSE(read(bytes)) << "the checksum tells";
    const uint8_t right[] = {0x85, 0xEA, 0xB9, 0x46};
    std::copy(std::begin(right), std::end(right), &bytes[56]);
    const auto picture = read(bytes);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width(), 2);
    EXPECT_EQ(picture->at(1, 0), 0u);
    EXPECT_FALSE(picture->isOpaque());
}

TEST(PlatformFactory, LoadsFilesAndAnswersNullOtherwise) {
    namespace fs = std::filesystem;
    const auto load = [](const std::string& path) {
        return getPlatformFactory().createBitmapFromPath(path.c_str());
    };
    const auto bitmap = makeOwned<CBitmap>(load(kSamples + "/rgb.png"));
    EXPECT_TRUE(bitmap->isLoaded());
    EXPECT_EQ(bitmap->getSize(), CPoint(2, 1));
    for (const std::string& other :
         {kSamples + "/missing.png", kSamples, std::string("\xFF\xFE"), std::string()})
        EXPECT_FALSE(load(other)) << other;
    EXPECT_FALSE(getPlatformFactory().createBitmapFromPath(nullptr));

    const TemporaryFolder folder;
    const fs::path copy = fs::u8path(folder.path()) / fs::u8path("\xC3\xA4\xE2\x82\xAC.png");
    fs::copy_file(fs::u8path(kSamples) / "rgb.png", copy);
    EXPECT_TRUE(load(copy.u8string())) << "paths are UTF-8";
    fs::resize_file(copy, 2u << 20);  // far more than two pixels can need
    EXPECT_FALSE(load(copy.u8string()));
}

}  // namespace
}  // namespace VSTGUI
