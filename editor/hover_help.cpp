// Explains the view under the pointer after a moment of rest.
#include "editor/hover_help.h"

#include <utility>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr uint32_t kRestTime = 800;    // milliseconds
constexpr uint32_t kFollowTime = 200;  // between two looks at a value that may move

}  // namespace

HoverHelp::HoverHelp(Describe describe)
    : describe_(std::move(describe)), tip_(makeOwned<CToolTip>()) {}

void HoverHelp::entered(CView* view) {
    left();
    view_ = view;
    rest_ = makeOwned<CVSTGUITimer>([this](CVSTGUITimer*) { show(); }, kRestTime);
}

void HoverHelp::left() {
    view_ = nullptr;
    rest_ = nullptr;
    tip_->hide();
}

void HoverHelp::show() {
    rest_->setFireTime(kFollowTime);
    if (view_) tip_->show(describe_(*view_), view_->getViewSize());
}

}  // namespace editor
