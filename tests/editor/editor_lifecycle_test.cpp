// Opening, changes in both directions, learning, the read-out, skins and zoom.

#include "editor/editor_zoom.h"
#include "platform/file.h"
#include "platform/product.h"
#include "state/controller_map.h"
#include "state/data_folder.h"
#include "tests/editor/editor_rig.h"

namespace {

using namespace VSTGUI;

constexpr const char* kKnob = R"(<knob x="0" y="0" w="40" h="40" id="1"/>)";

TEST_F(EditorTest, KnowsItsSizeBeforeItIsOpened) {
    writeSkin(R"(<knob/><background filename="bg.png"/>)");
    EXPECT_EQ(edit.getRect().right, 400);
    EXPECT_EQ(edit.getRect().bottom, 300);
    EXPECT_EQ(edit.getRect().left, 0);
    EXPECT_TRUE(messages.all.empty());  // faults are reported on opening
    EXPECT_FALSE(edit.isOpen());
    state::settings().write("Zoom", "150");
    EXPECT_EQ(edit.getRect().right, 600);
    EXPECT_EQ(edit.getRect().bottom, 450);
    editor::setSkinMissing(true);
    EXPECT_EQ(edit.getRect().right, 600);
    EXPECT_EQ(edit.getRect().bottom, 200);
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

TEST_F(EditorTest, GesturesReachTheHostAsOneEdit) {
    edit.setKnobMode(kLinearMode);
    ASSERT_TRUE(open(std::string(kKnob) +
                     R"(<onoff x="50" y="0" id="17" bitmap_handle="20x40.png"/>
                        <kick x="80" y="0" id="18" bitmap_handle="20x40.png"/>)"));
    headless::press(frame(), {20, 20});
    headless::move(frame(), {20, 0});
    headless::move(frame(), {20, -20});
    headless::release(frame(), {20, -20});
    EXPECT_EQ(instrument.calls(), "begin 1; automate 1 0.600; automate 1 0.700; end 1");
    click(60, 10);
    EXPECT_EQ(instrument.calls(), "begin 17; automate 17 0.000; end 17");
    click(90, 10);
    EXPECT_EQ(instrument.calls(), "begin 18; automate 18 1.000; automate 18 0.000; end 18");
    click(20, 20, kLButton | kControl);
    EXPECT_EQ(instrument.calls(), "begin 1; automate 1 0.500; end 1");
}

TEST_F(EditorTest, AClickWithControlResetsReadOutsAndSparesMenus) {
    constexpr int kVolume = 0;  // 0.3
    ASSERT_TRUE(open(R"(<display x="0" y="0" w="60" h="20" id="0" style="0"/>
                        <autodisp x="0" y="30" w="60" h="20" id="0" link="0" style="0"/>
                        <optionmenu x="0" y="60" w="60" h="20" id="6" style="0"/>
                        <skinselector x="0" y="90" w="60" h="20" style="0"/>)"));
    for (const int y : {5, 35}) {
        instrument.setParameter(kVolume, 0.8f);
        instrument.calls();
        idle();
        click(5, y, kLButton | kControl);
        EXPECT_EQ(instrument.calls(), "begin 0; automate 0 0.300; end 0");
    }
    for (const int y : {65, 95}) {
        click(5, y, kLButton | kControl);
        EXPECT_EQ(instrument.calls(), "");
        EXPECT_EQ(frame().getModalView(), nullptr);
    }
    EXPECT_FALSE(state::settings().read("SkinName"));
}

TEST_F(EditorTest, MenusSendTheirIndexAsAShareOfTheLast) {
    ASSERT_TRUE(open(R"(<optionmenu x="0" y="0" w="80" h="20" id="6" style="0"/>
        <optionmenu x="100" y="0" w="80" h="20" id="5" style="0">
        <list><entry>only</entry></list></optionmenu>)"));
    click(10, 10);
    chooseLine(1);
    EXPECT_EQ(instrument.calls(), "begin 6; automate 6 0.500; end 6");
    click(110, 10);
    chooseLine(0);
    EXPECT_EQ(instrument.calls(), "begin 5; end 5");  // a menu of one item sends no value
}

TEST_F(EditorTest, ControlsFollowTheInstrument) {
    ASSERT_TRUE(open(std::string(kKnob) +
                     R"(<display x="50" y="0" w="60" h="20" id="1" style="0"/>
                        <optionmenu x="120" y="0" w="80" h="20" id="6" style="0"/>
                        <autodisp x="50" y="30" w="60" h="20" id="300" link="1" style="0"/>
                        <autodisp x="50" y="60" w="60" h="20" id="301" link="1" style="0"/>
                        <update src="1" dst="301"/>)"));
    const auto picture = [this](int y) {
        std::uint64_t sum = 0;
        for (int x = 50; x < 110; ++x) {
            for (int row = y; row < y + 20; ++row) sum = sum * 31 + pixel(x, row).red;
        }
        return sum;
    };
    const auto linked = picture(30);
    EXPECT_EQ(picture(60), linked);
    instrument.setParameter(1, 0.25f);
    instrument.setParameter(6, 1.0f);
    idle();
    EXPECT_EQ(viewAs<CControl>(0)->getValue(), 0.25f);
    EXPECT_EQ(viewAs<editor::CDisplay>(1)->text(), "0.250");
    EXPECT_EQ(viewAs<COptionMenu>(2)->getCurrentIndex(), 2);
    EXPECT_EQ(picture(30), linked);  // nothing marks it
    EXPECT_NE(picture(60), linked);

    // A button is lit if the engine counts the value as on.
    ASSERT_TRUE(
        open(std::string(kKnob) + R"(<onoff x="50" y="0" id="17" bitmap_handle="20x40.png"/>)"));
    for (const auto& [value, shown] : {std::pair(0.5f, 0.0f), {0.51f, 1.0f}, {1.0f, 1.0f}}) {
        instrument.setParameter(17, value);
        idle();
        EXPECT_EQ(viewAs<CControl>(1)->getValue(), shown);
    }

    // A control does not move while it is dragged. It follows afterwards.
    headless::press(frame(), {20, 20});
    instrument.setParameter(1, 1.0f);
    idle();
    EXPECT_EQ(viewAs<CControl>(0)->getValue(), 0.25f);
    headless::release(frame(), {20, 20});
    idle();
    EXPECT_EQ(viewAs<CControl>(0)->getValue(), 1.0f);
}

TEST_F(EditorTest, ReadOutSpeaksOfTheControlUnderThePointer) {
    ASSERT_TRUE(open(std::string(kKnob) + R"(<anydisp x="0" y="60" w="90" h="20" style="0"/>
        <knob x="100" y="0" w="40" h="40" id="1048577"/>
        <knob x="150" y="0" w="40" h="40" id="77"/>)"));
    const auto said = [this] {
        edit.idle();
        return viewAs<editor::CDisplay>(1)->text();
    };
    EXPECT_EQ(said(), "Parameter Value");
    headless::move(frame(), {20, 20}, 0);
    EXPECT_EQ(said(), "Pan: 0.500 x");
    instrument.setParameter(1, 0.25f);
    EXPECT_EQ(said(), "Pan: 0.250 x");
    headless::move(frame(), {60, 20}, 0);
    EXPECT_EQ(said(), "Parameter Value");
    headless::move(frame(), {120, 20}, 0);  // a learn tag
    EXPECT_EQ(said(), "Pan: 0.250 x");
    headless::move(frame(), {170, 20}, 0);  // no parameter
    EXPECT_EQ(said(), "Parameter Value");
    headless::press(frame(), {20, 20});
    headless::move(frame(), {300, 200});  // the dragged control stays
    EXPECT_EQ(said().substr(0, 4), "Pan:");
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

TEST_F(EditorTest, EveryParameterControlLearns) {
    ASSERT_TRUE(open(R"(<slider x="0" y="0" len="100" id="1" style="1" bitmap_handle="10x10.png"/>
        <knob x="0" y="20" w="32" h="32" id="2" stackbmp="y" bitmap_handle="32x3200.png"/>
        <onoff x="0" y="60" id="3" bitmap_handle="20x40.png"/>
        <kick x="0" y="90" id="4" bitmap_handle="20x40.png"/>
        <vswitch x="0" y="120" id="5" entries="2" bitmap_handle="20x40.png"/>
        <hswitch x="0" y="150" id="7" entries="2" bitmap_handle="20x40.png"/>
        <optionmenu x="0" y="180" w="80" h="20" id="6" style="0"/>)"));
    const CPoint places[] = {{5, 5}, {5, 25}, {5, 65}, {5, 95}, {5, 125}, {5, 155}, {5, 185}};
    const int parameters[] = {1, 2, 3, 4, 5, 7, 6};
    for (std::size_t i = 0; i < std::size(parameters); ++i) {
        click(places[i].x, places[i].y, kRButton);
        chooseLine(0);
        EXPECT_EQ(instrument.slot.take(), parameters[i]);
    }
    EXPECT_EQ(instrument.calls(), "");
}

TEST_F(EditorTest, TheGroundAnswersARightClickWithTheZoomSteps) {
    ASSERT_TRUE(open(kKnob));
    click(300, 200);
    EXPECT_EQ(frame().getModalView(), nullptr);
    click(300, 200, kRButton);
    ASSERT_NE(frame().getModalView(), nullptr);
    chooseLine(3);
    EXPECT_EQ(instrument.calls(), "size 800 600");
    EXPECT_EQ(edit.getRect().right, 800);
    EXPECT_EQ(headless::picture(frame()).width(), 800);
    EXPECT_EQ(state::settings().read("Zoom"), "200");
    click(40, 40, kRButton);  // on the knob, in the window's pixels
    chooseLine(0);
    EXPECT_EQ(instrument.slot.take(), 1);

    openAsWritten();
    EXPECT_EQ(headless::picture(frame()).width(), 800);
    for (const char* const nonsense : {"", "0", "101", "-100", "200 %", "999999999999"}) {
        state::settings().write("Zoom", nonsense);
        EXPECT_EQ(editor::readZoom(), 100) << nonsense;
    }
}

TEST_F(EditorTest, NoZoomTakesTheWindowBeyondItsBounds) {
    EXPECT_EQ(editor::boundedZoom(3, {1930, 1930}), 3);
    EXPECT_EQ(editor::boundedZoom(3, {4096, 2048}), 2);
    EXPECT_EQ(editor::boundedZoom(2, {8192, 8192}), 1);
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

    // The user's own skins come last, and those beside the library hide theirs.
    const std::string own =
        *state::findDataFolder(platform::kProductName) + "Skins" + platform::kSeparator;
    for (const char* const name : {"Night", "Own"}) {
        std::filesystem::create_directories(own + name);
        platform::writeFile(own + name + platform::kSeparator + "skin.xml", "");
    }
    EXPECT_EQ(editor::findSkins().folder(), module.path() + "Night" + platform::kSeparator);
    EXPECT_EQ(editor::findSkins().installed.size(), 3u);
    editor::chooseSkin("Own");
    EXPECT_EQ(editor::findSkins().folder(), own + "Own" + platform::kSeparator);
    EXPECT_EQ(editor::findSkins().selected(), 2);
    for (const char* const gone : {"Gone", "", "no skin"}) {
        state::settings().write("SkinName", gone);
        EXPECT_EQ(editor::findSkins().name, "skin");
        EXPECT_EQ(editor::findSkins().folder(), module.path() + "skin" + platform::kSeparator);
    }
}

TEST_F(EditorTest, PresetSwitchesSendTheirValuesUnautomated) {
    ASSERT_TRUE(open(R"(<onoff x="0" y="0" id="1002" bitmap_handle="20x40.png"/>
        <optionmenu x="50" y="0" w="80" h="20" id="1003" style="0"><list><entry>dry</entry>
        <entry>room</entry><entry>turn</entry><entry>both</entry></list></optionmenu>
        <knob x="150" y="0" w="40" h="40" id="26"/>)"));
    click(10, 10);
    EXPECT_EQ(instrument.calls(), "set 26 1.000");
    click(10, 10);
    EXPECT_EQ(instrument.calls(), "set 26 0.000");
    idle();
    EXPECT_EQ(viewAs<CControl>(2)->getValue(), 0.0f);
    click(60, 10);
    chooseLine(2);
    EXPECT_EQ(instrument.calls(), "set 37 0.000; set 32 1.000");
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

}  // namespace
