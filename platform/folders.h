// The two folders in which the instrument finds its files.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace platform {

// Folder of the library or program that contains this code, links resolved, ending in a separator.
// Nothing if the system does not tell.
std::optional<std::string> moduleFolder();

// Folder of the files delivered with the instrument: the module's own, unless a plug-in format
// keeps them elsewhere.
std::optional<std::string> resourceFolder();

// Sets resourceFolder(), relative to moduleFolder() and ending in '/'. Call it before anything else
// asks.
void setResourceFolder(const char* fromModule);

// The user's folder for application data, without a trailing separator. Creates it and its parents
// if necessary. Nothing if there is none. Windows: the roaming folder. Linux: $XDG_CONFIG_HOME if
// set and absolute, else $HOME/.config.
std::optional<std::string> applicationDataFolder();

// The folder in which users look for their own files, without a trailing separator: the documents
// on Windows, $HOME on Linux. Nothing if there is none.
std::optional<std::string> homeFolder();

// Where every path begins, each ending in a separator: the drives on Windows, "/" on Linux.
std::vector<std::string> rootFolders();

// Substitutes other folders within a scope; an empty path means there is none. Resources are then
// in the module folder. For tests.
class ScopedFolders {
  public:
    ScopedFolders(std::string module, std::string applicationData);
    ~ScopedFolders();
    ScopedFolders(const ScopedFolders&) = delete;
    ScopedFolders& operator=(const ScopedFolders&) = delete;
};

}  // namespace platform
