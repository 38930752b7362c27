// Gives each test settings and a data folder of its own, so that none sees what another one left.
#pragma once

#include <memory>

// The settings of the user and the roaming folder, empty, for as long as it lives: also for
// libraries that are loaded and programs that are started meanwhile.
class OwnSettings {
  public:
    OwnSettings();
    ~OwnSettings();
    OwnSettings(const OwnSettings&) = delete;
    OwnSettings& operator=(const OwnSettings&) = delete;

  private:
    struct System;
    std::unique_ptr<System> system_;
};
