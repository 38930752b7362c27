// Lets the user type the value of a control.
#include "editor/value_entry.h"

#include <algorithm>

#include "editor/control_change.h"
#include "editor/tags.h"
#include "state/parameter_text.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kWidth = 84;
constexpr CCoord kHeight = 22;
constexpr CColor kBack(30, 30, 32);
constexpr CColor kFrame(150, 150, 155);

// The middle of the control, but inside the frame.
CRect areaOver(const CControl& control, const CPoint& frameSize) {
    const CPoint middle = control.getViewSize().getCenter();
    const CCoord left = std::clamp(middle.x - kWidth / 2, 0.0, std::max(frameSize.x - kWidth, 0.0));
    const CCoord top =
        std::clamp(middle.y - kHeight / 2, 0.0, std::max(frameSize.y - kHeight, 0.0));
    return CRect(left, top, left + kWidth, top + kHeight).makeIntegral();
}

}  // namespace

ValueEntry::ValueEntry(const EditorHost& host)
    : host_(host), field_(owned(new CPopUpField(CRect(), this, kNoTag))) {
    field_->setBackColor(kBack);
    field_->setFrameColor(kFrame);
    field_->setVisible(false);
    field_->registerViewEventListener(this);
}

ValueEntry::~ValueEntry() noexcept {
    field_->unregisterViewEventListener(this);
    field_->setListener(nullptr);
}

void ValueEntry::open(CControl& control) {
    CFrame* const frame = control.getFrame();
    if (!frame || !host_.isParameter(control.getTag())) return;
    control_ = &control;
    const int index = control.getTag();
    field_->open(areaOver(control, frame->getViewSize().getSize()),
                 UTF8String(state::plainText(index, host_.parameter(index))));
}

void ValueEntry::valueChanged(CControl*) {
    const auto control = control_;  // the host may close the editor meanwhile
    if (!control || !control->isAttached()) return;
    const auto value = state::valueFromText(control->getTag(), field_->getText().getString());
    if (value) changeTo(*control, *value);
}

// The control gets the keyboard back after its field.
void ValueEntry::viewOnEvent(CView*, Event& event) {
    if (event.type != EventType::KeyDown || !control_ || !field_->getFrame()) return;
    const VirtualKey key = castKeyboardEvent(event).virt;
    if (key != VirtualKey::Return && key != VirtualKey::Enter && key != VirtualKey::Escape) return;
    const auto control = control_;
    field_->getFrame()->doAfterEventProcessing([control] {
        if (control->getFrame()) control->getFrame()->setFocusView(control);
    });
}

}  // namespace editor
