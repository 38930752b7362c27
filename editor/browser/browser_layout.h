// Where the parts of the sound browser are, in the coordinates of the frame.
#pragma once

#include <string>
#include <vector>

#include "editor/browser/sound_browser.h"
#include "vstgui/vstgui.h"

namespace editor {

struct BrowserButton {
    SoundBrowser::Action action;
    const char* text;
    VSTGUI::CRect area;
};

struct BrowserLayout {
    static constexpr VSTGUI::CCoord kLeastWidth = 360;
    static constexpr VSTGUI::CCoord kLeastHeight = 240;
    static constexpr VSTGUI::CCoord kHeading = 24;
    static constexpr VSTGUI::CCoord kGap = 4;
    static constexpr VSTGUI::CCoord kNumberWidth = 18;
    static constexpr VSTGUI::CCoord kHeartWidth = 11;
    static constexpr int kTabs = 3;

    // Fits into a frame of this size and shows the columns of the browser.
    BrowserLayout(const VSTGUI::CPoint& frame, const SoundBrowser& browser);
    static bool fits(const VSTGUI::CPoint& frame);

    // The first column begins at the top of the grid, minus what is scrolled.
    VSTGUI::CRect column(int number, VSTGUI::CCoord scrolled) const;
    VSTGUI::CRect row(int column, int number, VSTGUI::CCoord scrolled) const;
    // The room for the name in a row, beside its number, star and heart.
    static VSTGUI::CRect nameIn(const VSTGUI::CRect& row, const BrowserItem& item, bool heart);
    VSTGUI::CCoord mostScrolled() const { return std::max(contents - grid.getHeight(), 0.0); }

    VSTGUI::CRect panel;
    VSTGUI::CRect tabs[kTabs];
    VSTGUI::CRect search;
    VSTGUI::CRect place;  // the text before it
    VSTGUI::CRect close;
    VSTGUI::CRect grid;
    VSTGUI::CRect detail;
    std::vector<BrowserButton> buttons;  // without area where there is no room
    int columnsAcross = 1;
    VSTGUI::CCoord bandGap = 0;  // from a row of columns to the next
    VSTGUI::CCoord rowHeight = 0;
    VSTGUI::CCoord contents = 0;  // height of all columns
};

}  // namespace editor
