// Opens and closes the frame, and passes edits and keys on.
#include "editor/aeff_gui_editor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace editor {

using namespace VSTGUI;

AEffGUIEditor::~AEffGUIEditor() noexcept {
    AEffGUIEditor::close();
}

bool AEffGUIEditor::openFrame(int width, int height, double zoom, void* parentWindow) {
    toolkit_.emplace();
    frame = new CFrame(CRect(0, 0, width, height), this);
    if (!Toolkit::hasDisplay() ||
        !frame->open(parentWindow, PlatformType::kDefaultNative, Toolkit::frameConfig())) {
        AEffGUIEditor::close();
        return false;
    }
    frame->setZoom(zoom);
    return true;
}

void AEffGUIEditor::setRect(double width, double height) {
    constexpr double kLargest = std::numeric_limits<std::int16_t>::max();
    rect_.right = static_cast<std::int16_t>(std::clamp(std::round(width), 0.0, kLargest));
    rect_.bottom = static_cast<std::int16_t>(std::clamp(std::round(height), 0.0, kLargest));
}

void AEffGUIEditor::close() {
    // Closing ends a text entry, which may call back. By then the frame must look closed.
    if (CFrame* const closing = std::exchange(frame, nullptr)) closing->close();
    toolkit_.reset();
}

void AEffGUIEditor::idle() {
    Toolkit::pump();
    if (frame) frame->idle();
}

bool AEffGUIEditor::onKey(KeyboardEvent& event) {
    if (frame) frame->dispatchEvent(event);
    return event.consumed;
}

bool AEffGUIEditor::wantsKeys() const {
    return frame && (frame->getModalView() || wantsText());
}

bool AEffGUIEditor::wantsText() const {
    return frame && dynamic_cast<const CTextEdit*>(frame->getFocusView());
}

void AEffGUIEditor::beginEdit(std::int32_t tag) {
    if (host_.isParameter(tag)) host_.beginEdit(tag);
}

void AEffGUIEditor::endEdit(std::int32_t tag) {
    if (host_.isParameter(tag)) host_.endEdit(tag);
}

}  // namespace editor
