// The size of the editor: what the user, the host and the display want, as far as it fits.
#include <algorithm>
#include <vector>

#include "editor/editor_zoom.h"
#include "editor/views/pop_up_menu.h"
#include "editor/skin_shapes.h"
#include "editor/views/size_grip.h"
#include "editor/xml_gui_editor.h"

namespace editor {

using namespace VSTGUI;

namespace {

constexpr double kMost = kZoomSteps.back() / 100.0;

std::string percent(int step) {
    return std::to_string(step) + " %";
}

}  // namespace

double xmlGuiEditor::largestZoom() const {
    const double memory = boundedZoom(kMost, size_);
    return display_ ? std::min(memory, largestZoomOn(*display_, size_)) : memory;
}

// The steps that fit, the first always.
std::vector<int> xmlGuiEditor::zoomSteps() const {
    const double scale = hostScale_.value_or(1);
    std::vector<int> steps;
    for (const int step : kZoomSteps) {
        if (steps.empty() || step / 100.0 * scale <= largestZoom()) steps.push_back(step);
    }
    return steps;
}

// The chosen step. The display decides until the user does, unless the host knows its scale.
int xmlGuiEditor::zoomStep() const {
    const bool asDisplay = display_ && !hostScale_;
    const int first = asDisplay ? stepFor(*display_) : kZoomSteps.front();
    return std::min(readZoom().value_or(first), zoomSteps().back());
}

double xmlGuiEditor::wantedZoom() const {
    const double zoom = zoomStep() / 100.0 * hostScale_.value_or(1);
    return std::clamp(std::min(zoom, largestZoom()), 1.0, kMost);
}

void xmlGuiEditor::setContentScale(double scale) {
    if (!(scale > 0.0) || scale == hostScale_) return;
    hostScale_ = scale;
    if (showsSkin()) followZoom();
}

void xmlGuiEditor::zoomTo(int percent) {
    if (!frame) return;
    keepZoom(percent);
    followZoom();
}

void xmlGuiEditor::followZoom() {
    showAt(wantedZoom());
    showSize();
    const EditorRect rect = getRect();
    host_.sizeWindow(rect.right, rect.bottom);
}

void xmlGuiEditor::showAt(double wanted) {
    const double zoom = boundedZoom(wanted, size_);
    setRect(size_.x * zoom, size_.y * zoom);
    frame->setZoom(zoom);
    readDoublePictures();
}

// The lines of a menu of sizes, and which of them is current.
std::vector<std::string> xmlGuiEditor::sizeLines(int& current) const {
    std::vector<std::string> lines;
    for (const int step : zoomSteps()) {
        if (step == zoomStep()) current = static_cast<int>(lines.size());
        lines.push_back(percent(step));
    }
    return lines;
}

void xmlGuiEditor::openSizeMenu(const CPoint& where) {
    int current = kNoLine;
    const std::vector<std::string> lines = sizeLines(current);
    popUpMenu(*frame, where, lines, current, [this](int line) { zoomTo(kZoomSteps[line]); });
}

// The menus among the size buttons show the size themselves.
void xmlGuiEditor::showSize() {
    int current = kNoLine;
    const std::vector<std::string> lines = sizeLines(current);
    const auto range = controls_.equal_range(kSizeCommand);
    for (auto it = range.first; it != range.second; ++it) {
        auto* const menu = dynamic_cast<COptionMenu*>(it->second);
        if (!menu) continue;
        if (menu->getNbEntries() != static_cast<int>(lines.size())) {
            menu->removeAllEntry();
            for (const std::string& line : lines) menu->addEntry(line.c_str());
        }
        menu->setCurrent(current);
        menu->checkEntryAlone(current);
    }
}

bool xmlGuiEditor::addSizeGrip(const SkinValues& values) {
    auto* const grip =
        new CSizeGrip(rectangleOf(values), [this](const CPoint& corner) { dragTo(corner); });
    if (const auto rgb = values.colour("fontcolor")) grip->setFontColor(colorOf(*rgb));
    addView(grip);
    return true;
}

void xmlGuiEditor::dragTo(const CPoint& corner) {
    const double share = (corner.x / size_.x + corner.y / size_.y) / 2;
    const double factor = share * frame->getZoom() / hostScale_.value_or(1);
    const int step = std::min(nearestStep(factor), zoomSteps().back());
    if (step == zoomStep()) return;
    frame->doAfterEventProcessing([this, step] { zoomTo(step); });
}

}  // namespace editor
