// Opens a loose menu of plain lines.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "vstgui/vstgui.h"

namespace editor {

constexpr int kNoLine = -1;

// The menu shows at `where` in the frame once the event under way is done; the line `checked` is
// marked. `chosen` is told the index of the chosen line, and nothing when there is none.
void popUpMenu(VSTGUI::CFrame& frame, const VSTGUI::CPoint& where,
               const std::vector<std::string>& lines, int checked,
               const std::function<void(int line)>& chosen);

}  // namespace editor
