// The editor's own views: what they show and how they respond to gestures.
#include <functional>

#include "editor/views/about_view.h"
#include "editor/views/note_display.h"
#include "editor/views/presets_display.h"
#include "platform/file.h"
#include "platform/open_document.h"
#include "platform/product.h"
#include "state/data_folder.h"
#include "tests/editor/editor_rig.h"

namespace {

using namespace VSTGUI;

TEST(NoteText, NamesTheOneNoteThatIsHeld) {
    struct {
        int held;
        int key;
        const char* text;
    } const rows[] = {{1, 0, "C -2"},   {1, 60, "C 3"},  {1, 127, "G 8"},
                      {1, 61, "C# 3"},  {1, -1, "OFF"},  {0, 60, "OFF"},
                      {2, 60, "Chord"}, {1, 11, "B -2"}, {1, 12, "C -1"}};
    for (const auto& row : rows) EXPECT_EQ(editor::noteText(row.held, row.key), row.text);
}

TEST(TextDisplay, CutsLongTextsBetweenCharacters) {
    EXPECT_EQ(editor::cutToFit("abc", 3), "abc");
    EXPECT_EQ(editor::cutToFit("abc", 2), "ab");
    EXPECT_EQ(editor::cutToFit("a\xC3\xA9", 2), "a");
    EXPECT_EQ(editor::cutToFit("\xE2\x82\xAC", 2), "");
}

TEST_F(EditorTest, NoteDisplayFollowsTheKeys) {
    ASSERT_TRUE(open(R"(<NoteDisplay x="0" y="0" w="80" h="20" id="0" backcolor="112233"/>)"));
    EXPECT_EQ(pixel(0, 0), CColor(0x11, 0x22, 0x33));
    const auto off = look();
    instrument.held = 1;
    instrument.key = 60;
    clock.run(frame(), 100);
    const auto note = look();
    instrument.held = 2;
    clock.run(frame(), 100);
    const auto chord = look();
    instrument.held = 0;
    clock.run(frame(), 100);
    EXPECT_NE(note, off);
    EXPECT_NE(chord, note);
    EXPECT_EQ(look(), off);
}

TEST_F(EditorTest, TapsMoveOverTheirRange) {
    ASSERT_TRUE(open(R"(<ViewTaps x="0" y="0" w="110" h="30"/>)"));
    const auto isTap = [this](int x, int y) { return pixel(x, y).red > 200; };
    EXPECT_TRUE(isTap(5, 5));
    instrument.taps = {1.0f, 7.0f, NAN};  // beyond the range: shown at its end
    clock.run(frame(), 100);
    EXPECT_FALSE(isTap(5, 5));
    EXPECT_TRUE(isTap(104, 5));
    EXPECT_TRUE(isTap(104, 15));
    EXPECT_TRUE(isTap(5, 25));
    EXPECT_EQ(pixel(50, 1), CColor(40, 50, 60));  // the background shows between the rows
}

TEST_F(EditorTest, WhatMovesIsDrawnWholeWhateverWasDrawnBefore) {
    ASSERT_TRUE(open(R"(<NoteDisplay x="0" y="0" w="80" h="20" id="0"/>
        <ViewTaps x="0" y="30" w="110" h="30"/>
        <PresetsDisplay x="0" y="70" w="200" h="20" id="0"/>)"));
    instrument.held = 2;
    instrument.taps = {1.0f, 1.0f, 1.0f};
    instrument.current = 99;
    frame().invalidRect({0, 0, 40, 100});  // as when a menu closes
    look();
    clock.run(frame(), 100);
    const auto shown = look();
    frame().invalid();
    EXPECT_EQ(look(), shown);
}

class PresetsTest : public EditorTest {
  protected:
    PresetsTest() {
        instrument.names[0] = "First";
        instrument.names[1] = "Second";
        open(R"(<PresetsDisplay x="0" y="0" w="200" h="20" id="0"/>)");
    }
};

TEST_F(PresetsTest, ArrowsAndWheelStep) {
    click(195, 10);
    EXPECT_EQ(instrument.current, 1);
    click(5, 10);
    click(5, 10);  // there is none before the first
    EXPECT_EQ(instrument.current, 0);
    headless::wheel(frame(), {100, 10}, -1);
    EXPECT_EQ(instrument.current, 1);
    headless::wheel(frame(), {100, 10}, 0.5);
    EXPECT_EQ(instrument.current, 1);
    headless::wheel(frame(), {100, 10}, 0.5);
    EXPECT_EQ(instrument.current, 0);
    instrument.current = 127;
    headless::wheel(frame(), {100, 10}, -3);
    EXPECT_EQ(instrument.current, 127);
}

TEST_F(PresetsTest, AClickOpensTheListOfAllPrograms) {
    click(100, 10);
    EXPECT_EQ(frame().getModalView(), nullptr);  // a second click may follow
    clock.run(frame(), 400);
    ASSERT_NE(frame().getModalView(), nullptr);
    press(VirtualKey::End);
    press(VirtualKey::Return);
    EXPECT_EQ(instrument.current, 127);
    EXPECT_EQ(frame().getModalView(), nullptr);
}

TEST_F(PresetsTest, ADoubleClickRenamesInPlace) {
    const auto before = look();
    click(100, 10);
    click(100, 10, kLButton | kDoubleClick);
    clock.run(frame(), 400);
    EXPECT_EQ(frame().getModalView(), nullptr);
    type("A name longer than the bank can hold");
    press(VirtualKey::Return);
    EXPECT_EQ(instrument.names[0], "A name longer than the ");
    EXPECT_FALSE(frame().getFocusView());
    clock.run(frame(), 100);
    EXPECT_NE(look(), before);

    click(100, 10);
    click(100, 10, kLButton | kDoubleClick);
    type("dropped");
    press(VirtualKey::Escape);
    EXPECT_EQ(instrument.names[0], "A name longer than the ");

    click(100, 10);
    click(100, 10, kLButton | kDoubleClick);
    type("Mine");
    instrument.current = 1;  // the host changes the program meanwhile
    clock.run(frame(), 100);
    press(VirtualKey::Return);
    EXPECT_EQ(instrument.names[0], "Mine");
    EXPECT_EQ(instrument.names[1], "Second");
}

TEST_F(PresetsTest, ClosingTheEditorEndsTheNameAndTheList) {
    click(100, 10);
    click(100, 10, kLButton | kDoubleClick);
    type("Kept");
    edit.close();
    openAsWritten();
    click(100, 10);
    edit.close();
    openAsWritten();
    click(100, 10);
    clock.run(frame(), 400);
    EXPECT_NE(frame().getModalView(), nullptr);
    edit.close();
    EXPECT_EQ(instrument.names[0], "Kept");
}

class AboutTest : public EditorTest {
  protected:
    AboutTest() {
        editor::writePng(module.path() + "skin/about.png", plainPicture(200, 100, CColor(1, 2, 3)));
        open(R"(<about x="0" y="0" w="50" h="20" bitmap_pop="about.png"/>)");
    }
    // The picture is centred: it covers (100, 100) to (300, 200).
    void clickHelp() { click(200, 185); }

    std::string opened;
    platform::ScopedDocumentOpener opener{[this](const std::string& path) {
        opened = path;
        return true;
    }};
};

TEST_F(AboutTest, ShowsItsPictureUntilAClick) {
    const auto before = look();
    click(10, 10);
    EXPECT_EQ(pixel(101, 101), CColor(1, 2, 3));
    EXPECT_NE(look(), before);
    click(110, 110);
    idle();
    EXPECT_EQ(look(), before);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(instrument.calls(), "");
}

TEST_F(AboutTest, OpensHelpOfTheDataFolderOrBesideTheLibrary) {
    click(10, 10);
    clickHelp();
    EXPECT_EQ(opened, "");  // there is none

    module.write("ZLM_help.rtf", "help");
    click(10, 10);
    clickHelp();
    EXPECT_EQ(opened, module.path() + "ZLM_help.rtf");

    const std::string data = *state::findDataFolder(platform::kProductName);
    platform::writeFile(data + "ZLM_help.rtf", "help");
    click(10, 10);
    auto* const about = dynamic_cast<editor::CAbout*>(frame().getModalView());
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->state(), editor::CAbout::kShowing);
    headless::move(frame(), {200, 185}, 0);
    EXPECT_EQ(about->state(), editor::CAbout::kHelp);
    headless::move(frame(), {200, 120}, 0);
    EXPECT_EQ(about->state(), editor::CAbout::kShowing);
    clickHelp();
    EXPECT_EQ(opened, data + "ZLM_help.rtf");
    EXPECT_EQ(frame().getModalView(), nullptr);
}

TEST_F(EditorTest, MetersShowTheOutputLevel) {
    ASSERT_TRUE(open(R"(<vumeter x="0" y="0" id="0" leds="10" style="2"
                        bitmap_on="20x40.png" bitmap_off="32x3200.png"/>)"));
    EXPECT_EQ(pixel(5, 35), kBlueCColor);
    instrument.level = 0.5f;
    idle();
    EXPECT_EQ(pixel(5, 35), kGreenCColor);
    EXPECT_EQ(pixel(5, 5), kBlueCColor);
}

TEST_F(EditorTest, AnUnreadableSkinIsMissing) {
    const std::string folder = module.path() + "skin";
    const std::function<void()> damages[] = {
        [] {},  // the pictures alone
        [&] { module.write("skin/skin.xml", "<GUI>"); },
        [&] { std::filesystem::create_directories(folder + "/skin.xml"); },
        [&] { std::filesystem::remove_all(folder); },
    };
    for (const auto& damage : damages) {
        std::filesystem::remove_all(folder + "/skin.xml");
        damage();
        editor::setSkinMissing(false);
        ASSERT_TRUE(edit.open(&instrument));
        EXPECT_TRUE(editor::isSkinMissing());
        EXPECT_FALSE(edit.showsSkin());
        EXPECT_EQ(edit.getRect().right, 600);
        edit.close();
    }
    EXPECT_TRUE(messages.all.empty());
}

TEST_F(EditorTest, AMissingSkinBringsUpTheDataFolderScreen) {
    module.write("skin/skin.xml", "<?xml version=\"1.0\"?><GUI/>");
    EXPECT_EQ(edit.getRect().right, 600);
    EXPECT_EQ(edit.getRect().bottom, 200);
    edit.open(&instrument);
    EXPECT_EQ(instrument.calls(), "size 600 200");
    EXPECT_TRUE(messages.all.empty());
    EXPECT_FALSE(edit.showsSkin());
    EXPECT_EQ(pixel(599, 0), CColor(201, 201, 255));
    EXPECT_EQ(pixel(25, 86), CColor(128, 128, 255));
    std::string lines;
    frame().forEachChild([&lines](CView* line) {
        const std::string text = dynamic_cast<CTextLabel&>(*line).getText().getString();
        if (text.rfind("for example ", 0) != 0) lines += text + '\n';
    });
    EXPECT_EQ(lines,
              "The plugin is not installed correctly, some files are missing.\n"
              "Please find the \"Tembrilon Data\" folder and type the full path of this plug-in's "
              "files,\n\n"
              "Alternatively you may place the files along with the DLL in the VSTplugins folder.\n"
              "Press Enter and reload the plugin.\n"
              "Enter here the full path to your Tembrilon Data folder\n");

    const auto kept = [] { return state::settings().read("DataPath"); };
    click(100, 90);
    press(VirtualKey::Return);
    EXPECT_FALSE(kept());
    click(100, 90);
    type("/the/path");
    click(5, 5);  // only Return confirms
    EXPECT_FALSE(kept());
    click(100, 90);
    press(VirtualKey::Return);
    EXPECT_EQ(kept(), "/the/path");
    idle();

    // The skin stays missing for the process.
    EXPECT_TRUE(open(R"(<ViewTaps x="0" y="0" w="110" h="30"/>)"));
    EXPECT_FALSE(edit.showsSkin());
}

TEST_F(EditorTest, ThePathThatCannotBeKeptIsSaid) {
    const platform::ScopedSettings unwritable(platform::ScopedSettings::kReadOnly);
    editor::setSkinMissing(true);
    ASSERT_TRUE(edit.open(&instrument));
    const auto before = look();
    click(100, 90);
    type("x");
    press(VirtualKey::Return);
    EXPECT_STREQ(viewAs<CTextLabel>(0)->getText(), "Not Saved!");
    EXPECT_STREQ(viewAs<CTextLabel>(3)->getText(), "Registry Can't be written");
    EXPECT_NE(look(), before);
}

}  // namespace
