// A text field that shows only while it has the keyboard.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

class CPopUpField : public VSTGUI::CTextEdit {
  public:
    using CTextEdit::CTextEdit;

    // Shows `text`, selected, at `area` of the frame.
    void open(const VSTGUI::CRect& area, const VSTGUI::UTF8String& text);

    void takeFocus() override;
    void looseFocus() override;
};

}  // namespace editor
