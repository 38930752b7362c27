// Draws the about picture and its lines.
#include "editor/views/about_view.h"

#include <string>

#include "editor/tags.h"
#include "platform/file.h"
#include "platform/folders.h"
#include "platform/message_box.h"
#include "platform/open_document.h"
#include "platform/product.h"
#include "state/data_folder.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr const char* kTechnology = "VST Plug-In Technology by Steinberg";
constexpr CCoord kLineHeight = 18;
constexpr CCoord kMargin = 16;
constexpr CColor kHelpColor(255, 220, 120);

// Line numbers, counted from the bottom of the picture.
constexpr int kHelpLine = 0;
constexpr int kTechnologyLine = 1;
constexpr int kProductLine = 2;

}  // namespace

void openHelp() {
    const std::string folders[] = {state::findDataFolder(platform::kProductName).value_or(""),
                                   platform::resourceFolder().value_or("")};
    for (const std::string& folder : folders) {
        const std::string path = folder + state::kHelpFile;
        if (folder.empty() || !platform::fileExists(path)) continue;
        if (!platform::openDocument(path)) {
            platform::showMessage("Help", path, platform::MessageIcon::kNone);
        }
        return;
    }
}

CAbout::CAbout(const CRect& size, CBitmap* picture) : CControl(size, nullptr, kNoTag, picture) {}

CRect CAbout::line(int fromBottom) const {
    CRect line = getViewSize();
    line.bottom -= kMargin + fromBottom * kLineHeight;
    line.top = line.bottom - kLineHeight;
    return line;
}

void CAbout::draw(CDrawContext* context) {
    if (CBitmap* const picture = getDrawBackground()) picture->draw(context, getViewSize());
    context->setDrawMode(kAntiAliasing);
    context->setFont(kNormalFontBig, 0, kBoldFace);
    context->setFontColor(kWhiteCColor);
    const std::string product =
        std::string(platform::kProductName) + ' ' + platform::productVersion();
    context->drawString(product.c_str(), line(kProductLine));
    context->setFont(kNormalFontSmall);
    context->drawString(kTechnology, line(kTechnologyLine));
    context->setFont(kNormalFontSmall, 0, kUnderlineFace);
    if (state_ == kHelp) context->setFontColor(kHelpColor);
    context->drawString("Help", line(kHelpLine));
    setDirty(false);
}

void CAbout::follow(const CPoint& pointer) {
    const State state = line(kHelpLine).pointInside(pointer) ? kHelp : kShowing;
    if (state == state_) return;
    state_ = state;
    invalid();
}

CMouseEventResult CAbout::onMouseMoved(CPoint& where, const CButtonState&) {
    follow(where);
    return kMouseEventHandled;
}

CMouseEventResult CAbout::onMouseDown(CPoint& where, const CButtonState& buttons) {
    follow(where);
    if (state_ == kHelp && buttons.isLeftButton()) openHelp();
    state_ = kShowing;
    valueChanged();
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

void CAbout::onKeyboardEvent(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown || event.virt != VirtualKey::Escape) return;
    event.consumed = true;
    state_ = kShowing;
    valueChanged();
}

}  // namespace editor
