// One line of text being edited.
#include "gui/controls/text_line.h"
#include "gui/base/utf8_string.h"

#include <algorithm>

namespace VSTGUI {

void TextLine::setText(const std::string& text) {
    text_ = text;
    moveTo(text_.size(), false);
}

size_t TextLine::selectionStart() const {
    return std::min(caret_, anchor_);
}

size_t TextLine::selectionEnd() const {
    return std::max(caret_, anchor_);
}

void TextLine::replaceSelection(const std::string& with) {
    const size_t start = selectionStart();
    text_.replace(start, selectionEnd() - start, with);
    moveTo(start + with.size(), false);
}

void TextLine::insert(char32_t character) {
    if (character < ' ' || character == 0x7F) return;
    replaceSelection(utf8::encode(character));
}

void TextLine::removeBackward() {
    if (!hasSelection()) moveLeft(true);
    replaceSelection({});
}

void TextLine::removeForward() {
    if (!hasSelection()) moveRight(true);
    replaceSelection({});
}

void TextLine::moveTo(size_t position, bool extend) {
    caret_ = std::min(position, text_.size());
    if (!extend) anchor_ = caret_;
}

void TextLine::moveLeft(bool extend) {
    const bool collapse = hasSelection() && !extend;
    moveTo(collapse ? selectionStart() : utf8::before(text_, caret_), extend);
}

void TextLine::moveRight(bool extend) {
    const bool collapse = hasSelection() && !extend;
    moveTo(collapse ? selectionEnd() : utf8::after(text_, caret_), extend);
}

void TextLine::selectAll() {
    anchor_ = 0;
    caret_ = text_.size();
}

}  // namespace VSTGUI
