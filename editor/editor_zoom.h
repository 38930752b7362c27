// The sizes at which the editor can be shown, and the one the user has chosen.
#pragma once

#include <array>

#include "vstgui/vstgui.h"

namespace editor {

constexpr std::array<int, 5> kZoomSteps = {100, 125, 150, 200, 300};  // percent

// One of the steps; 100 when nothing that can be used was kept.
int readZoom();
void keepZoom(int percent);

// A window of this size, in pixels at 100 percent, is shown at the zoom or, where that would take
// too much memory or more than the 16 bits of a window's side, at the largest that does not.
double boundedZoom(double zoom, const VSTGUI::CPoint& size);

}  // namespace editor
