// Gives every input the same environment: nothing remains of the previous input.
#pragma once

#include <filesystem>

#include "editor/skin_missing.h"
#include "gui/headless.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "state/controller_map.h"
#include "tests/plugin/vst2/test_host.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace fuzz {

// Empty folders, no settings, no bound controllers, a host with few answers, editors without
// windows, and a stopped clock.
class World {
  public:
    World() {
        editor::setSkinMissing(false);
        state::controllerMap().load();
    }

    TemporaryFolder module;  // folder of the library's own files
    TemporaryFolder applicationData;
    platform::ScopedFolders folders{module.path(), applicationData.path()};
    platform::ScopedSettings settings;
    RecordedMessages messages;
    TestHost host;
    VSTGUI::headless::Scope scope;
    VSTGUI::headless::HeldClock clock;
};

}  // namespace fuzz
