// What the browser lists, and what its buttons do.
#include "editor/browser/sound_browser.h"

#include <algorithm>
#include <set>

#include "editor/browser/sound_files.h"
#include "platform/file.h"
#include "platform/file_exchange.h"
#include "platform/folders.h"
#include "platform/message_box.h"
#include "platform/path_text.h"
#include "platform/utf8.h"
#include "state/data_folder.h"
#include "state/factory_sounds.h"

namespace editor {

namespace {

constexpr const char* kInitName = "Init";
constexpr const char* kOwnFamily = "Own sounds";
constexpr std::size_t kLongestTyped = 60;

std::string lastPart(std::string path) {
    if (path.size() > 1 && path.back() == platform::kSeparator) path.pop_back();
    return platform::utf8FromPath(path.substr(path.rfind(platform::kSeparator) + 1));
}

}  // namespace

void SoundBrowser::refresh() {
    favourites_.read();
    if (const auto exchange = platform::exchangeFolder()) {
        folder_ = *exchange;
    } else if (folder_.empty()) {
        const std::string stored =
            platform::pathFromUtf8(state::settings().read(state::kSoundFolderSetting).value_or(""));
        const auto home = platform::homeFolder();
        folder_ = platform::folderExists(stored)
                      ? stored
                      : libraryFolder().value_or(home ? *home + platform::kSeparator : "");
        if (folder_.empty()) folder_ = platform::rootFolders().front();
    }
    status_.clear();
    saving_ = kNothing;
    readItems();
}

void SoundBrowser::readItems() {
    all_ = page_ == kSounds ? programs() : page_ == kLibrary ? librarySounds() : files();
    for (BrowserItem& item : all_) item.favourite = favourites_.has(item.name);
    shownProgram_ = lookOfProgram();
    filter();
}

// A family with any of its factory sounds also keeps what replaces the others, in the order of the
// numbers. Other sounds come after the families. Slots that contain nothing are hidden, but never
// the current one.
std::vector<BrowserItem> SoundBrowser::programs() {
    std::set<std::string> known;
    for (int program = 0; program < host_.programCount(); ++program) {
        const std::string name = host_.programName(program);
        if (const auto* const sound = state::factorySound(program, name)) {
            known.insert(sound->family);
        }
    }
    std::vector<BrowserItem> sounds, own, init;
    for (int program = 0; program < host_.programCount(); ++program) {
        BrowserItem item;
        item.program = program;
        item.name = host_.programName(program);
        item.edited = isEdited(host_, program);
        const auto* const sound = state::factorySound(program, item.name);
        if (sound) item.character = sound->character;
        item.family = state::factorySound(program).family;
        if (item.name == kInitName && !item.edited) {
            if (!showInit_ && program != host_.program()) continue;
            item.family = kInitName;
            init.push_back(std::move(item));
        } else if (known.count(item.family) > 0) {
            sounds.push_back(std::move(item));
        } else {
            item.family = kOwnFamily;
            own.push_back(std::move(item));
        }
    }
    sounds.insert(sounds.end(), own.begin(), own.end());
    sounds.insert(sounds.end(), init.begin(), init.end());
    return sounds;
}

std::vector<BrowserItem> SoundBrowser::files() const {
    if (!platform::exchangeFolder()) return filesIn(folder_);
    BrowserItem picker;
    picker.kind = BrowserItem::kPicker;
    picker.name = "Load a file...";
    picker.family = "This computer";
    return {picker};
}

void SoundBrowser::filter() {
    items_.clear();
    for (const BrowserItem& item : all_) {
        if (favouritesOnly_ && page_ != kFiles && !item.favourite) continue;
        if (isNaming() && item.kind == BrowserItem::kPicker) continue;
        if (isNaming() || matches(item, search_)) items_.push_back(item);
    }
    columns_ = columnsOf(items_);
}

std::string SoundBrowser::lookOfProgram() const {
    const int program = host_.program();
    return programNumber(program) + host_.programName(program) +
           (isEdited(host_, program) ? "*" : "");
}

bool SoundBrowser::follow() {
    const std::string look = lookOfProgram();
    if (look == shownProgram_) return false;
    status_.clear();
    const auto number = programNumber(host_.program());
    if (page_ == kLibrary && shownProgram_.compare(0, number.size(), number) != 0) {
        selectedPath_.clear();  // the file plays in another slot
    }
    page_ == kSounds ? readItems() : void(shownProgram_ = look);
    return true;
}

void SoundBrowser::show(Page page) {
    page_ = page;
    saving_ = kNothing;
    selectedPath_.clear();
    status_.clear();
    readItems();
}

int SoundBrowser::selected() const {
    const auto at = std::find_if(items_.begin(), items_.end(), [this](const BrowserItem& item) {
        return item.kind == BrowserItem::kProgram ? item.program == host_.program()
                                                  : item.path == selectedPath_;
    });
    return at == items_.end() ? -1 : static_cast<int>(at - items_.begin());
}

void SoundBrowser::select(int index) {
    if (index < 0 || index >= static_cast<int>(items_.size())) return;
    const BrowserItem item = items_[index];
    status_.clear();
    if (item.kind == BrowserItem::kProgram) {
        if (item.program != host_.program()) host_.setProgram(item.program);
        follow();
        return;
    }
    if (item.path == selectedPath_) return;
    selectedPath_ = item.path;
    if (page_ == kLibrary) return load(item);
    if (isNaming() && item.kind != BrowserItem::kFolder) suggest(item.name);
}

void SoundBrowser::load(const BrowserItem& item) {
    if (item.kind == BrowserItem::kSound) {
        if (const auto sound = readSound(host_, item.path)) slots_.load(*sound);
        follow();
    } else if (item.kind == BrowserItem::kBank) {
        if (const auto bank = readBank(host_, item.path)) {
            slots_.loadBank(*bank);
            follow();
            status_ = "Loaded the bank " + item.name + ". Ctrl+Z brings the old one back.";
        }
    }
}

bool SoundBrowser::choose(int index) {
    if (index < 0 || index >= static_cast<int>(items_.size())) return false;
    const BrowserItem item = items_[index];
    if (item.kind == BrowserItem::kFolder) {
        open(item.path);
        return false;
    }
    if (item.kind == BrowserItem::kPicker) {
        platform::askForFile();
        return false;
    }
    select(index);
    if (page_ != kFiles) return true;
    if (!isNaming()) load(item);
    return false;
}

void SoundBrowser::open(const std::string& folder) {
    folder_ = folder;
    state::settings().write(state::kSoundFolderSetting, platform::utf8FromPath(folder));
    search_.clear();
    selectedPath_.clear();
    status_.clear();
    readItems();
}

bool SoundBrowser::can(Action action) {
    switch (action) {
        case kFavourite:
            return page_ != kFiles && selected() >= 0;
        case kFavouritesOnly:
            return page_ != kFiles;
        case kShowInit:
            return page_ == kSounds;
        case kPaste:
            return slots_.canPaste();
        case kRevert:
            return slots_.isEdited();
        case kFactory:
            return slots_.differsFromFactory();
        default:
            return true;
    }
}

bool SoundBrowser::isOn(Action action) const {
    if (action == kFavouritesOnly) return favouritesOnly_;
    if (action == kShowInit) return showInit_;
    return false;
}

void SoundBrowser::run(Action action) {
    if (!can(action)) return;
    const std::string name = host_.programName(host_.program());
    status_.clear();
    switch (action) {
        case kFavourite:
            return toggleFavourite(selected());
        case kFavouritesOnly:
            favouritesOnly_ = !favouritesOnly_;
            break;
        case kShowInit:
            showInit_ = !showInit_;
            break;
        case kCopy:
            slots_.copy();
            status_ = "Copied " + name + ". Go to another sound to paste it there.";
            break;
        case kPaste:
            slots_.paste();
            status_ = "Pasted over " + name + ". Ctrl+Z brings it back.";
            break;
        case kRevert:
            slots_.revert();
            status_ = "Back to the sound that was loaded.";
            break;
        case kFactory:
            slots_.revertToFactory();
            status_ = "Back to the factory sound.";
            break;
        case kKeep: {
            const auto path = addToLibrary(host_);
            status_ = path ? "Stored in your library as " + lastPart(*path) + '.'
                           : "Your library cannot be written.";
            break;
        }
        case kSaveSound:
            return startNaming(kSound, fileNameFor(name));
        case kSaveBank:
            return startNaming(kBank, "Bank");
        case kSave:
            return save();
        case kCancel:
            cancelTyping();
            break;
    }
    readItems();
}

void SoundBrowser::toggleFavourite(int index) {
    const bool stored = favourites_.toggle(items_[index].name);
    readItems();
    status_ = stored ? "" : "The favourites cannot be stored.";
}

void SoundBrowser::startNaming(Saving what, const std::string& name) {
    page_ = kFiles;
    saving_ = what;
    suggest(name);
    replaces_.clear();
    search_.clear();
    readItems();
}

void SoundBrowser::save() {
    const std::string path = folder_ + platform::pathFromUtf8(fileNameFor(name_)) +
                             (saving_ == kSound ? kSoundExtension : kBankExtension);
    if (platform::fileExists(path) && path != replaces_) {
        replaces_ = path;
        status_ = lastPart(path) + " exists. Return again replaces it.";
        return;
    }
    if (saving_ == kSound ? writeSound(host_, path) : writeBank(host_, path)) {
        saving_ = kNothing;
        selectedPath_ = path;
        status_ = "Saved as " + lastPart(path) + '.';
        readItems();
    } else {
        platform::showMessage("Error!", platform::utf8FromPath(path) + " cannot be written.",
                              platform::MessageIcon::kNone);
    }
}

void SoundBrowser::suggest(const std::string& name) {
    name_ = name;
    isSuggested_ = true;
}

std::string& SoundBrowser::typing() {
    if (isSuggested()) name_.clear();
    isSuggested_ = false;
    status_.clear();
    return isNaming() ? name_ : search_;
}

void SoundBrowser::type(char32_t letter) {
    if (letter < ' ' || letter == 127) return;
    std::string& text = typing();
    if (text.size() >= kLongestTyped) return;
    text += platform::utf8::encode(letter);
    filter();
}

void SoundBrowser::eraseLetter() {
    std::string& text = typing();
    text.erase(platform::utf8::before(text, text.size()));
    filter();
}

bool SoundBrowser::finishTyping() {
    if (isNaming()) {
        save();
        return false;
    }
    return choose(std::max(selected(), 0));
}

bool SoundBrowser::cancelTyping() {
    const bool wasTyping = isNaming() || !search_.empty();
    saving_ = kNothing;
    search_.clear();
    status_.clear();
    filter();
    return wasTyping;
}

std::string SoundBrowser::detail() const {
    const int index = selected();
    if (index < 0) return "";
    const BrowserItem& item = items_[index];
    if (item.kind == BrowserItem::kPicker) return item.name;
    if (item.kind != BrowserItem::kProgram) return lastPart(item.path);
    std::string line = programNumber(item.program) + "  " + item.name;
    if (item.edited) line += "  (edited)";
    return line;
}

std::string SoundBrowser::place() const {
    if (page_ != kFiles) return "";
    const bool exchanged = platform::exchangeFolder().has_value();
    const std::string folder = exchanged ? "" : platform::utf8FromPath(folder_);
    if (!isNaming()) return folder;
    return std::string("Save the ") + (saving_ == kSound ? "sound" : "bank") +
           (exchanged ? "" : " in ") + folder + " as";
}

std::string SoundBrowser::remark() const {
    if (isNaming()) {
        return "Return saves " + fileNameFor(name_) +
               (saving_ == kSound ? kSoundExtension : kBankExtension) + ", Escape does not.";
    }
    const int index = selected();
    if (index < 0) {
        return search_.empty() || items_.empty()
                   ? ""
                   : std::to_string(items_.size()) + " found. Return takes the first.";
    }
    const BrowserItem& item = items_[index];
    if (page_ == kFiles) {
        if (item.kind == BrowserItem::kPicker) return "A sound (.fxp) or a bank (.fxb)";
        return item.kind == BrowserItem::kFolder ? "" : "Return or a double click loads it.";
    }
    if (page_ == kLibrary) return "Plays in slot " + programNumber(host_.program()) + '.';
    return item.character.empty() ? item.family : item.family + ": " + item.character;
}

}  // namespace editor
