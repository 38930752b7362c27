// The bank and the current program, kept between runs.
#pragma once

#include <string>

#include "host/plugin_host.h"

namespace app {

// A bank file of the user's, one for every instrument.
class SavedState {
  public:
    explicit SavedState(host::PluginHost& host);

    // Puts the state of the last run in place, if there is one. Throws host::Error, after
    // setting the file aside, when it cannot be used; where that fails, save leaves it alone.
    void load();
    // Writes the file if anything has changed since load or the last save. Throws host::Error.
    void save();

  private:
    host::PluginHost& host_;
    std::string path_;   // empty: there is no folder to keep it in
    std::string saved_;  // bytes of the file
    bool mayWrite_ = true;
};

}  // namespace app
