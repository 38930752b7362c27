// Compression is slow, so the pictures are made once for all inputs.
#include "fuzz/support/skin_folder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include "editor/skin/skin_schema.h"
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

constexpr const char* kElements[] = {
    "slider",       "knob",           "onoff",       "kick",     "vswitch",    "hswitch",
    "display",      "autodisp",       "anydisp",     "vumeter",  "optionmenu", "about",
    "skinselector", "PresetsDisplay", "NoteDisplay", "ViewTaps", "update",     "background"};

constexpr const char* kNumbers[] = {"0",     "-1",  "999",         "1000",        "1001", "1002",
                                    "1003",  "42",  "0.5",         "1/0",         "0/0",  "A",
                                    "B*2",   "-40", "1048577",     "2147483647",  "1$31", "none",
                                    "1.5.2", "400", "99999999999", "-2147483648", "300",  "7"};

constexpr const char* kPictures[] = {"10x10.png", "20x40.png",  "32x320.png", "bg.png",
                                     "20X40.PNG", "broken.png", "none.png",   ""};

std::string attributeText(std::string_view name, Input& input) {
    const int choice = input.byte();
    switch (editor::skinAttributeKind(name)) {
        case editor::SkinAttributeKind::kNumber: {
            // Byte values below this stand for plain numbers.
            constexpr int kPlain = 200;
            if (choice >= kPlain) return kNumbers[(choice - kPlain) % std::size(kNumbers)];
            return std::to_string(name == "id" ? choice % state::kNumParams : choice);
        }
        case editor::SkinAttributeKind::kPicture:
            return kPictures[(choice & 0xF) < 12 ? choice % 4 : choice % std::size(kPictures)];
        case editor::SkinAttributeKind::kYesNo:
            return choice % 2 ? "yes" : "no";
        default:
            return choice == 0 ? "x" : std::to_string(choice * 4001);
    }
}

void writeAttributes(std::string& text, std::string_view names, bool all, Input& input) {
    for (const auto name : editor::skinAttributeNames(names)) {
        if (!all && input.byte() % 4 != 0) continue;
        text.append(" ").append(name).append("=\"").append(attributeText(name, input)) += '"';
    }
}

}  // namespace

std::string writtenSkin(Input& input) {
    std::string text = "<GUI><CONSTANTS>A = 20, B, C = A*2</CONSTANTS>";
    const int count = input.below(11);
    const bool backgroundFirst = input.byte() % 8 != 7;
    if (backgroundFirst) text += "<background filename=\"bg.png\"/>";
    for (int i = 0; i < count; ++i) {
        const char* const element = kElements[input.below(std::size(kElements))];
        const auto* const rule = editor::findSkinElementRule(element);
        text.append("<").append(element);
        const int how = input.byte();
        writeAttributes(text, rule->required, how % 16 != 15, input);
        if (how & 0x40) writeAttributes(text, rule->optional, false, input);
        if (how & 0x80) writeAttributes(text, rule->finishing, false, input);
        text += how & 0x20 ? "><list><entry>one</entry><entry>two</entry></list></" +
                                 std::string(element) + '>'
                           : "/>";
    }
    return text + (backgroundFirst ? "</GUI>" : "<background filename=\"bg.png\"/></GUI>");
}

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
