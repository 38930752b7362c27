// The sound browser without its looks: what it lists, what is chosen, and what its buttons do.
#pragma once

#include <string>
#include <vector>

#include "editor/browser/favourites.h"
#include "editor/browser/sound_list.h"
#include "editor/browser/sound_slots.h"
#include "editor/edit_history.h"
#include "editor/editor_host.h"

namespace editor {

// Messages about bad files may stay open for minutes, and the host may do anything meanwhile. The
// browser itself lives as long as its editor.
class SoundBrowser {
  public:
    enum Page { kSounds, kLibrary, kFiles };
    enum Action {
        kFavourite,  // of the selected item
        kFavouritesOnly,
        kShowInit,
        kCopy,
        kPaste,
        kRevert,
        kFactory,
        kKeep,       // in the library
        kSaveSound,  // as a file whose name is typed
        kSaveBank,
        kSave,  // under the name typed
        kCancel,
    };

    SoundBrowser(EditorHost& host, EditHistory& history) : host_(host), slots_(host, history) {}

    // Reads sounds, files and favourites again.
    void refresh();
    // Follows the instrument. Returns true if something that shows has changed.
    bool follow();

    Page page() const { return page_; }
    void show(Page page);
    // What matches, in columns.
    const std::vector<BrowserItem>& items() const { return items_; }
    const std::vector<BrowserColumn>& columns() const { return columns_; }
    int selected() const;  // index of an item, or -1
    // An item that is a sound of the bank or of the library plays from now on.
    void select(int index);
    void walk(Walk step) { select(walked(columns_, selected(), step)); }
    // Uses the item: opens a folder, loads a file. Returns true if the user has found a sound.
    bool choose(int index);

    void toggleFavourite(int index);
    bool can(Action action);
    bool isOn(Action action) const;
    void run(Action action);

    // What is typed is searched for, or is the name of a file to save.
    bool isNaming() const { return saving_ != kNothing; }
    const std::string& typed() const { return isNaming() ? name_ : search_; }
    // Whether the name is one that the browser has put there. Typing replaces it.
    bool isSuggested() const { return isNaming() && isSuggested_; }
    void type(char32_t letter);
    void eraseLetter();
    // Return: saves the file, or chooses the selected or the first item. As choose().
    bool finishTyping();
    // Escape: ends naming or the search. Returns false if there was neither.
    bool cancelTyping();

    // One line about the selected item, and one about what has just happened.
    std::string detail() const;
    const std::string& status() const { return status_; }
    std::string place() const;   // the folder that shows, or where a file is saved
    std::string remark() const;  // more about it, or what to do

  private:
    enum Saving { kNothing, kSound, kBank };

    void readItems();
    std::vector<BrowserItem> programs();
    std::vector<BrowserItem> files() const;
    void filter();
    void open(const std::string& folder);
    void load(const BrowserItem& item);
    void startNaming(Saving what, const std::string& name);
    void suggest(const std::string& name);
    // What is being typed, for a change.
    std::string& typing();
    void save();
    std::string lookOfProgram() const;

    EditorHost& host_;
    SoundSlots slots_;
    Favourites favourites_;
    Page page_ = kSounds;
    bool favouritesOnly_ = false;
    bool showInit_ = false;
    std::vector<BrowserItem> all_;
    std::vector<BrowserItem> items_;
    std::vector<BrowserColumn> columns_;
    std::string selectedPath_;
    std::string search_;
    std::string folder_;
    Saving saving_ = kNothing;
    std::string name_;
    bool isSuggested_ = false;
    std::string replaces_;  // the file that the next Return replaces
    std::string status_;
    std::string shownProgram_;
};

}  // namespace editor
