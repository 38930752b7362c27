// The settings file, and the editor's reading of it.
#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "editor/editor_zoom.h"
#include "editor/skin_choice.h"
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "state/data_folder.h"
#include "tests/support/temporary_folder.h"

namespace {

// All settings, by every possible name in the file.
std::map<std::string, std::optional<std::string>> allSettings(std::string_view file) {
    std::map<std::string, std::optional<std::string>> all;
    fuzz::Input lines(file);
    while (!lines.empty() && all.size() < 100) {
        std::string name(lines.takeUntil('\n'));
        name.resize(std::min(name.find('='), name.size()));
        all[name] = state::settings().read(name);
    }
    return all;
}

void requireUsable(const std::string& moduleFolder) {
    const auto& steps = editor::kZoomSteps;
    const std::optional<int> zoom = editor::readZoom();
    fuzz::require(!zoom || std::count(steps.begin(), steps.end(), *zoom) == 1,
                  "the zoom is one of the steps");
    const editor::SkinChoice skin = editor::findSkins();
    fuzz::require(skin.name == editor::kDefaultSkin ||
                      platform::fileExists(skin.folder().value_or("") + "skin.xml"),
                  "the chosen skin is there, or it is the default");
    fuzz::require(skin.baseFolder == moduleFolder, "skins are looked for beside the library");
}

void run(std::string_view bytes) {
    const TemporaryFolder module, applicationData;
    const platform::ScopedFolders folders(module.path(), applicationData.path());
    std::filesystem::create_directories(module.path() + "Night");
    module.write("Night/skin.xml", "");
    fuzz::Input input(bytes);
    std::string name(input.takeUntil('\n'));
    name.erase(std::remove(name.begin(), name.end(), '='), name.end());
    const std::string value(input.take(input.byte()));
    const std::string file(input.rest());
    std::filesystem::create_directories(applicationData.path() + "Tembrilon/Quarzel Strings");
    applicationData.write("Tembrilon/Quarzel Strings/settings", file);

    requireUsable(module.path());
    auto expected = allSettings(file);
    fuzz::require(state::settings().write(name, value), "a setting is kept");
    expected[name] = value;
    for (const auto& [key, text] : expected) {
        fuzz::require(state::settings().read(key) == text, "settings outlive a write");
    }
    editor::keepZoom(150);
    editor::chooseSkin("Night");
    fuzz::require(editor::readZoom() == 150, "the zoom is kept");
    fuzz::require(editor::findSkins().name == "Night", "the skin is kept");
    requireUsable(module.path());
}

const fuzz::Registered registered("settings_file", run);

}  // namespace
