// jalv, a host of its own, plays the bundle against a private JACK server and shows the editor.
#include <cstdlib>
#include <set>

#include <gtest/gtest.h>

#include "plugin/lv2/uris.h"
#include "tests/app/child_process.h"
#include "tests/app/jack_server.h"
#include "tests/gui/x11_server.h"
#include "tests/support/sound.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wait_for.h"

namespace {

TEST(Jalv, PlaysAPresetAndShowsTheEditor) {
    if (std::system("command -v jalv.gtk3 >/dev/null") != 0) GTEST_SKIP() << "needs jalv.gtk3";
    const TemporaryFolder folder;
    const VSTGUI::X11Server display("1280x800x24");
    if (!display.isRunning()) GTEST_SKIP() << "needs Xvfb and xdotool";
    JackServer jack(folder.path());
    if (!jack.isRunning()) GTEST_SKIP() << "needs jackd";
    setenv("LV2_PATH", QUARZEL_LV2_PATH ":/usr/lib/lv2", 1);
    setenv("GDK_BACKEND", "x11", 1);
    const std::string preset = "--preset=" + std::string(lv2::kPluginUri) + "#preset048";
    ChildProcess jalv({"jalv.gtk3", preset, lv2::kPluginUri}, folder.path() + "jalv.log");

    // A program's ports exist before they can be connected.
    ASSERT_TRUE(waitFor([&] { return jack.feed("Quarzel Strings:midi_in"); })) << jalv.output();
    EXPECT_TRUE(waitFor([&] {
        jack.sendMidi({0x90, 60, 100});  // each time: a new connection may lose its first cycle
        return jack.listen("Quarzel Strings:left") && tests::Sound{jack.heard(), {}}.peak() > 0.01f;
    })) << jalv.output();
    // The skin's pictures have far more colours than the host's own controls.
    EXPECT_TRUE(waitFor([&] {
        const auto pixels = display.contents(0, 0, 1000, 600);
        return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size() > 2000;
    })) << jalv.output();
    jalv.signal(SIGTERM);
    EXPECT_NE(jalv.waitForEnd(), -1) << jalv.output();
    EXPECT_EQ(jalv.output().find("error"), std::string::npos) << jalv.output();
}

}  // namespace
