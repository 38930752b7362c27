// Explains the view under the pointer after a moment of rest.
#include "editor/hover_help.h"

#include <utility>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr uint32_t kRestTime = 800;    // milliseconds
constexpr uint32_t kFollowTime = 200;  // between two looks at a value that may move
constexpr CCoord kNear = 30;

// A control and what shows its value beside it, which the user wants to see meanwhile.
CRect areaAround(const CView& view) {
    CRect area = view.getViewSize();
    const auto* const control = dynamic_cast<const CControl*>(&view);
    if (!control || control->getTag() < 0) return area;
    const CRect reach = CRect(area).extend(kNear, kNear);
    view.getFrame()->forEachChild([&](CView* other) {
        const auto* const twin = dynamic_cast<const CControl*>(other);
        if (!twin || twin->getTag() != control->getTag()) return;
        if (reach.rectOverlap(twin->getViewSize())) area.unite(twin->getViewSize());
    });
    return area;
}

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
    if (view_) tip_->show(describe_(*view_), areaAround(*view_));
}

}  // namespace editor
