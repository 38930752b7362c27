// What tests of editors share: a small skin, and a host's window with its loop.
#pragma once

#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

#include "editor/skin_missing.h"
#include "editor/skin_preview.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "tests/support/host_window.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wait_for.h"

constexpr std::uint32_t kSkinGround = 0x336699;

// A skin of 200 by 100 pixels. Its views read everything that the audio thread writes.
inline void writeSmallSkin(const TemporaryFolder& folder) {
    std::filesystem::create_directories(folder.path() + "skin");
    VSTGUI::PixelBuffer ground(200, 100);
    VSTGUI::fillArea(ground, ground.bounds(), 0xFF000000 | kSkinGround);
    editor::writePng(folder.path() + "skin/bg.png", ground);
    folder.write("skin/skin.xml", R"(<GUI><background filename="bg.png"/>
        <knob x="0" y="0" w="40" h="40" id="1"/>
        <NoteDisplay x="50" y="0" w="60" h="20" id="0"/>
        <ViewTaps x="50" y="30" w="60" h="30"/>
        <anydisp x="0" y="50" w="40" h="20" style="0"/>
        <PresetsDisplay x="0" y="75" w="140" h="20" id="0"/>
        <vumeter x="150" y="0" id="0" leds="4" style="2" bitmap_on="bg.png" bitmap_off="bg.png"/>
        </GUI>)");
}

// That skin in private folders and settings.
class InstalledSkin {
  public:
    InstalledSkin() {
        editor::setSkinMissing(false);
        writeSmallSkin(module_);
    }
    ~InstalledSkin() { editor::setSkinMissing(false); }

    const TemporaryFolder& folder() const { return module_; }

  private:
    TemporaryFolder module_;
    TemporaryFolder applicationData_;
    platform::ScopedFolders folders_{module_.path(), applicationData_.path()};
    platform::ScopedSettings settings_;
};

class WindowTest : public testing::Test {
  protected:
    WindowTest(int width, int height) : window_(width, height) {}
    void SetUp() override {
        if (!window_.isOpen()) GTEST_SKIP() << "needs a desktop; on Linux Xvfb and xdotool";
    }
    virtual void idle() = 0;
    // Runs the host's loop until the condition holds. Returns false on timeout.
    bool waitFor(const std::function<bool()>& condition) {
        return ::waitFor([&] {
            idle();
            window_.serve();
            return condition();
        });
    }

    HostWindow window_;
};
