// The settings are a folder named by the environment.
#include <cstdlib>

#include "tests/support/own_settings.h"
#include "tests/support/temporary_folder.h"

struct OwnSettings::System {
    TemporaryFolder folder;
};

OwnSettings::OwnSettings() : system_(new System) {
    setenv("XDG_CONFIG_HOME", system_->folder.path().c_str(), 1);
    // Tests that need a display start their own. On the user's display, a message would wait for
    // the user; on a server that a previous test stopped, for ever.
    unsetenv("DISPLAY");
}

OwnSettings::~OwnSettings() = default;
