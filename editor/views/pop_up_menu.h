// Opens a pop-up menu of plain lines, without a control.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "vstgui/vstgui.h"

namespace editor {

constexpr int kNoLine = -1;

// Opens the menu at `where` in the frame, after the current event. Marks the line `checked`. Calls
// `chosen` with the index of the chosen line, or not at all if the user chooses none.
void popUpMenu(VSTGUI::CFrame& frame, const VSTGUI::CPoint& where,
               const std::vector<std::string>& lines, int checked,
               const std::function<void(int line)>& chosen);

}  // namespace editor
