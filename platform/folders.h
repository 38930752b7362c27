// The two folders that the instrument finds its files in.
#pragma once

#include <optional>
#include <string>

namespace platform {

// Folder of the library or program that this code is linked into, links resolved, ending in a
// separator; nothing when the system does not tell.
std::optional<std::string> moduleFolder();

// Folder of the files that are delivered with the instrument: the module's own, unless a plug-in
// format keeps them elsewhere.
std::optional<std::string> resourceFolder();

// From now on resourceFolder() is this one, as seen from moduleFolder(), ending in '/'. Call it
// before anybody asks.
void setResourceFolder(const char* fromModule);

// The user's folder for application data, created with its parents if need be, without a closing
// separator; nothing when there is none. Windows: the roaming one. Linux: $XDG_CONFIG_HOME if set
// and absolute, else $HOME/.config.
std::optional<std::string> applicationDataFolder();

// Puts other folders in place for a scope; an empty one stands for none. Resources are then in the
// module's. For tests.
class ScopedFolders {
  public:
    ScopedFolders(std::string module, std::string applicationData);
    ~ScopedFolders();
    ScopedFolders(const ScopedFolders&) = delete;
    ScopedFolders& operator=(const ScopedFolders&) = delete;
};

}  // namespace platform
