// The picture reader and the factory: every colour type, and damaged files.
#include "gui/graphics/picture_reader.h"
#include "tests/gui/gui_fixture.h"
#include "tests/support/temporary_folder.h"

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

std::optional<PixelBuffer> read(const std::vector<uint8_t>& bytes) {
    return readPicture(bytes.data(), bytes.size());
}

void putBigEndian(std::vector<uint8_t>& bytes, size_t at, uint32_t value) {
    for (size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<uint8_t>(value >> (24 - 8 * i));
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

TEST(Pictures, OfAbsurdSizeAreRefusedBeforeTheyTakeMemory) {
    constexpr size_t kWidthAt = 16;
    constexpr size_t kHeightAt = 20;
    struct Case {
        uint32_t width;
        uint32_t height;
    };
    for (const Case& row : {Case{16385, 1}, Case{1, 16385}, Case{16384, 16384}, Case{0, 1},
                            Case{0x7FFFFFFF, 0x7FFFFFFF}, Case{0xFFFFFFFF, 2}}) {
        SCOPED_TRACE(std::to_string(row.width) + " by " + std::to_string(row.height));
        auto bytes = bytesOf("rgb.png");
        putBigEndian(bytes, kWidthAt, row.width);
        putBigEndian(bytes, kHeightAt, row.height);
        EXPECT_FALSE(read(bytes));
    }
}

TEST(Pictures, ThatClaimToBeSmallMayNotUnpackIntoGigabytes) {
    constexpr size_t kDataAt = 33;  // after the signature and the header chunk
    auto bytes = bytesOf("rgb.png");
    bytes.insert(bytes.begin() + kDataAt, 100012, 0);
    putBigEndian(bytes, kDataAt, 100000);
    const char name[] = "IDAT";
    std::copy(name, name + 4, bytes.begin() + kDataAt + 4);
    EXPECT_FALSE(read(bytes));

    bytes = bytesOf("rgb.png");  // the same claim where the file ends
    bytes.resize(bytes.size() - 12);
    bytes.insert(bytes.end(), {0x3F, 0, 0, 0, 'I', 'D', 'A', 'T'});
    EXPECT_FALSE(read(bytes));
}

TEST(Pictures, WithoutDataAreRefused) {
    constexpr size_t kLengthAt = 33;
    auto bytes = bytesOf("rgb.png");
    putBigEndian(bytes, kLengthAt, 0);
    EXPECT_FALSE(read(bytes));
}

TEST(Pictures, CutShortOrDamagedAreRefusedOrReadButNeverCrash) {
    const auto whole = bytesOf("palette.png");
    ASSERT_TRUE(read(whole));
    for (size_t length = 0; length < whole.size(); ++length)
        read(std::vector<uint8_t>(whole.begin(), whole.begin() + length));
    for (size_t at = 0; at < whole.size(); ++at) {
        auto damaged = whole;
        damaged[at] ^= 0xFF;
        read(damaged);
    }
    EXPECT_FALSE(read({}));
    EXPECT_FALSE(read(std::vector<uint8_t>(64, 0)));
}

TEST(PlatformFactory, LoadsFilesAndAnswersNullOtherwise) {
    const auto& factory = getPlatformFactory();
    const auto loaded = factory.createBitmapFromPath((kSamples + "/rgb.png").c_str());
    ASSERT_TRUE(loaded);
    const auto bitmap = makeOwned<CBitmap>(loaded);
    EXPECT_TRUE(bitmap->isLoaded());
    EXPECT_EQ(bitmap->getSize(), CPoint(2, 1));
    EXPECT_FALSE(factory.createBitmapFromPath((kSamples + "/missing.png").c_str()));
    EXPECT_FALSE(factory.createBitmapFromPath(kSamples.c_str())) << "a folder";
    EXPECT_FALSE(factory.createBitmapFromPath("\xFF\xFE"));
    EXPECT_FALSE(factory.createBitmapFromPath(""));
    EXPECT_FALSE(factory.createBitmapFromPath(nullptr));
}

TEST(PlatformFactory, TakesPathsInUtf8) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    const fs::path copy = fs::u8path(folder.path()) / fs::u8path("\xC3\xA4\xE2\x82\xAC.png");
    fs::copy_file(fs::u8path(kSamples) / "rgb.png", copy);
    EXPECT_TRUE(getPlatformFactory().createBitmapFromPath(copy.u8string().c_str()));
    fs::resize_file(copy, 2u << 20);  // far more than two pixels can need
    EXPECT_FALSE(getPlatformFactory().createBitmapFromPath(copy.u8string().c_str()));
}

}  // namespace
}  // namespace VSTGUI
