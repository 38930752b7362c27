// A text field that shows only while it has the keyboard.
#include "editor/views/pop_up_field.h"

namespace editor {

using namespace VSTGUI;

void CPopUpField::open(const CRect& area, const UTF8String& text) {
    if (!getFrame()) return;
    setViewSize(area);
    setMouseableArea(area);
    setText(text);
    setVisible(true);
    getFrame()->setFocusView(this);
}

void CPopUpField::takeFocus() {
    setVisible(true);
    CTextEdit::takeFocus();
}

void CPopUpField::looseFocus() {
    CTextEdit::looseFocus();
    setVisible(false);
}

}  // namespace editor
