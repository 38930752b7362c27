// One line of text being edited: the text, a caret and a selection. It does not draw.
#pragma once

#include <cstddef>
#include <string>

namespace VSTGUI {

// Positions are byte offsets. They never split a character.
class TextLine {
  public:
    void setText(const std::string& text);  // puts the caret at the end
    const std::string& text() const { return text_; }

    size_t caret() const { return caret_; }
    size_t selectionStart() const;
    size_t selectionEnd() const;
    bool hasSelection() const { return caret_ != anchor_; }

    // Replaces the selection. Ignores control characters.
    void insert(char32_t character);
    // These remove the selection or, without one, the character before or after the caret.
    void removeBackward();
    void removeForward();

    // These move the caret. `extend` extends the selection; otherwise it is cleared.
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
