// The screen shown in place of a missing skin, with a field for the data path.
#pragma once

#include <string>

#include "vstgui/vstgui.h"

namespace editor {

constexpr int kDataFolderScreenWidth = 600;
constexpr int kDataFolderScreenHeight = 200;

// Return stores the path in the settings, even if it was typed before a press elsewhere.
// `complaint` tells the user if that fails.
class CPathFill : public VSTGUI::CTextEdit {
  public:
    static constexpr std::size_t kLongestPath = 259;

    CPathFill(const VSTGUI::CRect& size, VSTGUI::CTextLabel* title, VSTGUI::CTextLabel* complaint);

    void looseFocus() override;

  private:
    VSTGUI::SharedPointer<VSTGUI::CTextLabel> title_;
    VSTGUI::SharedPointer<VSTGUI::CTextLabel> complaint_;
};

// Fills a frame of the size above. A `reason` that is not empty gets a line of its own.
void buildDataFolderScreen(VSTGUI::CFrame& frame, const std::string& reason);

}  // namespace editor
