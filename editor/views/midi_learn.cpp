// The menu for MIDI learn.
#include "editor/views/midi_learn.h"

#include <string>
#include <vector>

#include "editor/views/pop_up_menu.h"
#include "state/controller_map.h"

namespace editor {

using namespace VSTGUI;

CMidiLearn::CMidiLearn(CControl* control, EditorHost& host) : control_(control), host_(host) {
    control_->registerViewEventListener(this);
}

CMidiLearn::~CMidiLearn() noexcept {
    control_->unregisterViewEventListener(this);
}

void CMidiLearn::viewOnEvent(CView*, Event& event) {
    if (event.type != EventType::MouseDown) return;
    MouseDownEvent& press = castMouseDownEvent(event);
    if (!control_->getFrame()) return;
    const bool isArmed = host_.learnSlot().armed() == control_->getTag();
    if (!isArmed && !press.buttonState.isRight()) return;
    press.consumed = true;
    press.ignoreFollowUpMoveAndUpEvents(true);
    if (isArmed) return host_.learnSlot().disarm();
    openMenu(press.mousePosition);
}

void CMidiLearn::openMenu(const CPoint& where) {
    const int parameter = control_->getTag();
    const int controller = state::controllerMap().controller(parameter);
    std::vector<std::string> lines = {"MidiLearn"};
    if (controller != state::ControllerMap::kUnbound) {
        lines.push_back("Forget CC " + std::to_string(controller));
    }
    EditorHost& host = host_;
    popUpMenu(*control_->getFrame(), where, lines, kNoLine, [&host, parameter](int line) {
        if (line == 0) {
            host.learnSlot().arm(parameter);
        } else {
            state::controllerMap().bind(parameter, state::ControllerMap::kUnbound);
        }
    });
}

}  // namespace editor
