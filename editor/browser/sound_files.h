// Sounds and banks in files, and the folders that contain them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editor/browser/sound_list.h"
#include "editor/editor_host.h"

namespace editor {

constexpr const char* kSoundExtension = ".fxp";
constexpr const char* kBankExtension = ".fxb";

// Read a file that fits `host`. A file that cannot be used shows a message, and nothing is
// returned. A list form changes what it contains; the rest comes from the host.
std::optional<state::ProgramRecord> readSound(EditorHost& host, const std::string& path);
std::optional<state::SavedState> readBank(EditorHost& host, const std::string& path);

// Write the current sound, or all. Return false if the file cannot be written.
bool writeSound(EditorHost& host, const std::string& path);
bool writeBank(EditorHost& host, const std::string& path);

// The user's own sounds, in the data folder. Ends in a separator; nothing if there is none.
std::optional<std::string> libraryFolder();
std::vector<BrowserItem> librarySounds();
// Stores the current sound under its name, or with a number if another file has that. Returns the
// path, or nothing if it cannot be written.
std::optional<std::string> addToLibrary(EditorHost& host);

// Places, folders, sounds and banks to choose from in a folder that ends in a separator.
std::vector<BrowserItem> filesIn(const std::string& folder);
// The folder above, or the folder itself.
std::string parentOf(const std::string& folder);

// The name without what a file name cannot contain on either system; never empty.
std::string fileNameFor(const std::string& name);

}  // namespace editor
