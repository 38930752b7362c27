// Reading the attributes of skin elements, and the messages about them.
#include "editor/skin/skin_values.h"

#include <locale>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "editor/skin/skin_report.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

using editor::SkinValues;

struct Read {
    std::optional<SkinValues> values;
    std::vector<RecordedMessage> messages;
};

// Reads one element with the constant A = 10; every picture but "missing.png" and "" exists.
Read read(const std::string& document) {
    editor::XmlNode node;
    EXPECT_GT(editor::parseXml(document, 0, node), 0) << document;
    const editor::SkinElementRule* const rule = editor::findSkinElementRule(node.name);
    if (!rule) return {};
    editor::SkinConstantTable constants;
    constants.assign("A", 10);
    const RecordedMessages messages;
    auto values = editor::readSkinElement(
        *rule, editor::SkinAttributes(node), constants,
        [](const std::string& name) { return !name.empty() && name != "missing.png"; },
        platform::showMessage);
    return {std::move(values), messages.all};
}

RecordedMessage missing(const std::string& tag, const std::string& object) {
    return {"Skin Error", "Missing tag " + tag + " for object " + object,
            platform::MessageIcon::kError};
}

RecordedMessage failed(const std::string& tag, const std::string& object) {
    return {"Skin Error", "Error calculating value of tag " + tag + " for object " + object,
            platform::MessageIcon::kError};
}

TEST(SkinValues, HoldWhatAnElementSays) {
    const Read slider =
        read(R"(<Slider X="A + 5" y="" len="100" id="2.5" style="1|2" bitmap_bk="b.png" )"
             R"(bitmap_handle="h.png" default="0.5" other="nope"/>)");
    EXPECT_TRUE(slider.messages.empty());
    ASSERT_TRUE(slider.values);
    EXPECT_EQ(slider.values->number("x"), 15.0);
    EXPECT_EQ(slider.values->number("y"), 0.0);  // present though empty
    EXPECT_EQ(slider.values->number("id"), 2.5);
    EXPECT_EQ(slider.values->number("style"), 3.0);
    EXPECT_EQ(slider.values->number("xoff"), std::nullopt);
    EXPECT_EQ(slider.values->number("default"), 0.5);
    EXPECT_EQ(slider.values->number("other"), std::nullopt);
    EXPECT_EQ(slider.values->picture("bitmap_bk"), "b.png");

    const Read display =
        read(R"(<anydisp x="1" y="2" w="3" h="4" style="5" font="6" halign="2" )"
             R"(txtface="1" transparent="n" fontcolor="0xFF8000" backcolor="red"/>)");
    EXPECT_TRUE(display.messages.empty());
    ASSERT_TRUE(display.values);
    EXPECT_EQ(display.values->number("halign"), 2.0);
    EXPECT_EQ(display.values->flag("transparent"), false);
    EXPECT_EQ(display.values->colour("fontcolor"), 0xFF8000u);
    EXPECT_EQ(display.values->colour("backcolor"), std::nullopt);
}

TEST(SkinValues, TakeYesFromTheFirstCharacter) {
    const std::pair<const char*, bool> cases[] = {{"yes", true}, {"Y", true},    {"1", true},
                                                  {"no", false}, {"", false},    {"0", false},
                                                  {" y", false}, {"true", false}};
    for (const auto& [value, expected] : cases) {
        SCOPED_TRACE(value);
        const Read knob = read(R"(<knob x="1" y="1" w="1" h="1" id="1" stackbmp=")" +
                               std::string(value) + R"("/>)");
        ASSERT_TRUE(knob.values);
        EXPECT_EQ(knob.values->flag("stackbmp"), expected);
        EXPECT_EQ(knob.values->flag("transparent"), std::nullopt);
    }
}

TEST(SkinValues, ReportWhatStopsAnElement) {
    struct Case {
        const char* document;
        RecordedMessage message;
    };
    const Case cases[] = {
        {R"(<update src="1"/>)", missing("dst", "update")},
        {"<Update/>", missing("src", "Update")},
        {R"(<update src="B" dst="1"/>)", failed("src", "update")},
        {R"(<update src="1.2.3"/>)", failed("src", "update")},
        {R"(<onoff x="1" y="1" id="1"/>)", missing("bitmap_handle", "onoff")},
        {R"(<background filename="missing.png"/>)", {"Bitmap not found", "missing.png"}},
        {R"(<background filename=""/>)", {"Bitmap not found", ""}},
        {R"(<onoff x="1" y="1" id="1" bitmap_handle="missing.png"/>)",
         {"QXSKIN: Bitmap not found", "missing.png"}},
    };
    for (const auto& [document, message] : cases) {
        SCOPED_TRACE(document);
        const Read result = read(document);
        EXPECT_FALSE(result.values);
        EXPECT_EQ(result.messages, std::vector<RecordedMessage>{message});
    }
}

TEST(SkinValues, LeaveOutOptionalNumbersThatFail) {
    const Read knob =
        read(R"(<knob x="1" y="1" w="1" h="1" id="1" xoff="B" yoff="2" default="C"/>)");
    ASSERT_TRUE(knob.values);
    EXPECT_EQ(knob.values->number("xoff"), std::nullopt);
    EXPECT_EQ(knob.values->number("yoff"), 2.0);
    EXPECT_EQ(knob.messages,
              (std::vector<RecordedMessage>{failed("xoff", "knob"), failed("default", "knob")}));
}

TEST(SkinValues, ReadColoursAsHexadecimalNumbers) {
    const std::pair<const char*, std::optional<std::uint32_t>> cases[] = {{"0x102030", 0x102030u},
                                                                          {"ffAA01", 0xFFAA01u},
                                                                          {" \n0Xff", 0xFFu},
                                                                          {"12zz", 0x12u},
                                                                          {"0xFF102030", 0x102030u},
                                                                          {"-1", 0xFFFFFFu},
                                                                          {"+7", 7u},
                                                                          {"", std::nullopt},
                                                                          {"#102030", std::nullopt},
                                                                          {"0x", std::nullopt},
                                                                          {"red", std::nullopt},
                                                                          {"- 1", std::nullopt}};
    for (const auto& [text, colour] : cases) {
        EXPECT_EQ(editor::parseSkinColour(text), colour) << text;
    }
}

struct CommaPunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

TEST(SkinReport, ListsElementsNumbersAndMessagesInNoLocale) {
    const TemporaryFolder folder;
    folder.write("there.png", "");
    folder.write("skin.xml",
                 "<GUI><CONSTANTS>Col = 8, Row, bad = nope</CONSTANTS>"
                 R"(<background filename="there.png"/>)"
                 R"(<update src="COL" dst="1000+ROW/4"/>)"
                 R"(<update src="1"/>)"
                 R"(<kick x="1" y="2" id="3" bitmap_handle="gone.png" transparent="y"/>)"
                 R"(<NoteDisplay x="1" y="2" w="3" h="4" id="5" fontcolor="0x00ff01"/>)"
                 "<gadget/></GUI>");
    std::ostringstream out;
    out.imbue(std::locale(std::locale::classic(), new CommaPunctuation));
    EXPECT_EQ(editor::reportSkin(folder.path(), out), 3);
    EXPECT_EQ(out.str(),
              "! bad = nope: Expression parser error\n"
              "CONSTANTS Col=8 Row=9\n"
              "background filename=there.png\n"
              "update src=8 dst=1002.25\n"
              "! Skin Error: Missing tag dst for object update\n"
              "update is abandoned\n"
              "! QXSKIN: Bitmap not found: gone.png\n"
              "kick is abandoned\n"
              "NoteDisplay x=1 y=2 w=3 h=4 id=5 fontcolor=0x00FF01\n"
              "gadget is not an element of skins: ignored\n");
}

TEST(SkinReport, CountsWhatCannotBeReadAtAll) {
    const TemporaryFolder folder;
    std::ostringstream unreadable;
    EXPECT_EQ(editor::reportSkin(folder.path(), unreadable), 1);

    folder.write("skin.xml",
                 R"(<GUI><update src="1" dst="2" note=")" + std::string(128, 'n') + R"("/></GUI>)");
    std::ostringstream tooLong;
    EXPECT_EQ(editor::reportSkin(folder.path(), tooLong), 1);
    EXPECT_EQ(tooLong.str(), "! Attribute too long: note\nupdate src=1 dst=2\n");

    folder.write("skin.xml", "<GUI/>");
    std::ostringstream clean;
    EXPECT_EQ(editor::reportSkin(folder.path(), clean), 0);
    EXPECT_EQ(clean.str(), "");
}

}  // namespace
