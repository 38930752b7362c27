// The editor through the instance's dispatcher, like a host.
#include <gtest/gtest.h>

#include "editor/browser/sound_files.h"
#include "gui/headless.h"
#include "platform/file.h"
#include "tests/plugin/editor_kit.h"
#include "tests/plugin/vst2/own_instance.h"
#include "tests/support/recorded_messages.h"

#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

using VSTGUI::CPoint;
namespace headless = VSTGUI::headless;
using namespace vst2;  // names of keys

constexpr VstInt32 kWheelMessage = 0x73744341;  // 'stCA'
constexpr VstInt32 kTurn = 0x57686565;          // 'Whee'

class HostedEditor : public testing::Test {
  protected:
    bool open() { return plugin_.dispatch(effEditOpen, 0, 0, this) == 1; }
    VSTGUI::CFrame& frame() { return plugin_.frame(); }
    void idle() {
        plugin_.dispatch(effEditIdle);
        plugin_.dispatch(effEditIdle);
    }
    void doubleClickTheProgram() {
        headless::click(frame(), CPoint(70, 85));
        headless::click(frame(), CPoint(70, 85), VSTGUI::kLButton | VSTGUI::kDoubleClick);
    }
    VstIntPtr key(VstInt32 opcode, VstInt32 character, VstIntPtr virt, float modifiers = 0) {
        return plugin_.dispatch(opcode, character, virt, nullptr, modifiers);
    }
    VstIntPtr wheel(float clicks, VstInt32 message = kWheelMessage, VstIntPtr turn = kTurn) {
        return plugin_.synth()->onWheelMessage(message, turn, nullptr, clicks);
    }

    headless::Scope scope_;
    headless::HeldClock clock_;
    InstalledSkin skin_;
    RecordedMessages messages_;
    TestHost host_;
    OwnInstance plugin_{TestHost::callback};
};

TEST_F(HostedEditor, OpensIdlesAndClosesThroughTheDispatcher) {
    EXPECT_TRUE(plugin_->flags & effFlagsHasEditor);
    EXPECT_EQ(plugin_.rect().right, 200);  // before it is first opened
    EXPECT_EQ(plugin_.rect().bottom, 100);
    plugin_.dispatch(effEditIdle);
    plugin_.dispatch(effEditClose);
    EXPECT_EQ(plugin_.dispatch(effEditOpen), 0);  // no parent window
    EXPECT_TRUE(open());
    idle();
    EXPECT_EQ(plugin_.rect().right, 200);
    plugin_.dispatch(effEditClose);
    plugin_.dispatch(effEditIdle);
    EXPECT_TRUE(open());
    EXPECT_EQ(messages_.all.size(), 1u);  // only one, about the bank
    EXPECT_EQ(messages_.all.front().title, "Missing Bank");
    const std::string text = messages_.all.front().text;
    EXPECT_EQ(text.rfind("Missing Bank\n", 0), 0u) << text;
    EXPECT_NE(text.find("default.fxb"), std::string::npos) << text;
    // Destroy the instance while its editor is open.
}

TEST_F(HostedEditor, TellsTheHostOfGesturesAndSizes) {
    ASSERT_EQ(plugin_.dispatch(effSetEditKnobMode, 0, 2), 1);
    ASSERT_TRUE(open());
    idle();
    host_.told();
    headless::press(frame(), CPoint(20, 20));
    headless::move(frame(), CPoint(20, 0));
    headless::release(frame(), CPoint(20, 0));
    EXPECT_EQ(host_.told(), "begin 1, automate 1 = 0.600, end 1, ");
    EXPECT_FLOAT_EQ(plugin_.value(1), 0.6f);

    headless::click(frame(), CPoint(130, 50), VSTGUI::kRButton);
    headless::key(frame(), VSTGUI::VirtualKey::Home);
    for (int i = 0; i < 4; ++i) headless::key(frame(), VSTGUI::VirtualKey::Down);
    headless::key(frame(), VSTGUI::VirtualKey::Return);
    EXPECT_EQ(host_.told(), "size 600 300, ");
    EXPECT_EQ(plugin_.rect().right, 600);
    EXPECT_EQ(plugin_.rect().bottom, 300);
}

TEST_F(HostedEditor, TakesKeysThatTheHostPassesOn) {
    EXPECT_EQ(key(effEditKeyDown, 'A', 0), 0);
    ASSERT_TRUE(open());
    EXPECT_EQ(key(effEditKeyDown, 'A', 0), 0);        // the host's: nothing has the focus
    EXPECT_EQ(plugin_.dispatch(effKeysRequired), 1);  // means no
    doubleClickTheProgram();
    EXPECT_EQ(plugin_.dispatch(effKeysRequired), 0);
    const struct {
        VstInt32 character;
        VstIntPtr virt;
        float modifiers;
    } typed[] = {{'S', 0, MODIFIER_SHIFT}, {'O', 0, 0},    {'x', 0, NAN},
                 {0, VKEY_BACK, 0},        {'l', 0, -1.0}, {' ', VKEY_SPACE, 0},
                 {0, VKEY_NUMPAD9 - 2, 0}, {'_', 0, 0}};
    for (const auto& row : typed) {
        EXPECT_EQ(key(effEditKeyDown, row.character, row.virt, row.modifiers), 1);
        EXPECT_EQ(key(effEditKeyUp, row.character, row.virt, row.modifiers), 1);
    }
    EXPECT_EQ(key(effEditKeyDown, 0, VKEY_RETURN), 1);
    EXPECT_EQ(plugin_.dispatch(effKeysRequired), 1);
    EXPECT_EQ(plugin_.text(effGetProgramName), "Sol 7_");

    headless::click(frame(), CPoint(20, 39));
    host_.told();
    EXPECT_EQ(key(effEditKeyDown, 0, VKEY_UP), 1);
    EXPECT_EQ(host_.told().substr(0, 22), "begin 1, automate 1 = ");
    EXPECT_EQ(key(effEditKeyDown, ' ', VKEY_SPACE), 0);  // the host keeps its transport key
}

TEST_F(HostedEditor, TurnsTheControlUnderThePointerByTheHostsWheel) {
    EXPECT_EQ(wheel(1), 0);
    ASSERT_TRUE(open());
    idle();
    EXPECT_EQ(wheel(1), 0);
    headless::move(frame(), CPoint(20, 20), 0);
    host_.told();
    EXPECT_EQ(wheel(1, kTurn, kWheelMessage), 0);
    EXPECT_EQ(wheel(1, kWheelMessage, kTurn + (VstIntPtr{1} << 32)), 0);
    EXPECT_EQ(wheel(2), 1);
    EXPECT_EQ(host_.told(), "begin 1, automate 1 = 0.700, ");
    EXPECT_EQ(wheel(-1), 1);
    clock_.run(frame(), 600);
    EXPECT_EQ(host_.told(), "automate 1 = 0.600, end 1, ");
    EXPECT_EQ(wheel(NAN), 0);
    headless::leave(frame());
    EXPECT_EQ(wheel(1), 0);
    EXPECT_EQ(host_.told(), "");
}

// The browser's keys, typed as a host passes them on.
TEST_F(HostedEditor, CopiesSavesAndLoadsSoundsInTheBrowser) {
    editor::writePng(skin_.folder().path() + "skin/bg.png", VSTGUI::PixelBuffer(640, 400));
    const auto ctrl = [this](char letter, int shift = 0) {
        const auto modifiers = static_cast<float>(MODIFIER_CONTROL | shift);
        EXPECT_EQ(key(effEditKeyDown, letter, 0, modifiers), 1) << letter;
    };
    const auto press = [this](VstIntPtr virt) { EXPECT_EQ(key(effEditKeyDown, 0, virt), 1); };
    const auto state = [this] {
        return std::to_string(plugin_.dispatch(effGetProgram)) + ' ' +
               plugin_.text(effGetProgramName) + ' ' +
               std::to_string(plugin_.value(1)).substr(0, 4);
    };
    for (const char* const name : {"Two", "One"}) {
        plugin_.dispatch(effSetProgram, 0, *name == 'O' ? 0 : 1);
        plugin_.dispatch(effSetProgramName, 0, 0, const_cast<char*>(name));
    }
    plugin_.set(1, 0.25f);
    ASSERT_TRUE(open());
    messages_.all.clear();
    idle();
    ctrl('f');
    ctrl('c');
    press(VKEY_DOWN);
    EXPECT_EQ(state(), "1 Two 0.50");
    ctrl('v');
    EXPECT_EQ(state(), "1 One 0.25");
    ctrl('z');
    EXPECT_EQ(state(), "1 Two 0.50");
    ctrl('y');
    ctrl('r');  // back to what was loaded, "Init"
    EXPECT_EQ(state(), "1 Init 0.50");

    press(VKEY_HOME);
    ctrl('s');
    press(VKEY_RETURN);  // saves One.fxp and selects it
    press(VKEY_RETURN);
    EXPECT_EQ(state(), "0 One 0.25");
    plugin_.set(1, 0.75f);
    press(VKEY_RETURN);
    EXPECT_EQ(state(), "0 One 0.25");
    ctrl('z');
    EXPECT_EQ(state(), "0 One 0.75");

    const std::string file = *editor::libraryFolder() + "One.fxp";
    const auto bytes = platform::readFile(file, 1 << 20).value();
    platform::writeFile(file, bytes.substr(0, 100));
    press(VKEY_RETURN);
    platform::writeFile(file, bytes.substr(0, 4) + std::string("\0\0\0\xF5", 4) +
                                  bytes.substr(8, 48) + std::string("\0\0\0\xC1", 4) +
                                  bytes.substr(60) + 'x');
    press(VKEY_RETURN);
    EXPECT_EQ(state(), "0 One 0.75");
    ASSERT_EQ(messages_.all.size(), 2u);
    EXPECT_EQ(messages_.all[0].text, file + " is damaged: it promises 244 bytes and brings 92.");
    EXPECT_EQ(messages_.all[1].text, "Can't load preset, wrong file size!");

    ctrl('s', MODIFIER_SHIFT);
    press(VKEY_RETURN);
    plugin_.set(1, 0.5f);
    plugin_.dispatch(effSetProgram, 0, 1);
    press(VKEY_RETURN);
    EXPECT_EQ(state(), "0 One 0.75");
    ctrl('z');
    EXPECT_EQ(state(), "1 Init 0.50");
    EXPECT_EQ(plugin_.text(effGetProgramNameIndexed), "One");
}

#ifndef _WIN32
// Opening a pipe would wait for its other end.
TEST_F(HostedEditor, WaitsForNoPipeInPlaceOfAFile) {
    const std::string data = *platform::applicationDataFolder();
    std::filesystem::create_directories(data + "/Tembrilon/Quarzel Strings");
    std::filesystem::create_directories(data + "/Quarzel Studio 9/Quarzel Strings");
    alarm(20);  // ends the test
    for (const std::string& path :
         {skin_.folder().path("skin/bg.png"), skin_.folder().path("skin/skin.xml"),
          skin_.folder().path("default.fxb"), skin_.folder().path("Pluginccmap.bin"),
          data + "/Quarzel Studio 9/Quarzel Strings/Pluginccmap.bin",
          data + "/Tembrilon/Quarzel Strings/settings"}) {
        SCOPED_TRACE(path);
        std::filesystem::remove(path);
        ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
        OwnInstance plugin(TestHost::callback);
        plugin.dispatch(effEditOpen, 0, 0, this);
        plugin.synth()->instrument().learnSlot().arm(1);
        plugin.play(0xB0, 20, 127);
        plugin.dispatch(effEditIdle);
        plugin.dispatch(effEditClose);
        EXPECT_TRUE(plugin.sounds());
    }
    alarm(0);
}
#endif

}  // namespace
