// The screen that is shown in place of a skin that is missing, with the field for the data path.
#pragma once

#include <string>

#include "vstgui/vstgui.h"

namespace editor {

constexpr int kDataFolderScreenWidth = 600;
constexpr int kDataFolderScreenHeight = 200;

// Return keeps the typed path in the settings, also one typed before a press elsewhere; if that
// fails, `complaint` says so.
class CPathFill : public VSTGUI::CTextEdit {
  public:
    static constexpr std::size_t kLongestPath = 259;

    CPathFill(const VSTGUI::CRect& size, VSTGUI::CTextLabel* title, VSTGUI::CTextLabel* complaint);

    void looseFocus() override;

  private:
    VSTGUI::SharedPointer<VSTGUI::CTextLabel> title_;
    VSTGUI::SharedPointer<VSTGUI::CTextLabel> complaint_;
};

// Fills a frame of the size above. `reason` is a line of its own, if not empty.
void buildDataFolderScreen(VSTGUI::CFrame& frame, const std::string& reason);

}  // namespace editor
