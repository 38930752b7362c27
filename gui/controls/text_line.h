// One line of text being edited: the text, a caret and a selection. Knows nothing of drawing.
#pragma once

#include <cstddef>
#include <string>

namespace VSTGUI {

// Positions are bytes and always stand between two characters.
class TextLine {
  public:
    void setText(const std::string& text);  // caret at the end
    const std::string& text() const { return text_; }

    size_t caret() const { return caret_; }
    size_t selectionStart() const;
    size_t selectionEnd() const;
    bool hasSelection() const { return caret_ != anchor_; }

    // Replaces the selection. Control characters are left out.
    void insert(char32_t character);
    // Remove the selection, or else the character before or after the caret.
    void removeBackward();
    void removeForward();

    // Each moves the caret; without `extend` the selection ends there.
    void moveTo(size_t position, bool extend);
    void moveLeft(bool extend);
    void moveRight(bool extend);
    void selectAll();

  private:
    void replaceSelection(const std::string& with);

    std::string text_;
    size_t caret_ = 0;
    size_t anchor_ = 0;  // the selection's other end
};

}  // namespace VSTGUI
