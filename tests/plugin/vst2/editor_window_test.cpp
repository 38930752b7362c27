// The built library's editor in a host's window.
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "editor/skin_preview.h"
#include "platform/shared_library.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/support/host_window.h"
#include "tests/support/temporary_folder.h"

namespace {

class EditorWindow : public testing::Test {
  protected:
    void SetUp() override {
        if (!window_.isOpen()) GTEST_SKIP() << "needs a desktop; on Linux Xvfb and xdotool";
        const std::filesystem::path built = QUARZEL_PLUGIN;
        const std::string library = folder_.path() + built.filename().string();
        std::filesystem::copy_file(built, library);
        std::filesystem::copy_file(built.parent_path() / "default.fxb",
                                   folder_.path() + "default.fxb");
        std::filesystem::create_directories(folder_.path() + "skin");
        VSTGUI::PixelBuffer ground(200, 100);
        VSTGUI::fillArea(ground, ground.bounds(), 0xFF336699u);
        editor::writePng(folder_.path() + "skin/bg.png", ground);
        folder_.write("skin/skin.xml", R"(<GUI><background filename="bg.png"/>
            <knob x="0" y="0" w="40" h="40" id="1"/></GUI>)");
        library_ = std::make_unique<platform::SharedLibrary>(library);
    }

    PluginEntry entry() { return reinterpret_cast<PluginEntry>(library_->symbol("VSTPluginMain")); }

    // Runs the host's loop until the condition holds. Returns false on timeout.
    bool waitFor(PluginInstance& plugin, const std::function<bool()>& condition) {
        using namespace std::chrono;
        const auto end = steady_clock::now() + seconds(20);
        while (steady_clock::now() < end) {
            plugin.dispatch(effEditIdle);
            window_.serve();
            if (condition()) return true;
            std::this_thread::sleep_for(milliseconds(5));
        }
        return false;
    }

    HostWindow window_{200, 100};
    TemporaryFolder folder_;
    TestHost host_;
    std::unique_ptr<platform::SharedLibrary> library_;
};

TEST_F(EditorWindow, ShowsTheSkinAndTurnsWithTheMouse) {
    PluginInstance plugin(entry());
    ERect* rect = nullptr;
    ASSERT_EQ(plugin.dispatch(effEditGetRect, 0, 0, &rect), 1);
    EXPECT_EQ(rect->right, 200);
    EXPECT_EQ(rect->bottom, 100);
    ASSERT_EQ(plugin.dispatch(effEditOpen, 0, 0, window_.parent()), 1);
    const auto showsGround = [this] { return window_.pixel(150, 50) == 0x336699u; };
    EXPECT_TRUE(waitFor(plugin, showsGround));

    plugin->setParameter(plugin.record(), 1, 0.5f);
    host_.calls.clear();
    window_.drag(20, 4, 35, 20);
    const auto ended = [this] {
        return !host_.calls.empty() && host_.calls.back().opcode == audioMasterEndEdit;
    };
    EXPECT_TRUE(waitFor(plugin, ended));
    EXPECT_GT(plugin->getParameter(plugin.record(), 1), 0.6f);

    for (int i = 0; i < 20; ++i) {
        plugin.dispatch(effEditClose);
        ASSERT_EQ(plugin.dispatch(effEditOpen, 0, 0, window_.parent()), 1);
        plugin.dispatch(effEditIdle);
    }
    EXPECT_TRUE(waitFor(plugin, showsGround));
}

}  // namespace
