// Compressing takes long, so it is done once for all inputs.
#include "fuzz/support/skin_folder.h"

#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "platform/file.h"
#include "tests/editor/fake_instrument.h"
#include "tests/support/temporary_folder.h"

namespace fuzz {

namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

Files drawPictures() {
    const TemporaryFolder folder;
    Files files = {{"broken.png", "no picture"}};
    const auto draw = [&](const std::string& name, int width, int height, VSTGUI::CColor color) {
        const std::string path = folder.path() + name;
        editor::writePng(path, plainPicture(width, height, color));
        files.emplace_back(name, platform::readFile(path, 1 << 20).value_or(""));
    };
    draw("bg.png", 200, 150, VSTGUI::CColor(40, 50, 60));
    draw("10x10.png", 10, 10, VSTGUI::kRedCColor);
    draw("20x40.png", 20, 40, VSTGUI::CColor(0, 255, 0, 100));
    draw("32x320.png", 32, 320, VSTGUI::kBlueCColor);
    return files;
}

}  // namespace

void makeSkinFolder(const std::string& moduleFolder, const std::string& skinXml) {
    static const Files pictures = drawPictures();
    const std::string folder = moduleFolder + "skin/";
    std::filesystem::create_directories(folder);
    const auto write = [&](const std::string& name, const std::string& bytes) {
        std::ofstream(folder + name, std::ios::binary) << bytes;
    };
    for (const auto& [name, bytes] : pictures) write(name, bytes);
    write("skin.xml", skinXml);
}

}  // namespace fuzz
