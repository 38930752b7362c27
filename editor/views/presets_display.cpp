// The preset line, its list and its name field.
#include "editor/views/presets_display.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "editor/browser/sound_list.h"
#include "editor/browser/sound_slots.h"
#include "editor/views/pop_up_menu.h"
#include "editor/tags.h"
#include "editor/views/text_display.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr uint32_t kSecondClickTime = 300;  // milliseconds

}  // namespace

CPresetsDisplay::CPresetsDisplay(const CRect& size, EditorHost& host, std::function<bool()> browse)
    : CView(size),
      host_(host),
      browse_(std::move(browse)),
      shown_(line(host.program())),
      nameField_(
          makeOwned<CPopUpField>(textArea(), this, kNoTag, "", nullptr, CParamDisplay::kNoFrame)) {
    nameField_->setVisible(false);
    setWantsIdle(true);
    setWantsFocus(true);
}

void CPresetsDisplay::setFontColor(const CColor& color) {
    fontColor_ = color;
    nameField_->setFontColor(color);
}

void CPresetsDisplay::setBackColor(const CColor& color) {
    backColor_ = color;
    nameField_->setBackColor(color);
}

std::string CPresetsDisplay::line(int program) const {
    return programNumber(program) + ' ' + host_.programName(program) +
           (isEdited(host_, program) ? " *" : "");
}

CRect CPresetsDisplay::textArea() const {
    CRect area = getViewSize();
    const CCoord arrow = std::min(area.getHeight(), area.getWidth() / 4);
    return area.inset(arrow, 0);
}

void CPresetsDisplay::draw(CDrawContext* context) {
    const CRect& view = getViewSize();
    const CRect text = textArea();
    context->setDrawMode(kAliasing);
    context->setFillColor(backColor_);
    context->drawRect(view, kDrawFilled);
    context->setFont(kNormalFont);
    context->setFontColor(fontColor_);
    context->drawString("<", CRect(view.left, view.top, text.left, view.bottom));
    context->drawString(">", CRect(text.right, view.top, view.right, view.bottom));
    context->saveGlobalState();
    context->setClipRect(text);
    context->drawString(shown_.c_str(), text);
    context->restoreGlobalState();
    setDirty(false);
}

void CPresetsDisplay::onIdle() {
    if (looks_.isDue()) showProgram();
}

void CPresetsDisplay::showProgram() {
    std::string now = line(host_.program());
    if (now == shown_) return;
    shown_ = std::move(now);
    invalid();
}

bool CPresetsDisplay::removed(CView* parent) {
    clickTimer_ = nullptr;
    nameField_->setListener(nullptr);
    return CView::removed(parent);
}

CMouseEventResult CPresetsDisplay::onMouseDown(CPoint& where, const CButtonState& buttons) {
    if (!buttons.isLeftButton()) return kMouseEventNotHandled;
    const CRect text = textArea();
    if (where.x < text.left) {
        step(-1);
    } else if (where.x >= text.right) {
        step(1);
    } else if (buttons.isDoubleClick()) {
        clickTimer_ = nullptr;
        // The press still gives the focus to this view.
        const auto self = shared(this);
        if (getFrame()) getFrame()->doAfterEventProcessing([self] { self->rename(); });
    } else {
        clickTimer_ =
            makeOwned<CVSTGUITimer>([this](CVSTGUITimer*) { openList(); }, kSecondClickTime);
    }
    return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
}

void CPresetsDisplay::onMouseWheelEvent(MouseWheelEvent& event) {
    wheelRest_ -= event.deltaY;  // down moves to the next program, as in a list
    const double notches = std::trunc(wheelRest_);
    wheelRest_ -= notches;
    if (notches != 0) step(static_cast<int>(std::clamp(notches, -16.0, 16.0)));
    event.consumed = true;
}

// The keys do what the pointer does: arrows step, Return opens the list, F2 renames.
void CPresetsDisplay::onKeyboardEvent(KeyboardEvent& event) {
    if (event.type != EventType::KeyDown || !event.modifiers.empty()) return;
    event.consumed = true;
    if (event.virt == VirtualKey::Left || event.virt == VirtualKey::Up) return step(-1);
    if (event.virt == VirtualKey::Right || event.virt == VirtualKey::Down) return step(1);
    if (event.virt == VirtualKey::Return) return openList();
    if (event.virt == VirtualKey::F2) return rename();
    event.consumed = false;
}

void CPresetsDisplay::step(int by) {
    const int program = std::clamp(host_.program() + by, 0, host_.programCount() - 1);
    if (program != host_.program()) host_.setProgram(program);
    showProgram();
}

void CPresetsDisplay::openList() {
    const auto timer = std::move(clickTimer_);  // this call may come from it, so keep it alive
    if (timer) timer->stop();
    if (!getFrame() || browse_()) return;
    std::vector<std::string> lines;
    for (int program = 0; program < host_.programCount(); ++program) {
        lines.push_back(line(program));
    }
    EditorHost& host = host_;
    popUpMenu(*getFrame(), CPoint(textArea().left, textArea().bottom), lines, host_.program(),
              [&host](int program) { host.setProgram(program); });
}

void CPresetsDisplay::rename() {
    if (!getFrame()) return;
    named_ = host_.program();
    nameField_->open(textArea(), UTF8String(host_.programName(named_)));
}

void CPresetsDisplay::valueChanged(CControl*) {
    host_.renameProgram(named_, cutToFit(nameField_->getText().getString(), kLongestName));
    showProgram();
}

}  // namespace editor
