// A text field. A press opens it for typing; Return or a press elsewhere commits the text.
#pragma once

#include "gui/controls/text_label.h"
#include "gui/controls/text_line.h"

#include <optional>

namespace VSTGUI {

// The state of an open field until it commits.
struct TextEntry {
    TextLine line;
    UTF8String textBefore;
    CCoord scroll = 0;  // pixels of text hidden on the left
};

class CTextEdit : public CTextLabel {
  public:
    enum Style : int32_t { kDoubleClickStyle = 1 << 8 };

    CTextEdit(const CRect& size, IControlListener* listener, int32_t tag,
              UTF8StringPtr text = nullptr, CBitmap* background = nullptr, int32_t style = 0);

    void setText(const UTF8String& text) override;
    // If set, reports every change while typing, not only the committed text.
    virtual void setImmediateTextChange(bool immediate) { immediate_ = immediate; }
    bool getImmediateTextChange() const { return immediate_; }
    // The placeholder shows faintly while the field is empty and closed.
    virtual void setPlaceholderString(const UTF8String& text);
    const UTF8String& getPlaceholderString() const { return placeholder_; }

    // True if Return ended the entry that valueChanged reports.
    bool bWasReturnPressed = false;

    void draw(CDrawContext* context) override;
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseMoved(CPoint& where, const CButtonState& buttons) override;
    CMouseEventResult onMouseUp(CPoint& where, const CButtonState& buttons) override;
    void onKeyboardEvent(KeyboardEvent& event) override;
    void takeFocus() override;
    void looseFocus() override;

  protected:
    bool losesFocusOnOutsidePress() const override { return entry_.has_value(); }

  private:
    bool editKey(const KeyboardEvent& event);
    void entryChanged();
    void commit(const UTF8String& text);
    void close();
    void drawEntry(CDrawContext* context);
    CCoord widthUpTo(size_t position) const;
    CCoord textLeft() const;
    void keepCaretInSight();
    size_t positionAt(CCoord x) const;

    std::optional<TextEntry> entry_;  // set while the field is open
    UTF8String placeholder_;
    bool immediate_ = false;
};

}  // namespace VSTGUI
