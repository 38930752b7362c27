// The looks of the sound browser, in the colours of the skin's sound display.
#include <algorithm>
#include <cmath>
#include <string>

#include "editor/browser/browser_view.h"
#include "platform/utf8.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr const char* kTabTexts[] = {"Sounds", "Library", "Files"};
constexpr const char* kHeart = "\u2665";
constexpr CColor kShade(0, 0, 0, 150);  // over the controls around the panel
constexpr CCoord kLeastName = 8;        // pixels of the font

// How much of the text's colour is in it.
constexpr double kEdge = 0.28;
constexpr double kLine = 0.16;
constexpr double kField = 0.07;
constexpr double kHover = 0.12;
constexpr double kDim = 0.66;
constexpr double kOff = 0.5;  // of what cannot be used now
constexpr double kFaint = 0.32;

std::uint8_t between(std::uint8_t from, std::uint8_t to, double part) {
    return static_cast<std::uint8_t>(from + (to - from) * part + 0.5);
}

// Cut with "..." where it is too long.
std::string fitted(CDrawContext& context, const std::string& text, CCoord width) {
    if (context.getStringWidth(text.c_str()) <= width) return text;
    std::string cut = text;
    while (!cut.empty()) {
        cut.erase(platform::utf8::before(cut, cut.size()));
        while (!cut.empty() && cut.back() == ' ') cut.pop_back();
        const std::string line = cut + "...";
        if (context.getStringWidth(line.c_str()) <= width) return line;
    }
    return cut;
}

void drawFitted(CDrawContext& context, const std::string& text, const CRect& area,
                CHoriTxtAlign align = kLeftText) {
    context.drawString(fitted(context, text, area.getWidth()).c_str(), area, align);
}

}  // namespace

bool setFontToFit(CDrawContext& context, const std::string& text, CCoord width) {
    context.setFont(kNormalFontSmall);
    for (CCoord size = kNormalFontSmall->getSize();; context.setFont(kNormalFontSmall, size)) {
        if (context.getStringWidth(text.c_str()) <= width) return true;
        size -= 0.5;
        if (size < kLeastName) return false;
    }
}

CColor CBrowserView::mixed(double text) const {
    return CColor(between(colors_.back.red, colors_.text.red, text),
                  between(colors_.back.green, colors_.text.green, text),
                  between(colors_.back.blue, colors_.text.blue, text));
}

void CBrowserView::draw(CDrawContext* context) {
    const BrowserLayout now = layout();
    context->setDrawMode(kAliasing);
    context->setFillColor(kShade);
    context->drawRect(getViewSize(), kDrawFilled);
    context->setFillColor(mixed(0.02));
    context->setFrameColor(mixed(kEdge));
    context->drawRect(now.panel, kDrawFilledAndStroked);
    drawHeader(*context, now);
    drawSearch(*context, now);
    drawGrid(*context, now);
    drawFooter(*context, now);
    drawButtons(*context, now);
    setDirty(false);
}

void CBrowserView::drawHeader(CDrawContext& context, const BrowserLayout& layout) const {
    context.setFont(kNormalFontBig, 13, kBoldFace);
    for (int i = 0; i < BrowserLayout::kTabs; ++i) {
        const bool shown = browser_.page() == i;
        const bool hovered = hovered_ == Place{Place::kTab, i};
        const CRect& tab = layout.tabs[i];
        context.setFontColor(shown ? mixed(1) : mixed(hovered ? 0.85 : kDim));
        context.drawString(kTabTexts[i], tab, kLeftText);
        if (!shown) continue;
        context.setFillColor(colors_.accent);
        const CCoord right = tab.left + std::ceil(context.getStringWidth(kTabTexts[i]));
        context.drawRect(CRect(tab.left, tab.bottom - 3, right, tab.bottom - 1), kDrawFilled);
    }
    const CCoord line = layout.tabs[0].bottom;
    context.setFillColor(mixed(kLine));
    context.drawRect(CRect(layout.panel.left + 1, line - 1, layout.panel.right - 1, line),
                     kDrawFilled);
    const bool hovered = hovered_.kind == Place::kClose;
    context.setFont(kNormalFontVeryBig);
    context.setFontColor(mixed(hovered ? 1 : kDim));
    context.drawString("\u00D7", layout.close);
}

void CBrowserView::drawSearch(CDrawContext& context, const BrowserLayout& layout) const {
    const bool naming = browser_.isNaming();
    const std::string& typed = browser_.typed();
    context.setFillColor(mixed(kField));
    context.setFrameColor(naming || !typed.empty() ? colors_.accent : mixed(kEdge));
    context.drawRect(layout.search, kDrawFilledAndStroked);
    CRect text = layout.search;
    text.inset(8, 0);
    context.setFont(kNormalFont);
    context.setFontColor(mixed(naming ? 1 : kDim));
    drawFitted(context, browser_.place(), layout.place, naming ? kRightText : kLeftText);
    if (typed.empty()) {
        context.setFontColor(mixed(kDim));
        drawFitted(context, naming ? "Type a name" : "Type to search", text);
        return;
    }
    context.setFontColor(mixed(1));
    // The end of a long text shows, where the next letter goes.
    context.saveGlobalState();
    context.setClipRect(text);
    const CCoord width = context.getStringWidth(typed.c_str()) + 2;
    if (width > text.getWidth()) text.left = text.right - width;
    if (browser_.isSuggested()) {
        context.setFillColor(mixed(kFaint));
        context.drawRect(CRect(text.left - 2, text.top + 5, text.left + width, text.bottom - 5),
                         kDrawFilled);
    }
    context.drawString(typed.c_str(), text, kLeftText);
    const CCoord end = text.left + width;
    context.setFillColor(colors_.accent);
    context.drawRect(CRect(end - 1, text.top + 5, end, text.bottom - 5), kDrawFilled);
    context.restoreGlobalState();
}

void CBrowserView::drawGrid(CDrawContext& context, const BrowserLayout& layout) const {
    if (browser_.items().empty()) {
        context.setFont(kNormalFontBig);
        context.setFontColor(mixed(kDim));
        const bool own = browser_.page() == SoundBrowser::kLibrary && browser_.typed().empty();
        context.drawString(browser_.isNaming() ? "Type a name, then press Return."
                           : own ? "Your library is empty. \"Keep in library\" puts sounds here."
                                 : "Nothing is called that.",
                           layout.grid);
        return;
    }
    context.saveGlobalState();
    context.setClipRect(layout.grid);
    CRect clip;
    context.getClipRect(clip);
    for (int i = 0; i < static_cast<int>(browser_.columns().size()); ++i) {
        if (layout.column(i, scrolled_).rectOverlap(clip)) drawColumn(context, layout, i);
    }
    context.restoreGlobalState();

    if (layout.mostScrolled() <= 0) return;
    const CCoord height = layout.grid.getHeight();
    const CCoord bar = std::max(height * height / layout.contents, 20.0);
    const CCoord top = layout.grid.top + (height - bar) * scrolled_ / layout.mostScrolled();
    context.setFillColor(mixed(kFaint));
    context.drawRect(CRect(layout.panel.right - 6, top, layout.panel.right - 3, top + bar),
                     kDrawFilled);
}

void CBrowserView::drawColumn(CDrawContext& context, const BrowserLayout& layout,
                              int number) const {
    const BrowserColumn& column = browser_.columns()[number];
    const CRect area = layout.column(number, scrolled_);
    CRect heading(area.left, area.top, area.right, area.top + BrowserLayout::kHeading - 4);
    if (!column.continues) {
        context.setFont(kNormalFontSmall, 0, kBoldFace);
        context.setFontColor(colors_.accent);
        drawFitted(context, column.family, heading.inset(2, 0));
        heading.inset(-2, 0);
    }
    context.setFillColor(mixed(kLine));
    context.drawRect(CRect(heading.left, heading.bottom - 1, heading.right, heading.bottom),
                     kDrawFilled);
    for (int row = 0; row < column.count; ++row) {
        drawItem(context, layout.row(number, row, scrolled_), column.first + row);
    }
}

void CBrowserView::drawItem(CDrawContext& context, const CRect& row, int index) const {
    const BrowserItem& item = browser_.items()[index];
    const bool selected = index == browser_.selected();
    const bool onHeart = hovered_ == Place{Place::kHeart, index};
    const bool hovered = onHeart || hovered_ == Place{Place::kItem, index};
    if (selected || hovered) {
        context.setFillColor(selected ? colors_.accent : mixed(kHover));
        context.drawRect(row, kDrawFilled);
    }
    const CColor ink = selected ? colors_.back : mixed(hovered ? 1 : 0.9);
    const bool heart = item.favourite || (hovered && browser_.page() != SoundBrowser::kFiles);
    CRect text = BrowserLayout::nameIn(row, item, heart);
    if (item.kind == BrowserItem::kProgram) {
        context.setFont(kNormalFontVerySmall);
        context.setFontColor(selected ? colors_.back : mixed(kDim));
        context.drawString(
            programNumber(item.program).c_str(),
            CRect(text.left - BrowserLayout::kNumberWidth, row.top, text.left, row.bottom),
            kLeftText);
    }
    if (heart) {
        context.setFont(kNormalFontSmall);
        const CColor quiet = selected ? colors_.back : mixed(onHeart ? 0.9 : kOff);
        context.setFontColor(item.favourite ? (selected ? colors_.back : colors_.accent) : quiet);
        context.drawString(
            item.favourite || onHeart ? kHeart : "\u25CB",
            CRect(row.right - BrowserLayout::kHeartWidth, row.top, row.right - 1, row.bottom));
    }
    setFontToFit(context, item.name, text.getWidth());
    context.setFontColor(ink);
    const std::string name = fitted(context, item.name, text.getWidth());
    context.drawString(name.c_str(), text, kLeftText);
    if (!item.edited) return;
    text.left += context.getStringWidth(name.c_str()) + 3;
    context.setFont(kNormalFont, 0, kBoldFace);
    context.setFontColor(selected ? colors_.back : colors_.accent);
    context.drawString("*", text, kLeftText);
}

void CBrowserView::drawFooter(CDrawContext& context, const BrowserLayout& layout) const {
    CRect line = layout.detail;
    context.setFillColor(mixed(kLine));
    context.drawRect(CRect(layout.panel.left + 1, line.top, layout.panel.right - 1, line.top + 1),
                     kDrawFilled);
    const std::string detail = browser_.detail();
    context.setFont(kNormalFont, 0, kBoldFace);
    context.setFontColor(mixed(1));
    drawFitted(context, detail, line);
    line.left += std::min(context.getStringWidth(detail.c_str()) + (detail.empty() ? 0 : 14),
                          line.getWidth());
    context.setFont(kNormalFont);
    const bool news = !browser_.status().empty();
    context.setFontColor(news ? colors_.accent : mixed(kDim));
    drawFitted(context, news ? browser_.status() : browser_.remark(), line);
}

void CBrowserView::drawButtons(CDrawContext& context, const BrowserLayout& layout) const {
    for (int i = 0; i < static_cast<int>(layout.buttons.size()); ++i) {
        const BrowserButton& button = layout.buttons[i];
        if (button.area.isEmpty()) continue;
        const bool on = browser_.isOn(button.action);
        const bool usable = browser_.can(button.action);
        const bool hovered = usable && hovered_ == Place{Place::kButton, i};
        context.setFillColor(on ? colors_.accent : mixed(hovered ? kLine : kField));
        context.setFrameColor(on ? colors_.accent : mixed(usable ? kEdge : kLine));
        context.drawRect(button.area, kDrawFilledAndStroked);
        context.setFont(kNormalFontSmall, 0, on ? kBoldFace : kNormalFace);
        context.setFontColor(on ? colors_.back : mixed(!usable ? kOff : hovered ? 1 : 0.85));
        context.drawString(button.text, button.area);
    }
}

}  // namespace editor
