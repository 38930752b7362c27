// Draws texts with the background and colours of the base class.
#include "editor/views/text_display.h"

namespace editor {

using namespace VSTGUI;

std::string cutToFit(const std::string& text, std::size_t bytes) {
    if (text.size() <= bytes) return text;
    std::size_t end = bytes;
    while (end > 0 && (text[end] & 0xC0) == 0x80) --end;
    return text.substr(0, end);
}

void CTextDisplay::draw(CDrawContext* context) {
    if (!(getStyle() & kNoDrawStyle)) {
        drawBack(context);
        const UTF8String text(fittingText(*context));
#if VSTGUI_VERSION_MINOR < 14
        drawPlatformText(context, text.getPlatformString());
#else
        drawPlatformText(context, text);
#endif
    }
    setDirty(false);
}

std::string CTextDisplay::fittingText(CDrawContext& context) const {
    const std::string text = shownText();
    const std::string shorter = shorterText();
    if (shorter.empty()) return text;
    context.setFont(getFont());
    const CCoord room = getViewSize().getWidth() - 2 * getTextInset().x;
    return context.getStringWidth(text.c_str()) <= room ? text : shorter;
}

void CDisplay::setText(const std::string& text, const std::string& shorter) {
    const std::string cut = cutToFit(text, kLongestText);
    if (cut == text_ && shorter == shorter_) return;
    text_ = cut;
    shorter_ = shorter;
    setDirty();
}

}  // namespace editor
