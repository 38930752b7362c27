// Creates the controls that the elements of a skin describe.
#pragma once

#include <string_view>

#include "editor/editor_host.h"
#include "editor/picture_cache.h"
#include "editor/skin/skin_values.h"
#include "platform/message_box.h"
#include "vstgui/vstgui.h"

namespace editor {

// Everything needed to create one control.
struct ControlPlan {
    const SkinValues& values;
    const SkinAttributes& attributes;
    PictureCache& pictures;
    VSTGUI::CBitmap* background;  // the frame's picture; may be null
    VSTGUI::IControlListener* listener;
    const EditorHost& host;
    const platform::MessageHandler& report;
};

struct ControlRule {
    std::string_view element;
    // Creates the control with its tag and look but no value. Returns null after telling the user
    // when the element cannot be built.
    VSTGUI::CControl* (*make)(const ControlPlan& plan);
    bool hasDefault;  // resets to the element's default or, without one, to its first value
};

// Ignores case. Returns null for an element that creates no control.
const ControlRule* findControlRule(std::string_view element);

}  // namespace editor
