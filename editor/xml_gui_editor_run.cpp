// The open editor: sends what its controls do, and follows the instrument.
#include "editor/xml_gui_editor.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "editor/parameter_line.h"
#include "state/controller_map.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr const char* kNothingRead = "Parameter Value";
constexpr const char* kSkinNotice = "Please close this windows to load the skin";

}  // namespace

void xmlGuiEditor::valueChanged(CControl* control) {
    const int tag = control->getTag();
    if (host_.isParameter(tag)) {
        sendParameter(*control);
    } else if (isSwitch(tag)) {
        sendSwitch(tag - kFirstSwitchTag, control->getValue());
    } else if (tag == kSizeCommand && dynamic_cast<COptionMenu*>(control)) {
        zoomTo(zoomSteps()[static_cast<std::size_t>(control->getValue())]);
    } else if (isCommand(tag)) {
        const bool pressed = tag == kCompareCommand || control->getValue() == control->getMax();
        const CRect& area = control->getViewSize();
        if (pressed) run(tag, CPoint(area.left, area.bottom));
    } else if (tag == kSkinSelectorTag) {
        selectSkin(static_cast<int>(control->getValue()));
    } else {
        otherControlChanged(control);
    }
    redrawLinked(tag);
}

// Control-click resets a control. It does nothing on a menu, which would change unseen.
std::int32_t xmlGuiEditor::controlModifierClicked(CControl* control, CButtonState buttons) {
    const bool resets = buttons.isLeftButton() && buttons.getModifierState() == kControl;
    return resets && dynamic_cast<COptionMenu*>(control) ? 1 : 0;
}

void xmlGuiEditor::sendParameter(CControl& control) {
    float value = control.getValue();
    if (const auto* const menu = dynamic_cast<COptionMenu*>(&control)) {
        const int last = menu->getNbEntries() - 1;
        if (last < 1) return;
        value = static_cast<float>(menu->getCurrentIndex()) / static_cast<float>(last);
    }
    host_.setParameterAutomated(control.getTag(), value);
}

void xmlGuiEditor::sendSwitch(int number, float value) {
    for (const SwitchPreset& preset : switchPresets_) {
        if (preset.switchNumber != number || preset.position != static_cast<int>(value)) continue;
        host_.setParameter(preset.parameter, preset.value);
    }
}

void xmlGuiEditor::selectSkin(int index) {
    if (index < 0 || index >= static_cast<int>(skins_.installed.size())) return;
    skinChanged_ = true;
    idle();
    opensChosenSkin_ = chooseSkin(skins_.installed[index].name);
}

// Opens the chosen skin in the same window. Where the host grants no other size, the notice stays.
void xmlGuiEditor::openChosenSkin() {
    opensChosenSkin_ = false;
    const CPoint shown = size_;
    const bool exists = measureSkin();
    const CPoint wanted = size_;
    const double zoom = exists ? wantedZoom() : 1;
    size_ = shown;
    if (!exists) return;
    const EditorRect before = getRect();
    setRect(wanted.x * zoom, wanted.y * zoom);  // a host may ask while it resizes
    const EditorRect asked = getRect();
    if (!host_.sizeWindow(asked.right, asked.bottom)) return setRect(before.right, before.bottom);
    if (isOpen()) open(parentWindow_);  // the host may have closed it
}

void xmlGuiEditor::redrawLinked(int source) {
    for (const auto& [from, to] : parameterLinks_) {
        if (from != source) continue;
        const auto range = controls_.equal_range(to);
        for (auto it = range.first; it != range.second; ++it) it->second->setDirty();
    }
}

void xmlGuiEditor::idle() {
    if (dataFolderScreen_) return AEffGUIEditor::idle();
    const bool isOutermost = !inIdle_;  // no control is at work
    if (isOutermost) {
        inIdle_ = true;
        AEffGUIEditor::idle();
        inIdle_ = false;
    }
    state::controllerMap().saveIfChanged();
    if (!isOpen()) return;  // an event may have closed the editor
    followLearning();
    followChanges();
    writeReadOut();
    showSkinNotice();
    if (isOutermost && opensChosenSkin_) openChosenSkin();
}

// Shows all changes since the last call at once, so a program change does not appear bit by bit.
void xmlGuiEditor::followChanges() {
    const std::uint64_t changed = host_.takeChangedParameters() | std::exchange(released_, 0);
    if (changed == 0) return;
    for (int index = 0; index < host_.parameterCount(); ++index) {
        if (changed >> index & 1) followParameter(index);
    }
    followSwitches();
    showCompare();
}

void xmlGuiEditor::followParameter(int index) {
    const auto range = controls_.equal_range(index);
    for (auto it = range.first; it != range.second; ++it) {
        CControl& control = *it->second;
        if (control.isEditing()) continue;  // updated when the gesture ends
        showValue(control);
        control.setDirty();
    }
    redrawLinked(index);
}

void xmlGuiEditor::showValue(CControl& control) {
    const int index = control.getTag();
    const float value = host_.parameter(index);
    if (auto* const menu = dynamic_cast<COptionMenu*>(&control)) {
        menu->setValue(value * static_cast<float>(menu->getNbEntries() - 1));
    } else if (auto* const display = dynamic_cast<CDisplay*>(&control)) {
        display->setText(display->showsUnits() ? shortValueWithUnit(host_, index)
                                               : host_.parameterDisplay(index));
        control.setValue(value);
    } else if (dynamic_cast<COnOffButton*>(&control)) {
        // The button lights only at exactly 1, but the engine switches at the middle.
        control.setValue(value > 0.5f ? 1.0f : 0.0f);
    } else {
        control.setValue(value);
    }
}

void xmlGuiEditor::beginEdit(std::int32_t tag) {
    if (host_.isParameter(tag) || isSwitch(tag)) tools_.history().begin();
    if (aids_) aids_->hover->setColor(kDragColor);
    AEffGUIEditor::beginEdit(tag);
}

void xmlGuiEditor::endEdit(std::int32_t tag) {
    AEffGUIEditor::endEdit(tag);
    if (aids_) aids_->hover->setColor(kHoverColor);
    if (isSwitch(tag)) tools_.history().end("switches");
    if (!host_.isParameter(tag)) return;
    tools_.history().end(panelName(tag), tag);
    released_ |= std::uint64_t{1} << tag;
}

void xmlGuiEditor::writeReadOut() {
    if (readOuts_.empty()) return;
    const bool isLearnTag = currentTag_ > 0 && (currentTag_ & kLearnTagBase) != 0;
    const int index = isLearnTag ? currentTag_ & kLearnTagMask : currentTag_;
    const bool readsNothing = !host_.isParameter(learning_) && !host_.isParameter(index);
    if (std::exchange(readsNothing_, readsNothing) && readsNothing) return;
    if (host_.isParameter(learning_)) {
        const std::string request = "move a controller... (Esc)";
        const std::string line = panelName(learning_) + ": " + request;
        for (CDisplay* const display : readOuts_) display->setText(line, request);
        return;
    }
    for (CDisplay* const display : readOuts_) {
        std::string line = kNothingRead;
        if (host_.isParameter(index)) {
            line = display->showsUnits()
                       ? titleAndValue(host_, index)
                       : host_.parameterName(index) + ": " + host_.parameterDisplay(index) + ' ' +
                             host_.parameterLabel(index);
        }
        display->setText(line);
    }
}

void xmlGuiEditor::showSkinNotice() {
    if (!skinChanged_) return;
    skinChanged_ = false;
    auto* const notice = new CDisplay(CRect(CPoint(), size_));
    notice->setStyle(CParamDisplay::kNoFrame);  // VSTGUI fills only to the middle of a frame
    notice->setText(kSkinNotice);
    frame->addView(notice);
}

void xmlGuiEditor::onMouseEntered(CView* view, CFrame*) {
    const auto* const control = dynamic_cast<CControl*>(view);
    if (aids_) {
        aids_->help.entered(view);
        aids_->hover->surround(control && control->wantsFocus() ? control : nullptr);
    }
    currentView_ = view;
    currentTag_ = control ? control->getTag() : kNoTag;
}

void xmlGuiEditor::onMouseExited(CView* view, CFrame*) {
    if (view != currentView_) return;
    if (aids_) {
        aids_->help.left();
        aids_->hover->surround(nullptr);
    }
    currentView_ = nullptr;
    currentTag_ = kNoTag;
}

bool xmlGuiEditor::onWheel(double notches) {
    if (!isOpen() || !currentView_ || !std::isfinite(notches)) return false;
    MouseWheelEvent event;
    frame->getCurrentMouseLocation(event.mousePosition);
    event.deltaY = notches;
    frame->dispatchEvent(event);
    return event.consumed;
}

// A right press on the background, where no view is, opens the menu of the editor.
void xmlGuiEditor::onMouseEvent(MouseEvent& event, CFrame* in) {
    if (event.type != EventType::MouseDown) return;
    if (aids_) {
        aids_->help.left();
        aids_->focus->surround(nullptr);
    }
    if (event.consumed || !event.buttonState.isRight()) return;
    const auto everywhere = GetViewOptions().deep();
    if (in->getModalView() || in->getViewAt(event.mousePosition, everywhere)) return;
    event.consumed = true;
    castMouseDownEvent(event).ignoreFollowUpMoveAndUpEvents(true);
    openMenu(event.mousePosition);
}

// Double-size pictures take memory and time, so they are read only when zoomed, and after all plain
// ones.
void xmlGuiEditor::readDoublePictures() {
    if (!pictures_ || frame->getZoom() <= 1) return;
    pictures_->readDoubles();
    frame->invalid();
}

}  // namespace editor
