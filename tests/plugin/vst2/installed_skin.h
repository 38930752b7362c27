// Installs a small skin whose views read everything that the audio thread writes, in private
// folders and settings.
#pragma once

#include <filesystem>

#include "editor/skin_missing.h"
#include "editor/skin_preview.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "tests/support/temporary_folder.h"

class InstalledSkin {
  public:
    InstalledSkin() {
        editor::setSkinMissing(false);
        std::filesystem::create_directories(module_.path() + "skin");
        editor::writePng(module_.path() + "skin/bg.png", VSTGUI::PixelBuffer(200, 100));
        module_.write("skin/skin.xml", R"(<GUI><background filename="bg.png"/>
            <knob x="0" y="0" w="40" h="40" id="1"/>
            <NoteDisplay x="50" y="0" w="60" h="20" id="0"/>
            <ViewTaps x="50" y="30" w="60" h="30"/>
            <anydisp x="0" y="50" w="40" h="20" style="0"/>
            <vumeter x="150" y="0" id="0" leds="4" style="2" bitmap_on="bg.png" bitmap_off="bg.png"/>
            </GUI>)");
    }

  private:
    TemporaryFolder module_;
    TemporaryFolder applicationData_;
    platform::ScopedFolders folders_{module_.path(), applicationData_.path()};
    platform::ScopedSettings settings_;
};
