// Keeps the zoom in the settings.
#include "editor/editor_zoom.h"

#include <string>

#include "state/data_folder.h"

namespace editor {

int readZoom() {
    const std::string kept = state::settings().read(state::kZoomSetting).value_or("");
    for (const int step : kZoomSteps) {
        if (kept == std::to_string(step)) return step;
    }
    return kZoomSteps.front();
}

void keepZoom(int percent) {
    state::settings().write(state::kZoomSetting, std::to_string(percent));
}

}  // namespace editor
