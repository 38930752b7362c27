// The data-folder screen.
#include "editor/views/path_fill.h"

#include <string>

#include "editor/tags.h"
#include "editor/views/text_display.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/path_text.h"
#include "platform/product.h"
#include "state/data_folder.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CColor kScreenColor(201, 201, 255);
constexpr CColor kFieldColor(128, 128, 255);
constexpr const char* kDataFolder = "Tembrilon Data";
constexpr const char* kHint = "Enter here the full path to your Tembrilon Data folder";
constexpr CCoord kMargin = 20;
constexpr CCoord kLineHeight = 18;

CRect row(CCoord top) {
    return {kMargin, top, kDataFolderScreenWidth - kMargin, top + kLineHeight};
}

CTextLabel* addLine(CFrame& frame, CCoord top, const std::string& text, int32_t face) {
    auto* const label = new CTextLabel(row(top), text.c_str());
    const auto font = makeOwned<CFontDesc>(*kNormalFont);
    font->setStyle(face);
    label->setFont(font);
    label->setFontColor(kBlackCColor);
    label->setTransparency(true);
    label->setHoriAlign(kLeftText);
    label->setMouseEnabled(false);
    frame.addView(label);
    return label;
}

std::string examplePath() {
    const std::string base = platform::applicationDataFolder().value_or("");
    return platform::utf8FromPath(base) + platform::kSeparator + kDataFolder +
           platform::kSeparator + platform::kProductName;
}

}  // namespace

CPathFill::CPathFill(const CRect& size, CTextLabel* title, CTextLabel* complaint)
    : CTextEdit(size, nullptr, kNoTag, kHint), title_(title), complaint_(complaint) {
    setFontColor(kWhiteCColor);
    setBackColor(kFieldColor);
    setFrameColor(kFieldColor);
}

// The base class does not report an unchanged text, so Return is checked here.
void CPathFill::looseFocus() {
    const bool confirmed = bWasReturnPressed;
    CTextEdit::looseFocus();
    if (!confirmed || getText() == UTF8String(kHint)) return;
    const std::string path = cutToFit(getText().getString(), kLongestPath);
    if (state::settings().write(state::kDataPathSetting, path)) return;
    title_->setText("Not Saved!");
    complaint_->setText("Registry Can't be written");
}

void buildDataFolderScreen(CFrame& frame, const std::string& reason) {
    frame.setBackgroundColor(kScreenColor);
    const std::string folder = std::string("\"") + kDataFolder + '"';
    CTextLabel* const title = addLine(
        frame, 14, "The plugin is not installed correctly, some files are missing.", kBoldFace);
    addLine(frame, 38,
            "Please find the " + folder + " folder and type the full path of this plug-in's files,",
            kNormalFace);
    addLine(frame, 56, "for example " + examplePath(), kNormalFace);
    CTextLabel* const complaint = addLine(frame, 112, reason, kBoldFace);
    addLine(frame, 134,
            "Alternatively you may place the files along with the DLL in the VSTplugins folder.",
            kNormalFace);
    addLine(frame, 160, "Press Enter and reload the plugin.", kBoldFace);
    frame.addView(new CPathFill(row(86).extend(0, 3), title, complaint));
}

}  // namespace editor
