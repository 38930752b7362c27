// Sounds and banks in files, and the folders that contain them.
#include "editor/browser/sound_files.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "platform/file.h"
#include "platform/folders.h"
#include "platform/input_error.h"
#include "platform/message_box.h"
#include "platform/path_text.h"
#include "platform/product.h"
#include "state/bank.h"
#include "state/chunks.h"
#include "state/data_folder.h"
#include "state/fx_file.h"

namespace editor {

namespace {

using platform::kSeparator;

constexpr std::size_t kLargestFile = 64 << 20;
constexpr std::size_t kMostEntries = 2000;  // of one folder
constexpr int kInstrumentVersion = 1;
constexpr const char* kLibraryFolder = "Sounds";
constexpr state::FxOwner kOwner = {platform::kProductCode, state::kNumPrograms, state::kNumParams};

void say(const std::string& text) {
    platform::showMessage("Error!", text, platform::MessageIcon::kNone);
}

// Ends with a message if the file cannot be read or `parse` throws.
template <typename Parse>
auto parsed(const std::string& path, Parse parse)
    -> std::optional<decltype(parse(std::string(), kOwner, std::string()))> {
    const std::string name = platform::utf8FromPath(path);
    const auto bytes = platform::readFile(path, kLargestFile);
    std::string reason = name + " cannot be read.";
    try {
        if (bytes) return parse(*bytes, kOwner, name);
    } catch (const platform::InputError& error) {
        reason = error.what();
    }
    say(reason);
    return std::nullopt;
}

std::unique_ptr<state::Bank> bankOf(const state::SavedState& saved) {
    auto bank = std::make_unique<state::Bank>();
    if (saved.bank.size() == sizeof(state::BankChunk)) {
        std::memcpy(&bank->chunk(), saved.bank.data(), saved.bank.size());
    }
    return bank;
}

void setProgram(state::Bank& bank, int program, const std::string& name,
                const std::vector<float>& values) {
    bank.setProgramName(program, name.c_str());
    for (std::size_t i = 0; i < values.size(); ++i) {
        bank.setValue(program, static_cast<int>(i), values[i]);
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
    const auto preset = parsed(path, state::parseFxPreset);
    if (!preset) return std::nullopt;
    const auto bank = bankOf(host.savedState());
    const int program = host.program();
    if (const auto* const chunk = std::get_if<state::FxChunk>(&preset->content)) {
        const auto size = static_cast<std::int32_t>(
            std::min<std::size_t>(chunk->size(), sizeof(state::BankChunk)));
        if (!state::takeProgramChunk(*bank, program, chunk->data(), size)) return std::nullopt;
    } else {
        setProgram(*bank, program, preset->name, std::get<std::vector<float>>(preset->content));
    }
    return bank->program(program);
}

std::optional<state::SavedState> readBank(EditorHost& host, const std::string& path) {
    const auto file = parsed(path, state::parseFxBank);
    if (!file) return std::nullopt;
    state::SavedState saved = host.savedState();
    const auto bank = bankOf(saved);
    if (const auto* const chunk = std::get_if<state::FxChunk>(&file->content)) {
        const auto size = static_cast<std::int32_t>(
            std::min<std::size_t>(chunk->size(), sizeof(state::BankChunk) + 1));
        if (!state::takeBankChunk(*bank, chunk->data(), size)) return std::nullopt;
    } else {
        int program = 0;
        for (const auto& entry : std::get<std::vector<state::FxProgram>>(file->content)) {
            setProgram(*bank, program++, entry.name, entry.values);
        }
    }
    if (file->currentProgram != state::FxBank::kNoProgram) saved.program = file->currentProgram;
    saved.bank.assign(reinterpret_cast<const char*>(&bank->chunk()), sizeof(state::BankChunk));
    return saved;
}

bool writeSound(EditorHost& host, const std::string& path) {
    const state::ProgramRecord record = host.programRecord(host.program());
    const state::FxPreset preset = {
        kInstrumentVersion, state::kNumParams, state::nameOf(record),
        state::FxChunk(reinterpret_cast<const char*>(&record), sizeof record)};
    return platform::writeFile(path, state::fxBytes(preset, platform::kProductCode));
}

bool writeBank(EditorHost& host, const std::string& path) {
    const state::SavedState saved = host.savedState();
    const state::FxBank bank = {kInstrumentVersion, state::kNumPrograms, saved.program, saved.bank};
    return platform::writeFile(path, state::fxBytes(bank, platform::kProductCode));
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
