// The sizes at which the editor can be shown, and the one the user has chosen.
#pragma once

#include <array>

namespace editor {

constexpr std::array<int, 5> kZoomSteps = {100, 125, 150, 200, 300};  // percent

// One of the steps; 100 when nothing that can be used was kept.
int readZoom();
void keepZoom(int percent);

}  // namespace editor
