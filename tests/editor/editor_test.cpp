// What the scripts cannot say: the editor's life, its host, files and settings, and limits.
#include <functional>

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

TEST_F(EditorTest, ASkinWithoutABackgroundShowsTheDataFolderScreen) {
    writeSkin(kKnob);
    ASSERT_TRUE(openAsWritten());
    EXPECT_FALSE(edit.showsSkin());
    EXPECT_FALSE(editor::isSkinMissing());
    ASSERT_TRUE(open(kKnob));
    EXPECT_TRUE(edit.showsSkin());
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
        EXPECT_EQ(frame().getNbViews(), 2u);
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
        EXPECT_EQ(editor::readZoom(), 100) << nonsense;
    }
    editor::writePng(module.path() + "skin/bg.png", plainPicture(16, 12000, kRedCColor));
    state::settings().write("Zoom", "300");
    ASSERT_TRUE(open(kKnob));
    EXPECT_EQ(edit.getRect().bottom, 32760);
    EXPECT_EQ(headless::picture(frame()).height(), 32760);
}

TEST_F(EditorTest, AChosenSkinThatCannotBeOpenedIsGivenUp) {
    addSkin("Night");
    for (const char* const broken : {"<GUI>", "<GUI/>"}) {
        module.write("Night/skin.xml", broken);
        editor::chooseSkin("Night");
        ASSERT_TRUE(openAsWritten());
        ASSERT_FALSE(edit.showsSkin());
        EXPECT_STREQ(viewAs<CTextLabel>(3)->getText(),
                     "The skin \"Night\" cannot be opened. The default skin is next.");
        EXPECT_EQ(state::settings().read("SkinName"), "skin");
        editor::setSkinMissing(false);  // another process
        ASSERT_TRUE(open(kKnob));
        EXPECT_TRUE(edit.showsSkin());
    }
}

TEST_F(EditorTest, ListsAndChoosesSkins) {
    addSkin("Night");
    std::filesystem::create_directories(module.path() + "no skin");
    writeSkin(R"(<background filename="20x40.png"/>)", "Night");
    const std::string selector = R"(<skinselector x="0" y="0" w="90" h="20" style="0"/>)";
    ASSERT_TRUE(open(selector));
    auto* const menu = viewAs<COptionMenu>(0);
    ASSERT_EQ(menu->getNbEntries(), 2);
    const bool nightFirst = menu->getEntry(0)->getTitle() == "Night";
    EXPECT_TRUE(menu->getEntry(nightFirst ? 1 : 0)->getTitle() == "Default Skin");
    EXPECT_EQ(menu->getCurrentIndex(), nightFirst ? 1 : 0);

    const auto notices = [this] {
        int count = 0;
        frame().forEachChild([&count](CView* view) {
            const auto* const display = dynamic_cast<editor::CDisplay*>(view);
            count += display && display->text() == "Please close this windows to load the skin" &&
                     display->getViewSize() == CRect(0, 0, 400, 300);
        });
        return count;
    };
    click(10, 10);
    chooseLine(nightFirst ? 1 : 0);  // choosing the current skin shows the notice, too
    EXPECT_EQ(notices(), 1);
    openAsWritten();
    EXPECT_EQ(notices(), 0);
    click(10, 10);
    chooseLine(nightFirst ? 0 : 1);
    EXPECT_EQ(notices(), 1);
    idle();
    EXPECT_EQ(notices(), 1);
    EXPECT_EQ(state::settings().read("SkinName"), "Night");
    ASSERT_TRUE(openAsWritten());
    EXPECT_EQ(edit.getRect().right, 20);

    for (const char* const gone : {"Gone", "", "no skin"}) {
        state::settings().write("SkinName", gone);
        EXPECT_EQ(editor::findSkins().name, "skin");
        EXPECT_EQ(editor::findSkins().folder(), module.path() + "skin" + platform::kSeparator);
    }
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
    const auto clickHelp = [this] { click(200, 185); };  // low on the centred picture
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

TEST_F(EditorTest, EverySpellingOfAPictureIsThatPicture) {
    const std::string kick = R"(<kick x="1" y="1" id="42" bitmap_handle=")";
    ASSERT_TRUE(open(kick + R"(20X40.PNG"/>)" + kick + R"(.//20x40.png"/>)" + kick +
                     R"(x/./../20x40.Png"/>)"));
    EXPECT_EQ(messages.all, std::vector<RecordedMessage>());
    ASSERT_EQ(frame().getNbViews(), 3u);
    EXPECT_EQ(view(0)->getBackground(), view(1)->getBackground());
    EXPECT_EQ(view(0)->getBackground(), view(2)->getBackground());
}

TEST_F(EditorTest, ThePicturesOfASkinShareOneBudget) {
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

TEST_F(EditorTest, HostileNumbersMakeHarmlessControls) {
    std::string elements;
    for (const char* const number : {"0", "-5", "2147483647", "0-2147483647", "1/0", "0/0"}) {
        const std::string n = number;
        elements += "<knob x=\"" + n + "\" y=\"0\" w=\"" + n + "\" h=\"" + n + "\" id=\"" + n +
                    R"(" stackbmp="1" bitmap_handle="10x10.png" default=")" + n + "\"/>";
        elements += "<slider x=\"0\" y=\"" + n + "\" len=\"" + n + "\" id=\"1\" style=\"" + n +
                    R"(" bitmap_handle="10x10.png"/>)";
        elements +=
            "<vswitch x=\"9\" y=\"9\" id=\"2\" entries=\"" + n + R"(" bitmap_handle="20x40.png"/>)";
        elements += "<vumeter x=\"9\" y=\"9\" id=\"2\" style=\"" + n + "\" leds=\"" + n +
                    R"(" bitmap_on="20x40.png" bitmap_off="10x10.png"/>)";
        elements += "<optionmenu x=\"9\" y=\"9\" w=\"" + n + "\" h=\"" + n +
                    "\" id=\"3\" style=\"" + n + "\" halign=\"" + n + "\" txtface=\"" + n +
                    "\" font=\"" + n + "\"/>";
        elements += "<ViewTaps x=\"9\" y=\"9\" w=\"" + n + "\" h=\"" + n + "\"/>";
        elements += "<PresetsDisplay x=\"9\" y=\"9\" id=\"0\" w=\"" + n + "\" h=\"" + n + "\"/>";
        elements += "<update src=\"" + n + "\" dst=\"" + n + "\"/>";
    }
    ASSERT_TRUE(open(elements));
    for (int y = 0; y < 300; y += 20) {
        for (int x = 0; x < 400; x += 20) {
            headless::press(frame(), CPoint(x, y));
            headless::move(frame(), CPoint(x + 30, y - 7));
            headless::release(frame(), CPoint(x + 30, y - 7));
            press(VirtualKey::Escape);
            headless::wheel(frame(), CPoint(x, y), 1);
        }
        edit.idle();
    }
    for (const float value : instrument.values) EXPECT_TRUE(value >= 0.0f && value <= 1.0f);
}

TEST_F(EditorTest, TenThousandElementsAreBuilt) {
    std::string elements;
    for (int i = 0; i < 10000; ++i) {
        elements += R"(<knob x="1" y="1" w="9" h="9" id=")" + std::to_string(i % 42) + R"("/>)";
    }
    ASSERT_TRUE(open(elements));
    EXPECT_EQ(frame().getNbViews(), 10000u);
    for (int i = 0; i < state::kNumParams; ++i) instrument.setParameter(i, 0.75f);
    idle();
    EXPECT_EQ(viewAs<CControl>(9999)->getValue(), 0.75f);
}

}  // namespace
