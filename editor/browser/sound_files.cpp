// Sounds and banks in files, and the folders that contain them.
#include "editor/browser/sound_files.h"

#include <algorithm>
#include <cstring>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/input_error.h"
#include "platform/message_box.h"
#include "platform/path_text.h"
#include "platform/product.h"
#include "state/data_folder.h"
#include "state/sound_file.h"

namespace editor {

namespace {

using platform::kSeparator;

constexpr std::size_t kLargestFile = 64 << 20;
constexpr std::size_t kMostEntries = 2000;  // of one folder
constexpr const char* kLibraryFolder = "Sounds";

void say(const std::string& text) {
    platform::showMessage("Error!", text, platform::MessageIcon::kNone);
}

// What `read` makes of the file. Ends with a message if that fails.
template <typename Read>
auto readOrSay(const std::string& path, Read read)
    -> std::optional<decltype(read(std::string(), std::string()))> {
    const std::string name = platform::utf8FromPath(path);
    const auto bytes = platform::readFile(path, kLargestFile);
    if (!bytes) {
        say(name + " cannot be read.");
        return std::nullopt;
    }
    try {
        return read(*bytes, name);
    } catch (const platform::InputError& error) {
        say(error.what());
        return std::nullopt;
    }
}

bool endsWith(const std::string& name, const std::string& extension) {
    if (name.size() <= extension.size()) return false;
    return std::equal(extension.begin(), extension.end(), name.end() - extension.size(),
                      [](char one, char other) { return one == (other | 0x20) || one == other; });
}

std::string withoutExtension(const std::string& name) {
    return name.substr(0, name.rfind('.'));
}

BrowserItem fileItem(BrowserItem::Kind kind, const std::string& path, const std::string& name,
                     const char* family) {
    BrowserItem item;
    item.kind = kind;
    item.path = path;
    item.name = platform::utf8FromPath(name);
    item.family = family;
    return item;
}

bool byName(const BrowserItem& one, const BrowserItem& other) {
    return one.kind != other.kind ? one.kind < other.kind : one.name < other.name;
}

}  // namespace

std::optional<state::ProgramRecord> readSound(EditorHost& host, const std::string& path) {
    return readOrSay(path, [&host](const std::string& bytes, const std::string& name) {
        return state::readSoundFile(bytes, name, host.programRecord(host.program()));
    });
}

std::optional<state::SavedState> readBank(EditorHost& host, const std::string& path) {
    return readOrSay(path, [&host](const std::string& bytes, const std::string& name) {
        return state::readBankFile(bytes, name, host.savedState());
    });
}

bool writeSound(EditorHost& host, const std::string& path) {
    return platform::writeFile(path, state::soundFileOf(host.programRecord(host.program())));
}

bool writeBank(EditorHost& host, const std::string& path) {
    return platform::writeFile(path, state::bankFileOf(host.savedState()));
}

std::optional<std::string> libraryFolder() {
    const auto data = state::findDataFolder(platform::kProductName);
    if (!data) return std::nullopt;
    const std::string folder = *data + kLibraryFolder;
    if (!platform::folderExists(folder) && !platform::createFolder(folder)) return std::nullopt;
    return folder + kSeparator;
}

std::vector<BrowserItem> librarySounds() {
    std::vector<BrowserItem> sounds;
    const auto folder = libraryFolder();
    if (!folder) return sounds;
    for (const std::string& entry : platform::folderEntries(*folder)) {
        if (!endsWith(entry, kSoundExtension)) continue;
        sounds.push_back(fileItem(BrowserItem::kSound, *folder + entry, withoutExtension(entry),
                                  "Your library"));
    }
    std::sort(sounds.begin(), sounds.end(), byName);
    return sounds;
}

std::optional<std::string> addToLibrary(EditorHost& host) {
    const auto folder = libraryFolder();
    if (!folder) return std::nullopt;
    const std::string name = platform::pathFromUtf8(fileNameFor(host.programName(host.program())));
    std::string path = *folder + name + kSoundExtension;
    for (int number = 2; platform::fileExists(path); ++number) {
        path = *folder + name + ' ' + std::to_string(number) + kSoundExtension;
    }
    if (!writeSound(host, path)) return std::nullopt;
    return path;
}

std::string parentOf(const std::string& folder) {
    if (folder.size() < 2) return folder;
    const std::size_t end = folder.rfind(kSeparator, folder.size() - 2);
    return end == std::string::npos ? folder : folder.substr(0, end + 1);
}

std::vector<BrowserItem> filesIn(const std::string& folder) {
    std::vector<BrowserItem> places;
    const auto place = [&](const std::string& path, const std::string& name) {
        places.push_back(fileItem(BrowserItem::kFolder, path, name, "Places"));
    };
    if (parentOf(folder) != folder) place(parentOf(folder), "Folder above");
    if (const auto library = libraryFolder()) place(*library, "Your library");
    if (const auto home = platform::homeFolder()) place(*home + kSeparator, "Home");
    for (const std::string& root : platform::rootFolders()) place(root, root);

    std::vector<BrowserItem> items;
    std::vector<std::string> entries = platform::folderEntries(folder);
    if (entries.size() > kMostEntries) entries.resize(kMostEntries);
    for (const std::string& entry : entries) {
        const std::string path = folder + entry;
        if (entry[0] == '.') continue;
        if (endsWith(entry, kSoundExtension)) {
            items.push_back(
                fileItem(BrowserItem::kSound, path, withoutExtension(entry), "Sounds (.fxp)"));
        } else if (endsWith(entry, kBankExtension)) {
            items.push_back(
                fileItem(BrowserItem::kBank, path, withoutExtension(entry), "Banks (.fxb)"));
        } else if (platform::folderExists(path)) {
            items.push_back(fileItem(BrowserItem::kFolder, path + kSeparator, entry, "Folders"));
        }
    }
    std::sort(items.begin(), items.end(), byName);
    places.insert(places.end(), items.begin(), items.end());
    return places;
}

std::string fileNameFor(const std::string& name) {
    constexpr std::size_t kLongest = 100;
    std::string result;
    for (const char letter : name.substr(0, kLongest)) {
        const bool refused =
            static_cast<unsigned char>(letter) < ' ' || std::strchr("/\\:*?\"<>|", letter);
        result += refused ? '-' : letter;
    }
    // Windows takes away spaces and points at the end.
    const std::size_t end = result.find_last_not_of(" .");
    result.erase(end == std::string::npos ? 0 : end + 1);
    return result.empty() || result[0] == '.' ? "Sound" + result : result;
}

}  // namespace editor
