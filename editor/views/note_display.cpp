// Names and draws the held note.
#include "editor/views/note_display.h"

#include <utility>

namespace editor {

using namespace VSTGUI;

std::string noteText(int heldNotes, int key) {
    constexpr const char* kNames[] = {"C",  "C#", "D",  "D#", "E",  "F",
                                      "F#", "G",  "G#", "A",  "A#", "B"};
    if (heldNotes > 1) return "Chord";
    if (heldNotes < 1 || key < 0) return "OFF";
    return std::string(kNames[key % 12]) + ' ' + std::to_string(key / 12 - 2);
}

CNoteDisplay::CNoteDisplay(const CRect& size, const EditorHost& host)
    : CView(size), host_(host), shown_(noteText(host.heldNotes(), host.lastKey())) {
    setWantsIdle(true);
}

void CNoteDisplay::draw(CDrawContext* context) {
    context->setDrawMode(kAliasing);
    context->setFillColor(backColor_);
    context->setFrameColor(backColor_);
    context->drawRect(getViewSize(), isDirty() ? kDrawFilledAndStroked : kDrawFilled);
    context->setFont(kNormalFont);
    context->setFontColor(fontColor_);
    context->drawString(shown_.c_str(), getViewSize());
    setDirty(false);
}

void CNoteDisplay::onIdle() {
    if (!looks_.isDue()) return;
    std::string text = noteText(host_.heldNotes(), host_.lastKey());
    if (text == shown_) return;
    shown_ = std::move(text);
    invalid();
}

}  // namespace editor
