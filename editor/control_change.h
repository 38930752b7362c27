// Changes a control as one gesture of the user.
#pragma once

#include "vstgui/vstgui.h"

namespace editor {

// Sets the value and reports it to the listener, also if it is the present one.
inline void changeTo(VSTGUI::CControl& control, float value) {
    control.beginEdit();
    control.setValue(value);
    control.valueChanged();
    control.endEdit();
    control.setDirty();
}

}  // namespace editor
