// A text field. A press opens it for typing; Return or a press elsewhere commits the text.
#include "gui/controls/text_edit.h"
#include "gui/graphics/text.h"
#include "gui/views/frame.h"

#include <algorithm>
#include <cmath>

namespace VSTGUI {
namespace {

constexpr CColor kSelectionColor(56, 117, 215);
constexpr CCoord kCaretWidth = 1;

}  // namespace

CTextEdit::CTextEdit(const CRect& size, IControlListener* listener, int32_t tag, UTF8StringPtr text,
                     CBitmap* background, int32_t style)
    : CTextLabel(size, text, background, style) {
    setListener(listener);
    setTag(tag);
    setWantsFocus(true);
}

void CTextEdit::setText(const UTF8String& text) {
    CTextLabel::setText(text);
    if (entry_ && entry_->line.text() != text.getString()) entry_->line.setText(text.getString());
}

void CTextEdit::setPlaceholderString(const UTF8String& text) {
    placeholder_ = text;
    setDirty();
}

void CTextEdit::takeFocus() {
    if (entry_) return;
    bWasReturnPressed = false;
    entry_.emplace();
    entry_->textBefore = getText();
    entry_->line.setText(getText().getString());
    entry_->line.selectAll();
    keepCaretInSight();
    setDirty();
}

void CTextEdit::looseFocus() {
    if (!entry_) return;
    const UTF8String typed(entry_->line.text());
    entry_.reset();
    commit(typed);
    bWasReturnPressed = false;
    setDirty();
}

void CTextEdit::commit(const UTF8String& text) {
    if (getText() == text) return;
    beginEdit();
    setText(text);
    valueChanged();
    endEdit();
}

void CTextEdit::close() {
    if (CFrame* const frame = getFrame()) frame->setFocusView(nullptr);
}

void CTextEdit::entryChanged() {
    keepCaretInSight();
    if (immediate_) commit(UTF8String(entry_->line.text()));
    setDirty();
}

CMouseEventResult CTextEdit::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    if (entry_) {
        if (buttons.isDoubleClick())
            entry_->line.selectAll();
        else
            entry_->line.moveTo(positionAt(where.x), (buttons & kShift) != 0);
        keepCaretInSight();
        setDirty();
        return kMouseEventHandled;
    }
    if ((getStyle() & kDoubleClickStyle) && !buttons.isDoubleClick()) return kMouseEventNotHandled;
    if (getFrame()) getFrame()->setFocusView(this);
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

CMouseEventResult CTextEdit::onMouseMoved(CPoint& where, const CButtonState& buttons) {
    if (!entry_ || !buttons.isLeftButton()) return kMouseEventNotHandled;
    entry_->line.moveTo(positionAt(where.x), true);
    keepCaretInSight();
    setDirty();
    return kMouseEventHandled;
}

CMouseEventResult CTextEdit::onMouseUp(CPoint&, const CButtonState&) {
    return kMouseEventHandled;
}

void CTextEdit::onKeyboardEvent(KeyboardEvent& event) {
    if (!entry_) return;
    event.consumed = true;  // keys typed into the field go nowhere else
    if (event.type != EventType::KeyDown) return;
    switch (event.virt) {
        case VirtualKey::Return:
        case VirtualKey::Enter:
            bWasReturnPressed = true;
            return close();
        case VirtualKey::Escape:
            entry_->line.setText(entry_->textBefore.getString());
            if (immediate_) commit(entry_->textBefore);
            setDirty();
            return close();
        default:
            break;
    }
    if (editKey(event)) entryChanged();
}

bool CTextEdit::editKey(const KeyboardEvent& event) {
    TextLine& line = entry_->line;
    const bool extend = event.modifiers.has(ModifierKey::Shift);
    switch (event.virt) {
        case VirtualKey::Back:
            line.removeBackward();
            return true;
        case VirtualKey::Delete:
            line.removeForward();
            return true;
        case VirtualKey::Left:
            line.moveLeft(extend);
            return true;
        case VirtualKey::Right:
            line.moveRight(extend);
            return true;
        case VirtualKey::Up:
        case VirtualKey::Home:
            line.moveTo(0, extend);
            return true;
        case VirtualKey::Down:
        case VirtualKey::End:
            line.moveTo(line.text().size(), extend);
            return true;
        case VirtualKey::Space:
            line.insert(' ');
            return true;
        default:
            break;
    }
    if (!event.character) return false;
    const bool control = event.modifiers.has(ModifierKey::Control);
    const bool alt = event.modifiers.has(ModifierKey::Alt);
    if (control && !alt) {  // Control with Alt types a third-level character
        if (event.character != 'a' && event.character != 'A') return false;
        line.selectAll();
        return true;
    }
    line.insert(event.character);
    return true;
}

CCoord CTextEdit::widthUpTo(size_t position) const {
    return textWidth(*getFont(), entry_->line.text().substr(0, position));
}

// The left end of the text: aligned if the text fits, scrolled otherwise.
CCoord CTextEdit::textLeft() const {
    const CRect area = textArea();
    const CCoord spare = area.getWidth() - kCaretWidth - widthUpTo(std::string::npos);
    if (spare < 0) return area.left - entry_->scroll;
    if (getHoriAlign() == kLeftText) return area.left;
    return std::floor(getHoriAlign() == kRightText ? area.left + spare : area.left + spare / 2);
}

void CTextEdit::keepCaretInSight() {
    const CCoord room = std::max(textArea().getWidth() - kCaretWidth, 0.0);
    const CCoord caret = widthUpTo(entry_->line.caret());
    const CCoord longest = std::max(widthUpTo(std::string::npos) - room, 0.0);
    entry_->scroll = std::clamp(entry_->scroll, std::max(caret - room, 0.0), caret);
    entry_->scroll = std::min(entry_->scroll, longest);
}

size_t CTextEdit::positionAt(CCoord x) const {
    const std::string& text = entry_->line.text();
    const CCoord wanted = x - textLeft();
    size_t position = 0;
    CCoord before = 0;
    while (position < text.size()) {
        const size_t next = utf8::after(text, position);
        const CCoord behind = widthUpTo(next);
        if (wanted < (before + behind) / 2) return position;
        position = next;
        before = behind;
    }
    return position;
}

void CTextEdit::draw(CDrawContext* context) {
    if (entry_) {
        drawEntry(context);
    } else if (getText().empty() && !placeholder_.empty() && !(getStyle() & kNoDrawStyle)) {
        drawBack(context);
        context->setGlobalAlpha(0.5f);
        drawPlatformText(context, placeholder_);
        context->setGlobalAlpha(1);
    } else {
        CTextLabel::draw(context);
    }
    setDirty(false);
}

void CTextEdit::drawEntry(CDrawContext* context) {
    drawBack(context);
    const CRect area = textArea();
    const TextLine& line = entry_->line;
    const CCoord left = textLeft();
    const CCoord middle = area.getCenter().y;
    const CCoord reach = std::min(area.getHeight() / 2, getFont()->getSize() * 0.7);
    const auto drawBar = [&](CCoord from, CCoord to, const CColor& color) {
        context->setFillColor(color);
        context->drawRect(CRect(left + from, middle - reach, left + to, middle + reach),
                          kDrawFilled);
    };

    context->setClipRect(area);
    if (line.hasSelection())
        drawBar(widthUpTo(line.selectionStart()), widthUpTo(line.selectionEnd()), kSelectionColor);
    context->setFont(getFont());
    context->setFontColor(getFontColor());
    const CRect text(left, area.top, area.right, area.bottom);
    context->drawString(line.text().c_str(), text, kLeftText);
    const CCoord caret = std::floor(widthUpTo(line.caret()));
    drawBar(caret, caret + kCaretWidth, getFontColor());
    context->resetClipRect();
}

}  // namespace VSTGUI
