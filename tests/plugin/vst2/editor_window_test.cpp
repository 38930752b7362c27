// Editors in a host's window: the built library's, and the shipped skins used with the pointer.
#include <cmath>
#include <map>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "editor/views/text_display.h"
#include "gui/headless.h"
#include "platform/shared_library.h"
#include "state/data_folder.h"
#include "tests/plugin/editor_kit.h"
#include "tests/plugin/vst2/own_instance.h"
#include "tests/support/recorded_messages.h"

namespace {

using namespace VSTGUI;

// A copy of the built library, beside a skin of its own.
class EditorWindow : public WindowTest {
  protected:
    EditorWindow() : WindowTest(200, 100) {
        const std::filesystem::path built = QUARZEL_PLUGIN;
        const std::string library = folder_.path(built.filename().string());
        std::filesystem::copy_file(built, library);
        std::filesystem::copy_file(built.parent_path() / "default.fxb",
                                   folder_.path("default.fxb"));
        writeSmallSkin(folder_);
        library_ = std::make_unique<platform::SharedLibrary>(library);
        plugin_ = std::make_unique<PluginInstance>(
            reinterpret_cast<PluginEntry>(library_->symbol("VSTPluginMain")));
    }
    void idle() override { plugin_->dispatch(effEditIdle); }
    bool showsItsGround() {
        return window_.pixel(45, 5) == kSkinGround && window_.pixel(142, 98) == kSkinGround;
    }

    TemporaryFolder folder_;
    TestHost host_;
    std::unique_ptr<platform::SharedLibrary> library_;
    std::unique_ptr<PluginInstance> plugin_;
};

TEST_F(EditorWindow, ShowsTheSkinAndTurnsWithTheMouse) {
    EXPECT_EQ(plugin_->rect().right, 200);
    EXPECT_EQ(plugin_->rect().bottom, 100);
    ASSERT_EQ(plugin_->dispatch(effEditOpen, 0, 0, window_.parent()), 1);
    EXPECT_TRUE(waitFor([this] { return showsItsGround(); }));

    plugin_->set(1, 0.5f);
    host_.calls.clear();
    window_.drag(20, 30, 30, 4);
    EXPECT_TRUE(waitFor([this] {
        return !host_.calls.empty() && host_.calls.back().opcode == audioMasterEndEdit;
    }));
    EXPECT_GT(plugin_->value(1), 0.6f);

    for (int i = 0; i < 20; ++i) {
        plugin_->dispatch(effEditClose);
        ASSERT_EQ(plugin_->dispatch(effEditOpen, 0, 0, window_.parent()), 1);
        idle();
    }
    EXPECT_TRUE(waitFor([this] { return showsItsGround(); }));
}

class PlayedEditor : public WindowTest {
  protected:
    PlayedEditor() : WindowTest(1280, 800) { editor::setSkinMissing(false); }
    ~PlayedEditor() override { EXPECT_TRUE(messages_.all.empty()) << messages_.all.front(); }

    void idle() override { plugin_.dispatch(effEditIdle); }
    bool openWith(const std::string& skin) {
        state::settings().write(state::kSkinNameSetting, skin);
        return plugin_.dispatch(effEditOpen, 0, 0, window_.parent()) == 1 &&
               waitFor([this] { return showsItsPicture(); });
    }
    CFrame& frame() { return plugin_.frame(); }
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
    // Drags down and right, which moves every kind of control away from its middle. Chooses the
    // last line of a menu.
    void play(CControl& control) {
        const auto at = [](const CRect& area, double x, double y) {
            return CPoint(area.left + area.getWidth() * x, area.top + area.getHeight() * y);
        };
        const auto click = [this](const CPoint& where) {
            window_.click(static_cast<int>(where.x), static_cast<int>(where.y));
        };
        const CPoint from = at(control.getViewSize(), 0.25, 0.25);
        const CPoint to = at(control.getViewSize(), 0.75, 0.95);
        EXPECT_EQ(frame().getViewAt(from, GetViewOptions().deep()), &control);
        if (auto* const menu = dynamic_cast<COptionMenu*>(&control)) {
            click(from);
            ASSERT_TRUE(waitFor([this] { return frame().getModalView() != nullptr; }));
            click(at(frame().getModalView()->getViewSize(), 0.5, 1 - 0.5 / menu->getNbEntries()));
            ASSERT_TRUE(waitFor([this] { return frame().getModalView() == nullptr; }));
        } else {
            window_.drag(static_cast<int>(from.x), static_cast<int>(from.y), static_cast<int>(to.x),
                         static_cast<int>(to.y));
        }
    }
    void expectControlsToShowTheInstrument() {
        EXPECT_TRUE(waitFor([this] { return showsItsPicture(); }));
        for (const auto& [parameter, control] : controls()) {
            SCOPED_TRACE(parameter);
            const float value = plugin_.value(parameter);
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

    TemporaryFolder applicationData_;
    platform::ScopedFolders folders_{QUARZEL_DELIVERED, applicationData_.path()};
    platform::ScopedSettings settings_;
    RecordedMessages messages_;
    TestHost host_;
    OwnInstance plugin_{TestHost::callback};
};

TEST_F(PlayedEditor, EveryParameterIsReachedByThePointerAndFollowsItsProgram) {
    for (const char* const skin : {"skin", "Night", "Opera"}) {
        SCOPED_TRACE(skin);
        ASSERT_TRUE(openWith(skin));
        for (int i = 0; i < state::kNumParams; ++i) plugin_.set(i, 0.5f);
        plugin_.dispatch(effEditIdle);
        const auto found = controls();
        EXPECT_EQ(found.size(), std::size_t{state::kNumParams});
        for (const auto& [parameter, control] : found) {
            host_.calls.clear();
            play(*control);
            EXPECT_TRUE(waitFor([this] {
                return !host_.calls.empty() && host_.calls.back().opcode == audioMasterEndEdit;
            }));
            const std::string number = std::to_string(parameter);
            const float value = plugin_.value(parameter);
            EXPECT_EQ(host_.told(), "begin " + number + ", automate " + number + " = " +
                                        state::valueText(value) + ", end " + number + ", ");
            EXPECT_NE(value, 0.5f) << parameter;
        }
        expectControlsToShowTheInstrument();
        const float volume = plugin_.value(state::kVolume);
        plugin_.dispatch(effSetProgram, 0, 7);
        EXPECT_NE(plugin_.value(state::kVolume), volume);
        expectControlsToShowTheInstrument();
        EXPECT_EQ(host_.told(), "");
        plugin_.dispatch(effSetProgram);
        plugin_.dispatch(effEditClose);
    }
}

}  // namespace
