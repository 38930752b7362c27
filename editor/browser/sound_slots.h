// Whole sounds of the bank: what has been edited, and copies, which can be undone.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "editor/edit_history.h"
#include "editor/editor_host.h"

namespace editor {

// Whether the values of a program differ from those that were loaded.
bool isEdited(const EditorHost& host, int program);

class SoundSlots {
  public:
    SoundSlots(EditorHost& host, EditHistory& history) : host_(host), history_(history) {}

    // Of the current program.
    bool isEdited() const { return editor::isEdited(host_, host_.program()); }
    bool differsFromFactory();
    void revert();           // to what was loaded
    void revertToFactory();  // to the sound of this number that is delivered
    void copy() { copied_ = host_.programRecord(host_.program()); }
    bool canPaste() const { return copied_.has_value(); }
    void paste();

    // Puts a sound from elsewhere into the current slot. Revert comes back to it.
    void load(const state::ProgramRecord& sound);
    // Replaces all programs.
    void loadBank(const state::SavedState& bank);

  private:
    void replace(const std::string& what, const state::ProgramRecord& sound, bool loaded);
    void putBank(const state::SavedState& bank);
    const state::BankChunk* factory();

    EditorHost& host_;
    EditHistory& history_;
    std::optional<state::ProgramRecord> copied_;
    std::unique_ptr<state::BankChunk> factory_;  // read when first needed
};

}  // namespace editor
