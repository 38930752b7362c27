// What the scripts cannot say: the editor's life, its host, files and settings, and limits.
#include "editor/editor_zoom.h"
#include "editor/views/about_view.h"
#include "editor/views/note_display.h"
#include "platform/file.h"
#include "platform/open_document.h"
#include "platform/product.h"
#include "state/controller_map.h"
#include "state/data_folder.h"
#include "tests/editor/editor_rig.h"

namespace {

using namespace VSTGUI;

constexpr const char* kKnob = R"(<knob x="0" y="0" w="40" h="40" id="1"/>)";

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

TEST_F(EditorTest, ThePathThatCannotBeKeptIsSaid) {
    const platform::ScopedSettings unwritable(platform::ScopedSettings::kReadOnly);
    editor::setSkinMissing(true);
    ASSERT_TRUE(edit.open(&instrument));
    click(100, 90);
    type("x");
    press(VirtualKey::Return);
    EXPECT_STREQ(viewAs<CTextLabel>(0)->getText(), "Not Saved!");
    EXPECT_STREQ(viewAs<CTextLabel>(3)->getText(), "Registry Can't be written");
}

TEST_F(EditorTest, AStoredSkinThatIsGoneGivesWayToTheDefault) {
    std::filesystem::create_directories(module.path() + "no skin");
    for (const char* const gone : {"Gone", "", "no skin"}) {
        state::settings().write("SkinName", gone);
        EXPECT_EQ(editor::findSkins().name, "skin");
        EXPECT_EQ(editor::findSkins().folder(), module.path() + "skin" + platform::kSeparator);
    }
}

TEST_F(EditorTest, TheUsersSkinsComeAfterThoseBesideTheLibrary) {
    const std::string own =
        *state::findDataFolder(platform::kProductName) + "Skins" + platform::kSeparator;
    for (const std::string& base : {module.path(), own}) {
        std::filesystem::create_directories(base + "Night");
        platform::writeFile(base + "Night" + platform::kSeparator + "skin.xml", "");
    }
    std::filesystem::create_directories(own + "Own");
    platform::writeFile(own + "Own" + platform::kSeparator + "skin.xml", "");
    editor::chooseSkin("Night");
    EXPECT_EQ(editor::findSkins().folder(), module.path() + "Night" + platform::kSeparator);
    editor::chooseSkin("Own");
    const editor::SkinChoice skins = editor::findSkins();
    EXPECT_EQ(skins.folder(), own + "Own" + platform::kSeparator);
    EXPECT_EQ(skins.selected(), static_cast<int>(skins.installed.size()) - 1);
}

TEST_F(EditorTest, OpensOnlyInAParentWindowAndAnyNumberOfTimes) {
    writeSkin(R"(<background filename="bg.png"/>)" + std::string(kKnob));
    EXPECT_FALSE(edit.open(nullptr));
    EXPECT_FALSE(edit.isOpen());
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(edit.open(&instrument));
        edit.idle();
        edit.close();
        edit.idle();
        edit.close();
    }
    ASSERT_TRUE(edit.open(&instrument));
    EXPECT_TRUE(edit.open(&instrument));  // a host that forgot to close it
}

TEST_F(EditorTest, TheHostMayCallAnythingWhileAMessageStands) {
    const std::string broken = R"(<knob x="0" y="0" w="40" h="40"/>)";
    const std::string meter = R"(<vumeter x="0" y="0" id="0" leds="10" style="2"
                                 bitmap_on="20x40.png" bitmap_off="20x40.png"/>)";
    for (const bool framed : {true, false}) {
        writeSkin(framed ? R"(<background filename="bg.png"/>)" + meter + broken + kKnob
                         : meter + broken + kKnob + R"(<background filename="bg.png"/>)");
        {
            const platform::ScopedMessageHandler host(
                [this](const std::string&, const std::string&, platform::MessageIcon) {
                    edit.idle();
                    edit.getRect();
                    EXPECT_FALSE(edit.open(&instrument));
                    edit.close();
                });
            EXPECT_FALSE(edit.open(&instrument));
        }
        EXPECT_FALSE(edit.isOpen());
        edit.idle();
        EXPECT_TRUE(edit.open(&instrument));
        EXPECT_EQ(frame().getNbViews(), 2u + kViewsAbove);
        edit.idle();
    }
    writeSkin(meter);  // without a frame
    EXPECT_TRUE(edit.open(&instrument));
    edit.idle();
}

TEST_F(EditorTest, LearnsAndForgetsByRightClick) {
    ASSERT_TRUE(open(kKnob));
    const std::string file = *state::findDataFolder(platform::kProductName) + "Pluginccmap.bin";
    state::controllerMap().load();
    click(20, 20, kRButton);
    ASSERT_NE(frame().getModalView(), nullptr);
    press(VirtualKey::Escape);
    EXPECT_EQ(instrument.slot.armed(), state::LearnSlot::kNone);
    click(20, 20, kRButton);
    chooseLine(0);
    EXPECT_EQ(instrument.slot.armed(), 1);
    EXPECT_EQ(instrument.calls(), "");  // the control saw nothing of it
    idle();
    EXPECT_FALSE(platform::fileExists(file));

    state::controllerMap().bind(instrument.slot.take(), 20);
    idle();
    state::ControllerMap kept;
    kept.load();
    EXPECT_EQ(kept.controller(1), 20);

    click(20, 20, kRButton);
    chooseLine(1);
    EXPECT_EQ(state::controllerMap().controller(1), state::ControllerMap::kUnbound);
    idle();
    kept.load();
    EXPECT_EQ(kept.controller(1), state::ControllerMap::kUnbound);

    click(20, 20, kRButton);
    chooseLine(0);
    edit.close();
    EXPECT_EQ(instrument.slot.armed(), state::LearnSlot::kNone);
}

TEST_F(EditorTest, NoZoomTakesTheWindowBeyondItsBounds) {
    EXPECT_EQ(editor::boundedZoom(3, {1930, 1930}), 3);
    EXPECT_EQ(editor::boundedZoom(3, {4096, 2048}), 2);
    EXPECT_EQ(editor::boundedZoom(2, {8192, 8192}), 1);
    for (const char* const nonsense : {"", "0", "101", "-100", "200 %", "999999999999"}) {
        state::settings().write("Zoom", nonsense);
        EXPECT_FALSE(editor::readZoom()) << nonsense;
    }
    editor::writePng(module.path() + "skin/bg.png", plainPicture(16, 12000, kRedCColor));
    state::settings().write("Zoom", "300");
    ASSERT_TRUE(open(kKnob));
    EXPECT_EQ(edit.getRect().bottom, 24000);  // at 200 percent
    EXPECT_EQ(headless::picture(frame()).height(), 24000);
}

TEST_F(EditorTest, AHundredStepsAreTakenBackAndMadeAgain) {
    ASSERT_TRUE(open(R"(<onoff x="0" y="0" id="17" bitmap_handle="20x40.png"/>)"
                     R"(<onoff x="50" y="0" id="18" bitmap_handle="20x40.png"/>)"));
    const auto before = instrument.values;
    for (int step = 0; step < 99; ++step) click(step % 2 * 50 + 5, 5);
    const auto after = instrument.values;
    ASSERT_NE(after, before);
    const auto times = [&](const char* key) {
        int count = 0;
        while (VSTGUI::headless::type(frame(), key, VSTGUI::kControl)) ++count;
        return count;
    };
    EXPECT_EQ(times("z"), 99);
    EXPECT_EQ(instrument.values, before);
    EXPECT_EQ(times("y"), 99);
    EXPECT_EQ(instrument.values, after);
}

TEST_F(EditorTest, DrawsASkinToAPicture) {
    writeSkin(R"(<background filename="bg.png"/>
                 <NoteDisplay x="0" y="0" w="50" h="20" id="0" backcolor="FF0000"/>)");
    std::ostringstream out;
    const std::string png = applicationData.path() + "out.png";
    EXPECT_EQ(editor::reportAndDrawSkin(module.path() + "skin" + platform::kSeparator, png, out), 0)
        << out.str();
    const auto drawn = getPlatformFactory().createBitmapFromPath(png.c_str());
    ASSERT_TRUE(drawn);
    EXPECT_EQ(drawn->pixels().width(), 400);
    EXPECT_EQ(drawn->pixels().at(0, 0), 0xFFFF0000u);
    EXPECT_EQ(drawn->pixels().at(100, 100), 0xFF28323Cu);

    writeSkin(
        R"(<background filename="bg.png"/><kick x="1" y="1" id="1" bitmap_handle="broken.png"/>
                 <knob x="1" y="1" w="1" id="2"/>)");
    EXPECT_EQ(editor::reportAndDrawSkin(module.path() + "skin" + platform::kSeparator, "", out), 2);
    EXPECT_NE(out.str().find("! QXSKIN: Bitmap not found: broken.png"), std::string::npos);
    EXPECT_EQ(editor::reportAndDrawSkin(module.path() + "skin" + platform::kSeparator,
                                        module.path(), out),
              3);
    EXPECT_GT(editor::reportAndDrawSkin(module.path() + "none/", png, out), 0);
    EXPECT_FALSE(state::settings().read("SkinName"));  // the user had chosen nothing

    editor::setSkinMissing(false);
    // Any number of elements works, and picture names ignore case.
    std::string links;
    for (int i = 43; i < 63; ++i) {
        links += R"(<autodisp x="1" y="1" w="9" h="9" id="1" style="0" link=")" +
                 std::to_string(i) + R"("/><knob/>)";
    }
    writeSkin(R"(<background filename="BG.png"/>)" + links);
    EXPECT_EQ(editor::reportAndDrawSkin(module.path() + "skin" + platform::kSeparator, "", out),
              40);
}

TEST_F(EditorTest, TheAboutPictureOpensHelpOfTheDataFolderOrBesideTheLibrary) {
    std::string opened;
    const platform::ScopedDocumentOpener opener([&opened](const std::string& path) {
        opened = path;
        return true;
    });
    editor::writePng(module.path() + "skin/about.png", plainPicture(200, 100, CColor(1, 2, 3)));
    open(R"(<about x="0" y="0" w="50" h="20" bitmap_pop="about.png"/>)");
    const auto clickHelp = [this] { click(200, 175); };  // low on the centred picture
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
    headless::move(frame(), {200, 175}, 0);
    EXPECT_EQ(about->state(), editor::CAbout::kHelp);
    headless::move(frame(), {200, 120}, 0);
    EXPECT_EQ(about->state(), editor::CAbout::kShowing);
    clickHelp();
    EXPECT_EQ(opened, data + "ZLM_help.rtf");
    EXPECT_EQ(frame().getModalView(), nullptr);
}

TEST_F(EditorTest, EverySpellingOfAPictureIsThatPicture) {
    const std::string kick = R"(<kick x="1" y="1" id="42" bitmap_handle=")";
    ASSERT_TRUE(open(kick + R"(20X40.PNG"/>)" + kick + R"(.//20x40.png"/>)" + kick +
                     R"(x/./../20x40.Png"/>)"));
    EXPECT_EQ(messages.all, std::vector<RecordedMessage>());
    ASSERT_EQ(frame().getNbViews(), 3u + kViewsAbove);
    EXPECT_EQ(view(0)->getBackground(), view(1)->getBackground());
    EXPECT_EQ(view(0)->getBackground(), view(2)->getBackground());
}

TEST_F(EditorTest, ThePicturesOfASkinShareOneBudget) {
    // The header alone is charged: 33554432 pixels but for a hundred.
    for (const char last : {'\x9C', '\x9D'}) {
        const char size[] = {'\x01', '\xFF', '\xFF', last, 0, 0, 0, 1};
        module.write("skin/claim.png",
                     std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16) + std::string(size, 8));
        editor::PictureCache pictures(module.path() + "skin" + platform::kSeparator);
        EXPECT_FALSE(pictures.find("claim.png"));
        EXPECT_EQ(pictures.find("10x10.png") != nullptr, last == '\x9C');
    }
    const std::string folder = module.path() + "skin" + platform::kSeparator;
    editor::writePng(folder + "10x10#2.0x.png", plainPicture(20, 20, kBlueCColor));
    for (const bool doubleFits : {false, true}) {
        editor::PictureCache pictures(folder, 10 * 10 + 20 * 40 + (doubleFits ? 20 * 20 : 399));
        CBitmap* const small = pictures.find("10x10.png");
        ASSERT_TRUE(small);
        EXPECT_FALSE(pictures.find("32x3200.png"));
        EXPECT_TRUE(pictures.find("20x40.png"));
        pictures.readDoubles();
        EXPECT_EQ(small->getBestPlatformBitmapForScaleFactor(2)->getSize().x, doubleFits ? 20 : 10);
    }
}

TEST_F(EditorTest, TenThousandElementsAreBuilt) {
    std::string elements;
    for (int i = 0; i < 10000; ++i) {
        elements += R"(<knob x="1" y="1" w="9" h="9" id=")" + std::to_string(i % 42) + R"("/>)";
    }
    ASSERT_TRUE(open(elements));
    EXPECT_EQ(frame().getNbViews(), 10000u + kViewsAbove);
    for (int i = 0; i < state::kNumParams; ++i) instrument.setParameter(i, 0.75f);
    idle();
    EXPECT_EQ(viewAs<CControl>(9999)->getValue(), 0.75f);
}

}  // namespace
