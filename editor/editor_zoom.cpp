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

std::optional<int> readZoom() {
    const std::string kept = state::settings().read(state::kZoomSetting).value_or("");
    for (const int step : kZoomSteps) {
        if (kept == std::to_string(step)) return step;
    }
    return std::nullopt;
}

int stepFor(const platform::Display& display) {
    int found = kZoomSteps.front();
    for (const int step : kZoomSteps) {
        if (step <= display.scale * 100) found = step;
    }
    return found;
}

int nearestStep(double factor) {
    const auto distance = [factor](int step) { return std::abs(step / 100.0 - factor); };
    return *std::min_element(kZoomSteps.begin(), kZoomSteps.end(),
                             [&](int a, int b) { return distance(a) < distance(b); });
}

double largestZoomOn(const platform::Display& display, const VSTGUI::CPoint& size) {
    const double fits = std::min(display.width / std::max(size.x, 1.0),
                                 (display.height - platform::kTitleBar) / std::max(size.y, 1.0));
    return std::max(std::floor(fits * 100) / 100, 1.0);
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
