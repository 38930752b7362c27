// The built library beside a skin, its editor in a host's window on a real X server.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "editor/skin_preview.h"
#include "platform/shared_library.h"
#include "tests/gui/x11_server.h"
#include "tests/plugin/plugin_under_test.h"
#include "tests/support/temporary_folder.h"

namespace {

class EditorWindow : public testing::Test {
  protected:
    void SetUp() override {
        setenv("XDG_CONFIG_HOME", configuration_.path().c_str(), 1);
        std::filesystem::copy_file(QUARZEL_PLUGIN, folder_.path() + "plugin.so");
        std::filesystem::create_directories(folder_.path() + "skin");
        VSTGUI::PixelBuffer ground(200, 100);
        VSTGUI::fillArea(ground, ground.bounds(), 0xFF336699u);
        editor::writePng(folder_.path() + "skin/bg.png", ground);
        folder_.write("skin/skin.xml", R"(<GUI><background filename="bg.png"/>
            <knob x="0" y="0" w="40" h="40" id="1"/></GUI>)");
        library_ = std::make_unique<platform::SharedLibrary>(folder_.path() + "plugin.so");
    }

    PluginEntry entry() { return reinterpret_cast<PluginEntry>(library_->symbol("VSTPluginMain")); }
    static void* asParent(std::uintptr_t window) { return reinterpret_cast<void*>(window); }

    // Calls the editor's idle until the condition holds; false when it never does.
    static bool waitFor(PluginInstance& plugin, const std::function<bool()>& condition) {
        using namespace std::chrono;
        const auto end = steady_clock::now() + seconds(20);
        while (steady_clock::now() < end) {
            plugin.dispatch(effEditIdle);
            if (condition()) return true;
            std::this_thread::sleep_for(milliseconds(5));
        }
        return false;
    }

    TemporaryFolder folder_;
    TemporaryFolder configuration_;
    TestHost host_;
    std::unique_ptr<platform::SharedLibrary> library_;
};

TEST_F(EditorWindow, ShowsTheSkinAndTurnsWithTheMouse) {
    VSTGUI::X11Server server("640x480x24");
    if (!server.isRunning()) GTEST_SKIP() << "needs Xvfb and xdotool";
    PluginInstance plugin(entry());
    ERect* rect = nullptr;
    ASSERT_EQ(plugin.dispatch(effEditGetRect, 0, 0, &rect), 1);
    EXPECT_EQ(rect->right, 200);
    EXPECT_EQ(rect->bottom, 100);
    const auto window = server.makeWindow(10, 20, 200, 100);
    ASSERT_NE(window, 0u);
    ASSERT_EQ(plugin.dispatch(effEditOpen, 0, 0, asParent(window)), 1);
    const auto showsGround = [&server] {
        const auto pixels = server.contents(10 + 150, 20 + 50, 1, 1);
        return pixels.size() == 1 && (pixels[0] & 0xFFFFFFu) == 0x336699u;
    };
    EXPECT_TRUE(waitFor(plugin, showsGround));

    host_.calls.clear();
    const auto driven = std::async(std::launch::async, [&server] {
        server.drive("mousemove 30 24 mousedown 1 mousemove 45 40 mouseup 1");
    });
    const auto ended = [this] {
        return !host_.calls.empty() && host_.calls.back().opcode == audioMasterEndEdit;
    };
    EXPECT_TRUE(waitFor(plugin, ended));
    driven.wait();
    EXPECT_NE(plugin->getParameter(plugin.record(), 1), 0.5f);

    for (int i = 0; i < 20; ++i) {
        plugin.dispatch(effEditClose);
        ASSERT_EQ(plugin.dispatch(effEditOpen, 0, 0, asParent(window)), 1);
        plugin.dispatch(effEditIdle);
    }
    EXPECT_TRUE(waitFor(plugin, showsGround));
}

TEST_F(EditorWindow, WithoutADisplayTheHostGoesOn) {
    for (const char* const display : {"", ":4711"}) {
        setenv("DISPLAY", display, 1);
        PluginInstance plugin(entry());
        ERect* rect = nullptr;
        EXPECT_EQ(plugin.dispatch(effEditGetRect, 0, 0, &rect), 1);
        EXPECT_EQ(plugin.dispatch(effEditOpen, 0, 0, asParent(1)), 0);
        plugin.dispatch(effEditIdle);
        plugin->setParameter(plugin.record(), 1, 0.25f);
        plugin.dispatch(effEditIdle);
        plugin.dispatch(effEditClose);
    }
}

}  // namespace
