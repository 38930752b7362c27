// The zoom steps of the editor, and the one the user has chosen.
#pragma once

#include <array>
#include <optional>

#include "platform/display.h"
#include "vstgui/vstgui.h"

namespace editor {

constexpr std::array<int, 5> kZoomSteps = {100, 125, 150, 200, 300};  // percent

// Returns the stored step, or nothing if the settings hold no valid one.
std::optional<int> readZoom();
void keepZoom(int percent);

// The largest step that the display's scale asks for.
int stepFor(const platform::Display& display);
// The step whose factor is nearest.
int nearestStep(double factor);
// The largest factor at which `size` still leaves room for the bar of the host's window; at
// least 1.
double largestZoomOn(const platform::Display& display, const VSTGUI::CPoint& size);

// Returns `zoom`, or the largest factor at which the window still fits: its pixels have a memory
// limit, and each side must fit into 16 bits. `size` is in pixels at 100 percent.
double boundedZoom(double zoom, const VSTGUI::CPoint& size);

}  // namespace editor
