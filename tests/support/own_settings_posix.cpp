// Settings as a folder named by the environment.
#include <cstdlib>

#include "tests/support/own_settings.h"
#include "tests/support/temporary_folder.h"

struct OwnSettings::System {
    TemporaryFolder folder;
};

OwnSettings::OwnSettings() : system_(new System) {
    setenv("XDG_CONFIG_HOME", system_->folder.path().c_str(), 1);
    // A message on the display of whoever runs the tests would wait for them, one on the server
    // that a test before has stopped for nobody: tests that need a display start one.
    unsetenv("DISPLAY");
}

OwnSettings::~OwnSettings() = default;
