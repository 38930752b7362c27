// Stores the zoom in the settings.
#include "editor/editor_zoom.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "state/data_folder.h"

namespace editor {
namespace {

constexpr double kMostWindowPixels = 32 << 20;  // 128 MiB

}  // namespace

int readZoom() {
    const std::string kept = state::settings().read(state::kZoomSetting).value_or("");
    for (const int step : kZoomSteps) {
        if (kept == std::to_string(step)) return step;
    }
    return kZoomSteps.front();
}

double boundedZoom(double zoom, const VSTGUI::CPoint& size) {
    constexpr double kLongestSide = std::numeric_limits<std::int16_t>::max();
    const double width = std::max(size.x, 1.0);
    const double height = std::max(size.y, 1.0);
    const double largest = std::min(std::sqrt(kMostWindowPixels / (width * height)),
                                    kLongestSide / std::max(width, height));
    return zoom <= largest ? zoom : std::max(std::floor(largest * 100) / 100, 1.0);
}

void keepZoom(int percent) {
    state::settings().write(state::kZoomSetting, std::to_string(percent));
}

}  // namespace editor
