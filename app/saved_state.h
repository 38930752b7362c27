// Keeps the bank and the current program between runs.
#pragma once

#include <string>

#include "host/plugin_host.h"

namespace app {

// A bank file in the user's settings, one per instrument.
class SavedState {
  public:
    explicit SavedState(host::PluginHost& host);

    // Restores the state of the last run, if any. If the file cannot be used, renames it and throws
    // host::Error. If even the renaming fails, save will not overwrite the file.
    void load();
    // Renames the file of the last run, if any, instead of loading it. Returns the new name, or an
    // empty string. Throws host::Error if it cannot be renamed.
    std::string putAside();
    // Writes the file if anything changed since load or the last save. Throws host::Error.
    void save();

  private:
    host::PluginHost& host_;
    std::string path_;   // empty if there is no folder for it
    std::string saved_;  // contents of the file
    bool mayWrite_ = true;
};

}  // namespace app
