// Fits the parts of the sound browser into any frame.
#include "editor/browser/browser_layout.h"

#include <algorithm>
#include <cmath>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kMargin = 6;
const CPoint kLargest(1240, 640);
constexpr CCoord kHeader = 48;
constexpr CCoord kFooter = 72;
constexpr CCoord kButtonHeight = 24;
constexpr CCoord kSide = 12;  // between the edge of the panel and what is in it
constexpr CCoord kSoundWidth = 112;
constexpr CCoord kFileWidth = 190;
constexpr int kMostAcross = 8;
constexpr CCoord kLeastRow = 18;
constexpr CCoord kMostRow = 24;
constexpr CCoord kMostSpare = 16;  // more between two bands of columns, where there is room
constexpr CCoord kStarWidth = 8;

struct ButtonRow {
    SoundBrowser::Action action;
    const char* text;
    CCoord width;
    CCoord space;  // before it
};

constexpr ButtonRow kHeaderButtons[] = {
    {SoundBrowser::kFavouritesOnly, "\u2665 Favourites", 92, 18},
    {SoundBrowser::kShowInit, "Init slots", 72, 6},
};
constexpr ButtonRow kFooterButtons[] = {
    {SoundBrowser::kCopy, "Copy", 64, 0},
    {SoundBrowser::kPaste, "Paste", 64, 6},
    {SoundBrowser::kRevert, "Revert", 68, 18},
    {SoundBrowser::kFactory, "Factory sound", 108, 6},
    {SoundBrowser::kKeep, "Keep in library", 112, 18},
    {SoundBrowser::kSaveSound, "Save sound...", 104, 6},
    {SoundBrowser::kSaveBank, "Save bank...", 96, 6},
};
constexpr ButtonRow kNamingButtons[] = {
    {SoundBrowser::kSave, "Save", 80, 0},
    {SoundBrowser::kCancel, "Cancel", 80, 6},
};

template <std::size_t Count>
void addButtons(std::vector<BrowserButton>& buttons, const ButtonRow (&rows)[Count], CPoint at,
                CCoord right) {
    for (const ButtonRow& row : rows) {
        at.x += row.space;
        CRect area(at, CPoint(row.width, kButtonHeight));
        if (area.right > right) area = CRect();
        buttons.push_back({row.action, row.text, area});
        at.x += row.width;
    }
}

}  // namespace

bool BrowserLayout::fits(const CPoint& frame) {
    return frame.x >= kLeastWidth && frame.y >= kLeastHeight;
}

BrowserLayout::BrowserLayout(const CPoint& frame, const SoundBrowser& browser) {
    const CPoint size(std::min(frame.x - 2 * kMargin, kLargest.x),
                      std::min(frame.y - 2 * kMargin, kLargest.y));
    panel =
        CRect(CPoint(std::floor((frame.x - size.x) / 2), std::floor((frame.y - size.y) / 2)), size);

    const CCoord top = panel.top + (kHeader - kButtonHeight) / 2;
    close = CRect(panel.right - 40, top, panel.right - kSide, top + kButtonHeight);
    const CCoord tabWidth = std::min(72.0, std::floor(size.x / 6));
    CCoord x = panel.left + kSide;
    for (CRect& tab : tabs) {
        tab = CRect(x, panel.top, x + tabWidth, panel.top + kHeader);
        x += tabWidth;
    }
    const CCoord searchWidth = std::min(230.0, size.x / 3);
    search = CRect(close.left - 8 - searchWidth, top, close.left - 8, top + kButtonHeight);
    place = CRect(x + kSide, top, search.left - 10, top + kButtonHeight);
    const CCoord bottom = panel.bottom - kSide;
    const CPoint first(panel.left + kSide, bottom - kButtonHeight);
    const CCoord right = panel.right - kSide;
    if (browser.isNaming()) {
        addButtons(buttons, kNamingButtons, first, right);
    } else {
        if (browser.page() != SoundBrowser::kFiles) {
            addButtons(buttons, kHeaderButtons, CPoint(x, top), search.left - 8);
        }
        addButtons(buttons, kFooterButtons, first, right);
    }
    detail = CRect(panel.left + kSide, panel.bottom - kFooter, panel.right - kSide,
                   bottom - kButtonHeight);

    grid = CRect(panel.left + kSide - kGap, panel.top + kHeader + 8, panel.right - kSide + kGap,
                 panel.bottom - kFooter - 4);
    const CCoord least = browser.page() == SoundBrowser::kSounds ? kSoundWidth : kFileWidth;
    columnsAcross =
        std::clamp(static_cast<int>(std::floor(grid.getWidth() / least)), 1, kMostAcross);
    const int columns = static_cast<int>(browser.columns().size());
    const int bands = std::max((columns + columnsAcross - 1) / columnsAcross, 1);
    const CCoord room = std::floor((grid.getHeight() / std::min(bands, 2) - kHeading - kGap) /
                                   BrowserColumn::kMostRows);
    rowHeight = std::clamp(room, kLeastRow, kMostRow);
    const CCoord height = kHeading + BrowserColumn::kMostRows * rowHeight;
    const CCoord spare = grid.getHeight() - std::min(bands, 2) * (height + kGap) + kGap;
    bandGap = kGap + std::clamp(std::floor(spare / 2), 0.0, kMostSpare);
    contents = bands * (height + bandGap) - bandGap;
}

CRect BrowserLayout::column(int number, CCoord scrolled) const {
    const CCoord height = kHeading + BrowserColumn::kMostRows * rowHeight;
    const int band = number / columnsAcross;
    const auto edge = [this](int place) {
        return grid.left + std::floor(place * grid.getWidth() / columnsAcross);
    };
    const int place = number % columnsAcross;
    const CCoord top = grid.top - scrolled + band * (height + bandGap);
    return {edge(place) + kGap, top, edge(place + 1) - kGap, top + height};
}

CRect BrowserLayout::row(int columnNumber, int number, CCoord scrolled) const {
    const CRect area = column(columnNumber, scrolled);
    const CCoord top = area.top + kHeading + number * rowHeight;
    return {area.left, top, area.right, top + rowHeight};
}

CRect BrowserLayout::nameIn(const CRect& row, const BrowserItem& item, bool heart) {
    CRect name = row;
    name.left += 2 + (item.kind == BrowserItem::kProgram ? kNumberWidth : 0);
    name.right -= (item.edited ? kStarWidth : 0) + (heart ? kHeartWidth : 0);
    return name;
}

}  // namespace editor
