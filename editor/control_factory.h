// Makes the controls that the elements of a skin describe.
#pragma once

#include <string_view>

#include "editor/editor_host.h"
#include "editor/picture_cache.h"
#include "editor/skin/skin_values.h"
#include "platform/message_box.h"
#include "vstgui/vstgui.h"

namespace editor {

// What a control is made from.
struct ControlPlan {
    const SkinValues& values;
    const SkinAttributes& attributes;
    PictureCache& pictures;
    VSTGUI::CBitmap* background;  // the frame's picture, or null
    VSTGUI::IControlListener* listener;
    const EditorHost& host;
    const platform::MessageHandler& report;
};

struct ControlRule {
    std::string_view element;
    // A new control with its tag and look, without a value; null when the element has to be
    // abandoned, the user having been told.
    VSTGUI::CControl* (*make)(const ControlPlan& plan);
    bool hasDefault;  // takes the element's default, or else its first value, for reset
};

// Found without regard to case; null for an element that makes no control.
const ControlRule* findControlRule(std::string_view element);

}  // namespace editor
