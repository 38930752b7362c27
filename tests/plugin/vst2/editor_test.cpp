// The editor through the instance's dispatcher, like a host.
#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "editor/skin_missing.h"
#include "editor/skin_preview.h"
#include "gui/headless.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "plugin/vst2/editor_adapter.h"
#include "plugin/vst2/vst_synth.h"
#include "tests/plugin/vst2/midi_block.h"
#include "tests/plugin/vst2/test_host.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

using VSTGUI::CPoint;
namespace headless = VSTGUI::headless;
using namespace vst2;  // names of keys

// Makes a library folder with a skin of one linear knob ("Pan") and a note display.
class HostedEditor : public testing::Test {
  protected:
    HostedEditor() {
        editor::setSkinMissing(false);
        std::filesystem::create_directories(module_.path() + "skin");
        VSTGUI::PixelBuffer ground(300, 200);
        editor::writePng(module_.path() + "skin/bg.png", ground);
        module_.write("skin/skin.xml", R"(<GUI><background filename="bg.png"/>
            <knob x="0" y="0" w="40" h="40" id="1"/>
            <NoteDisplay x="50" y="0" w="60" h="20" id="0"/>
            <PresetsDisplay x="50" y="50" w="200" h="20" id="0"/></GUI>)");
        synth_ = std::make_unique<vst2::VstSynth>(TestHost::callback);
        record_ = synth_->getAeffect();
    }
    ~HostedEditor() override {
        synth_.reset();
        editor::setSkinMissing(false);
    }

    VstIntPtr dispatch(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr) {
        return record_->dispatcher(record_, opcode, 0, value, ptr, 0.0f);
    }
    VstIntPtr open() { return dispatch(effEditOpen, 0, this); }
    ERect rect() {
        ERect* rect = nullptr;
        EXPECT_EQ(dispatch(effEditGetRect, 0, &rect), 1);
        return rect ? *rect : ERect{};
    }
    VSTGUI::CFrame& frame() {
        return *static_cast<vst2::EditorAdapter*>(synth_->getEditor())->editor().getFrame();
    }
    void idle() {
        dispatch(effEditIdle);
        dispatch(effEditIdle);
    }
    void send(int status, int data1, int data2) { playMessage(*synth_, status, data1, data2); }
    // The automation calls since the last call.
    std::string told() {
        std::string told;
        for (const TestHost::Call& call : host_.calls) {
            const char* const name = call.opcode == audioMasterBeginEdit    ? "begin "
                                     : call.opcode == audioMasterAutomate   ? "automate "
                                     : call.opcode == audioMasterEndEdit    ? "end "
                                     : call.opcode == audioMasterSizeWindow ? "size "
                                                                            : nullptr;
            if (!name) continue;
            told += name + std::to_string(call.index);
            if (call.opcode == audioMasterAutomate) told += '=' + state::valueText(call.opt);
            if (call.opcode == audioMasterSizeWindow) told += 'x' + std::to_string(call.value);
            told += ' ';
        }
        host_.calls.clear();
        return told;
    }

    headless::Scope scope_;
    headless::HeldClock clock_;
    TemporaryFolder module_;
    TemporaryFolder applicationData_;
    platform::ScopedFolders folders_{module_.path(), applicationData_.path()};
    platform::ScopedSettings settings_;
    RecordedMessages messages_;
    TestHost host_;
    std::unique_ptr<vst2::VstSynth> synth_;
    AEffect* record_ = nullptr;
};

TEST_F(HostedEditor, OpensIdlesAndClosesThroughTheDispatcher) {
    EXPECT_TRUE(record_->flags & effFlagsHasEditor);
    EXPECT_EQ(rect().right, 300);  // before it is first opened
    EXPECT_EQ(rect().bottom, 200);
    dispatch(effEditIdle);
    dispatch(effEditClose);
    EXPECT_EQ(dispatch(effEditOpen), 0);  // no parent window
    EXPECT_EQ(open(), 1);
    idle();
    EXPECT_EQ(rect().right, 300);
    dispatch(effEditClose);
    dispatch(effEditIdle);
    EXPECT_EQ(open(), 1);
    EXPECT_EQ(messages_.all.size(), 1u);  // only one, about the bank
    EXPECT_EQ(messages_.all.front().title, "Missing Bank");
    EXPECT_EQ(messages_.all.front().text, "Missing Bank");
    // Destroy the instance while its editor is open.
}

TEST_F(HostedEditor, TellsTheHostOfEveryGesture) {
    ASSERT_EQ(record_->dispatcher(record_, effSetEditKnobMode, 0, 2, nullptr, 0.0f), 1);
    EXPECT_EQ(record_->dispatcher(record_, effSetEditKnobMode, 0, 3, nullptr, 0.0f), 0);
    ASSERT_EQ(open(), 1);
    idle();
    told();
    headless::press(frame(), CPoint(20, 20));
    headless::move(frame(), CPoint(20, 0));
    headless::release(frame(), CPoint(20, 0));
    EXPECT_EQ(told(), "begin 1 automate 1=0.600 end 1 ");
    EXPECT_FLOAT_EQ(record_->getParameter(record_, 1), 0.6f);
}

TEST_F(HostedEditor, ShowsNotesAndRenamesPrograms) {
    ASSERT_EQ(open(), 1);
    const auto look = [this] {
        clock_.run(frame(), 100);
        return headless::hashOf(headless::picture(frame()));
    };
    const auto off = look();
    send(0x90, 60, 100);
    EXPECT_NE(look(), off);
    send(0x80, 60, 0);
    EXPECT_EQ(look(), off);

    headless::click(frame(), CPoint(150, 60));
    headless::click(frame(), CPoint(150, 60), VSTGUI::kLButton | VSTGUI::kDoubleClick);
    headless::type(frame(), "Solina");
    headless::key(frame(), VSTGUI::VirtualKey::Return);
    char name[64] = {};
    dispatch(effGetProgramName, 0, name);
    EXPECT_STREQ(name, "Solina");
}

TEST_F(HostedEditor, TakesKeysThatTheHostPassesOn) {
    const auto key = [this](VstInt32 opcode, VstInt32 character, VstIntPtr virt, float modifiers) {
        return record_->dispatcher(record_, opcode, character, virt, nullptr, modifiers);
    };
    EXPECT_EQ(key(effEditKeyDown, 'A', 0, 0), 0);
    ASSERT_EQ(open(), 1);
    EXPECT_EQ(key(effEditKeyDown, 'A', 0, 0), 0);  // the host's: nothing has the focus
    EXPECT_EQ(dispatch(effKeysRequired), 1);       // means no
    headless::click(frame(), CPoint(150, 60));
    headless::click(frame(), CPoint(150, 60), VSTGUI::kLButton | VSTGUI::kDoubleClick);
    EXPECT_EQ(dispatch(effKeysRequired), 0);
    const struct {
        VstInt32 character;
        VstIntPtr virt;
        float modifiers;
    } typed[] = {{'S', 0, MODIFIER_SHIFT}, {'O', 0, 0}, {'x', 0, 0},
                 {0, VKEY_BACK, 0},        {'l', 0, 0}, {' ', VKEY_SPACE, 0},
                 {0, VKEY_NUMPAD9 - 2, 0}, {'_', 0, 0}};
    for (const auto& row : typed) {
        EXPECT_EQ(key(effEditKeyDown, row.character, row.virt, row.modifiers), 1);
        EXPECT_EQ(key(effEditKeyUp, row.character, row.virt, row.modifiers), 1);
    }
    EXPECT_EQ(key(effEditKeyDown, 0, VKEY_RETURN, 0), 1);
    EXPECT_EQ(dispatch(effKeysRequired), 1);
    char name[64] = {};
    dispatch(effGetProgramName, 0, name);
    EXPECT_STREQ(name, "Sol 7_");

    headless::click(frame(), CPoint(20, 39));
    told();
    EXPECT_EQ(key(effEditKeyDown, 0, VKEY_UP, 0), 1);
    EXPECT_EQ(told().substr(0, 19), "begin 1 automate 1=");
    EXPECT_EQ(key(effEditKeyDown, ' ', VKEY_SPACE, 0), 0);  // the host keeps its transport key
}

TEST_F(HostedEditor, TurnsTheControlUnderThePointerByTheHostsWheel) {
    const auto wheel = [this](float clicks) {
        return synth_->onWheelMessage(platform::fourCharCode("stCA"),
                                      platform::fourCharCode("Whee"), nullptr, clicks);
    };
    EXPECT_EQ(wheel(1), 0);
    ASSERT_EQ(open(), 1);
    idle();
    EXPECT_EQ(wheel(1), 0);
    headless::move(frame(), CPoint(20, 20), 0);
    told();
    EXPECT_EQ(wheel(2), 1);
    EXPECT_EQ(told(), "begin 1 automate 1=0.700 ");
    EXPECT_EQ(wheel(-1), 1);
    clock_.run(frame(), 600);
    EXPECT_EQ(told(), "automate 1=0.600 end 1 ");
    EXPECT_EQ(wheel(NAN), 0);
    headless::leave(frame());
    EXPECT_EQ(wheel(1), 0);
    EXPECT_EQ(told(), "");
}

TEST_F(HostedEditor, AsksTheHostForTheZoomedSize) {
    ASSERT_EQ(open(), 1);
    idle();
    told();
    headless::click(frame(), CPoint(200, 150), VSTGUI::kRButton);
    headless::key(frame(), VSTGUI::VirtualKey::End);
    headless::key(frame(), VSTGUI::VirtualKey::Return);
    EXPECT_EQ(told(), "size 900x600 ");
    EXPECT_EQ(rect().right, 900);
    EXPECT_EQ(rect().bottom, 600);
}

}  // namespace
