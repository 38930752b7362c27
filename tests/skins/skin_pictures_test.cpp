// Compares the looks of the delivered skins with the pictures in the manual.
//
// After a change of looks, run the test with QUARZEL_MINT_GOLDEN=1. It rewrites the manual's
// pictures and the table of hashes. Review the pictures.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "editor/skin_preview.h"
#include "gui/graphics/picture_reader.h"
#include "gui/headless.h"
#include "platform/settings_store.h"
#include "tests/support/temporary_folder.h"

namespace {

using VSTGUI::PixelBuffer;

// Another version of librsvg or of a font draws edges slightly differently.
constexpr int kTile = 8;        // pixels
constexpr int kTolerance = 16;  // of 255, for the mean of a tile

constexpr const char* kSkins[] = {"skin", "Night", "Opera"};
const std::string kTable = QUARZEL_SKIN_HASHES;

bool minting() {
    return std::getenv("QUARZEL_MINT_GOLDEN") != nullptr;
}

std::string keptPicture(const std::string& skin) {
    return QUARZEL_PICTURES + skin + ".png";
}

PixelBuffer drawFolder(const std::string& path, int zoomPercent) {
    const platform::ScopedSettings settings;
    const auto folder = std::filesystem::path(path).make_preferred();
    const auto picture = editor::drawSkin(folder.string(), zoomPercent);
    EXPECT_TRUE(picture);
    return picture.value_or(PixelBuffer());
}

PixelBuffer draw(const std::string& skin, int zoomPercent = 100) {
    return drawFolder(QUARZEL_SKINS + skin + '/', zoomPercent);
}

// The skin's pictures with the layout that it had before meters, units and commands.
PixelBuffer drawBefore(const std::string& skin, int zoomPercent) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + skin + '/';
    std::filesystem::copy(QUARZEL_SKINS + skin, path);
    std::filesystem::copy(QUARZEL_SKINS_BEFORE + skin + ".xml", path + "skin.xml",
                          std::filesystem::copy_options::overwrite_existing);
    return drawFolder(path, zoomPercent);
}

int meanOfTile(const PixelBuffer& picture, int left, int top, int shift) {
    int sum = 0;
    for (int y = top; y < top + kTile; ++y)
        for (int x = left; x < left + kTile; ++x) sum += picture.at(x, y) >> shift & 255;
    return sum / (kTile * kTile);
}

TEST(SkinPictures, LookAsTheManualShowsThem) {
    for (const std::string skin : kSkins) {
        SCOPED_TRACE(skin);
        const PixelBuffer drawn = draw(skin);
        if (minting()) editor::writePng(keptPicture(skin), drawn);
        const auto kept = VSTGUI::readPictureFile(keptPicture(skin));
        ASSERT_TRUE(kept);
        ASSERT_EQ(drawn.width(), kept->width());
        ASSERT_EQ(drawn.height(), kept->height());
        for (int y = 0; y + kTile <= drawn.height(); y += kTile)
            for (int x = 0; x + kTile <= drawn.width(); x += kTile)
                for (const int shift : {0, 8, 16})
                    ASSERT_NEAR(meanOfTile(drawn, x, y, shift),
                                meanOfTile(kept->all(), x, y, shift), kTolerance)
                        << "at " << x << ", " << y;
    }
}

// Every system gives the same bytes: the build draws the pictures, and the editor draws the rest.
TEST(SkinPictures, AreTheKnownBytesAtEveryZoom) {
    const std::string drawnBy = QUARZEL_SKIN_DRAWER "\n";
    std::string hashes = drawnBy;
    for (const std::string skin : kSkins) {
        for (const int zoom : {100, 200}) {
            std::ostringstream row;
            row << skin << ',' << zoom << ',' << std::hex
                << VSTGUI::headless::hashOf(draw(skin, zoom));
            if (std::filesystem::exists(QUARZEL_SKINS_BEFORE + skin + ".xml"))
                row << ',' << VSTGUI::headless::hashOf(drawBefore(skin, zoom));
            hashes += row.str() + '\n';
        }
    }
    if (minting()) std::ofstream(kTable, std::ios::binary) << hashes;
    std::ifstream table(kTable, std::ios::binary);
    std::stringstream kept;
    kept << table.rdbuf();
    if (kept.str().compare(0, drawnBy.size(), drawnBy) != 0)
        GTEST_SKIP() << "the pictures are drawn by " << drawnBy << "the table's were not";
    EXPECT_EQ(hashes, kept.str());
}

}  // namespace
