// What the editor offers for whole sounds: undo, comparing two versions, and chance.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "editor/edit_history.h"
#include "editor/editor_host.h"

namespace editor {

class SoundTools {
  public:
    explicit SoundTools(EditorHost& host) : host_(host), history_(host) {}

    EditHistory& history() { return history_; }

    // Two versions of the current program, A and B. Both start equal; another program starts again.
    bool showsB() const { return active_ == 1; }
    void compare();      // goes to the other version
    void copyToOther();  // makes the other version equal to this one
    void followProgram();

    // The panels whose values can be varied.
    static std::vector<std::string> panels();
    // Moves the continuous values of one panel a little.
    void vary(int panel);

  private:
    float chance();  // -1..1

    EditorHost& host_;
    EditHistory history_;
    int active_ = 0;
    int program_ = -1;
    std::optional<Values> other_;
    std::uint32_t random_ = 1;
};

}  // namespace editor
