// Gives each test its own settings and data folder, so that tests cannot affect each other.
#pragma once

#include <memory>

// Provides empty user settings and an empty data folder during its lifetime, also to libraries
// loaded and programs started meanwhile.
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
