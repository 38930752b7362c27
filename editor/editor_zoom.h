// The zoom steps of the editor, and the one the user has chosen.
#pragma once

#include <array>

#include "vstgui/vstgui.h"

namespace editor {

constexpr std::array<int, 5> kZoomSteps = {100, 125, 150, 200, 300};  // percent

// Returns the stored step, or 100 if the settings hold no valid one.
int readZoom();
void keepZoom(int percent);

// Returns `zoom`, or the largest factor at which the window still fits: its pixels have a memory
// limit, and each side must fit into 16 bits. `size` is in pixels at 100 percent.
double boundedZoom(double zoom, const VSTGUI::CPoint& size);

}  // namespace editor
