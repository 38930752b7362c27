// Names and places of the instrument's files.
#pragma once

#include <optional>
#include <string>

#include "platform/settings_store.h"

namespace state {

constexpr const char* kHostFamilyFolder = "Quarzel Studio 9";
constexpr const char* kControllerMapFile = "Pluginccmap.bin";
constexpr const char* kDefaultBankFile = "default.fxb";
constexpr const char* kHelpFile = "ZLM_help.rtf";

// Keys in the settings store.
constexpr const char* kSkinNameSetting = "SkinName";
constexpr const char* kDataPathSetting = "DataPath";
constexpr const char* kSoundFolderSetting = "SoundFolder";  // that the browser showed last
constexpr const char* kZoomSetting = "Zoom";                // of the editor's picture, in percent

platform::SettingsStore settings();

// The per-user folder of the product, created if missing. The path ends in a separator and is cut
// to 255 bytes. Empty if there is no application-data folder or a folder cannot be created.
std::optional<std::string> findDataFolder(const std::string& productName);

}  // namespace state
