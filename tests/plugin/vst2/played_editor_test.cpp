// The shipped skins in a host's window, used with the pointer.
#include <chrono>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "editor/skin_missing.h"
#include "editor/tags.h"
#include "editor/views/text_display.h"
#include "gui/headless.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/product.h"
#include "platform/settings_store.h"
#include "plugin/vst2/editor_adapter.h"
#include "state/data_folder.h"
#include "tests/plugin/vst2/midi_block.h"
#include "tests/plugin/vst2/test_host.h"
#include "tests/support/host_window.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace VSTGUI;

constexpr int kPan = state::kPan;

class PlayedEditor : public testing::Test {
  protected:
    void SetUp() override {
        if (!window_.isOpen()) GTEST_SKIP() << "needs a desktop; on Linux Xvfb and xdotool";
        editor::setSkinMissing(false);
        makeSynth();
    }
    ~PlayedEditor() override {
        synth_.reset();
        EXPECT_TRUE(messages_.all.empty()) << messages_.all.front();
    }

    void makeSynth() {
        synth_.reset();
        synth_ = std::make_unique<vst2::VstSynth>(TestHost::callback);
        record_ = synth_->getAeffect();
    }
    VstIntPtr dispatch(VstInt32 opcode, VstIntPtr value = 0, void* ptr = nullptr) {
        return record_->dispatcher(record_, opcode, 0, value, ptr, 0.0f);
    }
    bool open() {
        return dispatch(effEditOpen, 0, window_.parent()) == 1 &&
               waitFor([this] { return showsItsPicture(); });
    }
    bool openWith(const std::string& skin) {
        state::settings().write(state::kSkinNameSetting, skin);
        return open();
    }
    // Runs the host's loop until the condition holds. Returns false on timeout.
    bool waitFor(const std::function<bool()>& condition) {
        using namespace std::chrono;
        const auto end = steady_clock::now() + seconds(20);
        while (steady_clock::now() < end) {
            dispatch(effEditIdle);
            window_.serve();
            if (condition()) return true;
            std::this_thread::sleep_for(milliseconds(2));
        }
        return false;
    }
    void idle() {
        dispatch(effEditIdle);
        dispatch(effEditIdle);
    }

    CFrame& frame() {
        return *static_cast<vst2::EditorAdapter*>(synth_->getEditor())->editor().getFrame();
    }
    // Compares the window with the frame's pixels at positions spread over it.
    bool showsItsPicture() {
        const PixelBuffer& wanted = headless::picture(frame());
        for (int y = 7; y < wanted.height(); y += 61)
            for (int x = 5; x < wanted.width(); x += 67)
                if (window_.pixel(x, y) != (wanted.at(x, y) & 0xFFFFFF)) return false;
        return true;
    }
    // The control of each parameter.
    std::map<int, CControl*> controls() {
        std::map<int, CControl*> found;
        frame().forEachChild([&found](CView* view) {
            auto* const control = dynamic_cast<CControl*>(view);
            const bool isDisplay =
                dynamic_cast<CParamDisplay*>(view) && !dynamic_cast<COptionMenu*>(view);
            if (control && !isDisplay && state::isParameter(control->getTag()))
                found[control->getTag()] = control;
        });
        return found;
    }
    CControl* controlOf(int tag) {
        CControl* found = nullptr;
        frame().forEachChild([&](CView* view) {
            auto* const control = dynamic_cast<CControl*>(view);
            if (control && control->getTag() == tag && !found) found = control;
        });
        return found;
    }

    static CPoint within(const CView& view, double share) {
        const CRect area = view.getViewSize();
        return {area.left + area.getWidth() * share, area.top + area.getHeight() * share};
    }
    void click(const CPoint& where, HostWindow::Button button = HostWindow::kLeft) {
        window_.click(static_cast<int>(where.x), static_cast<int>(where.y), button);
    }
    // Opens the menu under the point and chooses one of its lines with the pointer.
    void choose(const CPoint& where, int line, int lines,
                HostWindow::Button button = HostWindow::kLeft) {
        click(where, button);
        ASSERT_TRUE(waitFor([this] { return frame().getModalView() != nullptr; }));
        const CRect menu = frame().getModalView()->getViewSize();
        click({menu.getCenter().x, menu.top + menu.getHeight() * (line + 0.5) / lines});
        ASSERT_TRUE(waitFor([this] { return frame().getModalView() == nullptr; }));
    }
    // Drags down and right, which moves every kind of control away from its middle.
    void play(CControl& control) {
        if (auto* const menu = dynamic_cast<COptionMenu*>(&control))
            return choose(within(control, 0.5), menu->getNbEntries() - 1, menu->getNbEntries());
        const CPoint from = within(control, 0.25);
        const CPoint to = within(control, 0.75);
        EXPECT_EQ(frame().getViewAt(from, GetViewOptions().deep()), &control);
        window_.drag(static_cast<int>(from.x), static_cast<int>(from.y), static_cast<int>(to.x),
                     static_cast<int>(to.y));
    }
    // The gesture as reported to the host, with only the last of consecutive automations.
    std::string told() {
        std::string told;
        for (const TestHost::Call& call : host_.calls) {
            const std::string name = call.opcode == audioMasterBeginEdit  ? "begin "
                                     : call.opcode == audioMasterAutomate ? "automate "
                                     : call.opcode == audioMasterEndEdit  ? "end "
                                                                          : "";
            if (name.empty()) continue;
            const std::string line = name + std::to_string(call.index) + ' ';
            const bool again = call.opcode == audioMasterAutomate && told.size() >= line.size() &&
                               told.compare(told.size() - line.size(), line.size(), line) == 0;
            if (!again) told += line;
        }
        return told;
    }
    void expectControlsToShowTheInstrument() {
        for (const auto& [parameter, control] : controls()) {
            SCOPED_TRACE(parameter);
            const float value = record_->getParameter(record_, parameter);
            if (auto* const menu = dynamic_cast<COptionMenu*>(control)) {
                const int last = menu->getNbEntries() - 1;
                EXPECT_EQ(menu->getCurrentIndex(), std::lround(value * static_cast<float>(last)));
            } else if (dynamic_cast<COnOffButton*>(control)) {
                EXPECT_EQ(control->getValue(), value > 0.5f ? 1.0f : 0.0f);
            } else {
                EXPECT_EQ(control->getValue(), value);
            }
        }
    }
    void sendController(int controller, int value) {
        playMessage(*synth_, 0xB0, controller, value);
    }

    HostWindow window_{1280, 800};
    TemporaryFolder applicationData_;
    platform::ScopedFolders folders_{QUARZEL_DELIVERED, applicationData_.path()};
    platform::ScopedSettings settings_;
    RecordedMessages messages_;
    TestHost host_;
    std::unique_ptr<vst2::VstSynth> synth_;
    AEffect* record_ = nullptr;
};

TEST_F(PlayedEditor, EveryParameterIsReachedByThePointer) {
    for (const char* const skin : {"skin", "Night"}) {
        SCOPED_TRACE(skin);
        ASSERT_TRUE(openWith(skin));
        for (int i = 0; i < state::kNumParams; ++i) record_->setParameter(record_, i, 0.5f);
        idle();
        const auto found = controls();
        EXPECT_EQ(found.size(), std::size_t{state::kNumParams});
        for (const auto& [parameter, control] : found) {
            SCOPED_TRACE(parameter);
            host_.calls.clear();
            play(*control);
            const auto ended = [this] {
                return !host_.calls.empty() && host_.calls.back().opcode == audioMasterEndEdit;
            };
            EXPECT_TRUE(waitFor(ended));
            const std::string number = std::to_string(parameter) + ' ';
            EXPECT_EQ(told(), "begin " + number + "automate " + number + "end " + number);
            EXPECT_NE(record_->getParameter(record_, parameter), 0.5f);
        }
        EXPECT_TRUE(waitFor([this] { return showsItsPicture(); }));
        expectControlsToShowTheInstrument();
        dispatch(effEditClose);
    }
}

TEST_F(PlayedEditor, EveryControlFollowsAutomationAndPrograms) {
    for (const char* const skin : {"skin", "Night"}) {
        SCOPED_TRACE(skin);
        ASSERT_TRUE(openWith(skin));
        host_.calls.clear();
        dispatch(effSetProgram, 7);
        for (int i = 0; i < state::kNumParams; ++i)
            record_->setParameter(record_, i, static_cast<float>(i + 1) / 43.0f);
        idle();
        expectControlsToShowTheInstrument();
        EXPECT_EQ(controlOf(state::kVolume)->getValue(), 1.0f / 43.0f);
        EXPECT_TRUE(waitFor([this] { return showsItsPicture(); }));
        dispatch(effSetProgram, 3);
        idle();
        expectControlsToShowTheInstrument();
        EXPECT_NE(controlOf(state::kVolume)->getValue(), 1.0f / 43.0f);
        EXPECT_EQ(told(), "");
        EXPECT_TRUE(waitFor([this] { return showsItsPicture(); }));
        dispatch(effEditClose);
    }
}

TEST_F(PlayedEditor, LearnsAControllerForGoodAndForgetsItForGood) {
    constexpr int kController = 74;
    const auto kept = [] {
        const auto file = platform::readFile(
            *state::findDataFolder(platform::kProductName) + "Pluginccmap.bin", 1000);
        return file ? file->substr(4 * kPan, 4) : "no file";
    };
    const auto knobIs = [this](float value) {
        return waitFor([&] { return controlOf(kPan)->getValue() == value; });
    };
    ASSERT_TRUE(open());
    choose(within(*controlOf(kPan), 0.5), 0, 1, HostWindow::kRight);
    sendController(kController, 127);
    EXPECT_EQ(record_->getParameter(record_, kPan),
              1.0f);               // the learnt message counts
    EXPECT_EQ(kept(), "no file");  // nothing is written during playback
    EXPECT_TRUE(knobIs(1.0f));
    EXPECT_EQ(kept(), std::string("\x4A\0\0\0", 4));
    sendController(kController, 0);
    EXPECT_TRUE(knobIs(0.0f));

    dispatch(effEditClose);
    sendController(kController, 127);
    ASSERT_TRUE(open());
    EXPECT_TRUE(knobIs(1.0f));
    makeSynth();
    ASSERT_TRUE(open());
    sendController(kController, 0);
    EXPECT_TRUE(knobIs(0.0f));

    choose(within(*controlOf(kPan), 0.5), 1, 2, HostWindow::kRight);
    idle();
    EXPECT_EQ(kept(), "\xFF\xFF\xFF\xFF");
    sendController(kController, 127);
    idle();
    EXPECT_TRUE(knobIs(0.0f));
    makeSynth();
    ASSERT_NE(record_->getParameter(record_, kPan), 1.0f);
    sendController(kController, 127);
    EXPECT_NE(record_->getParameter(record_, kPan), 1.0f);
}

TEST_F(PlayedEditor, ASkinIsChosenAndShownAtTheNextOpening) {
    ASSERT_TRUE(open());
    auto* const selector = dynamic_cast<COptionMenu*>(controlOf(editor::kSkinSelectorTag));
    ASSERT_NE(selector, nullptr);
    ASSERT_EQ(selector->getNbEntries(), 2);
    int night = 0;
    while (night < 1 && selector->getEntry(night)->getTitle() != "Night") ++night;
    EXPECT_EQ(selector->getEntry(night)->getTitle(), "Night");
    EXPECT_EQ(selector->getEntry(1 - night)->getTitle(), "Default Skin");
    EXPECT_EQ(selector->getCurrentIndex(), 1 - night);
    const int width = static_cast<int>(frame().getWidth());

    choose(within(*selector, 0.5), night, 2);
    EXPECT_EQ(state::settings().read(state::kSkinNameSetting), "Night");
    const auto* const notice =
        dynamic_cast<editor::CDisplay*>(frame().getView(frame().getNbViews() - 1));
    ASSERT_NE(notice, nullptr);
    EXPECT_EQ(notice->text(), "Please close this windows to load the skin");
    EXPECT_EQ(notice->getViewSize(), frame().getViewSize());
    EXPECT_TRUE(waitFor([this] { return showsItsPicture(); }));

    dispatch(effEditClose);
    ASSERT_TRUE(open());
    EXPECT_NE(static_cast<int>(frame().getWidth()), width);
    EXPECT_EQ(dynamic_cast<COptionMenu*>(controlOf(editor::kSkinSelectorTag))->getCurrentIndex(),
              night);
}

}  // namespace
