// Draws a skin without a window and without an instrument.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "gui/graphics/pixel_buffer.h"

namespace editor {

// Draws the whole editor with every parameter at its default. `zoom` is 100..300 percent. Returns
// nothing if the skin cannot be shown. Faults of the skin go to platform::showMessage. skinFolder
// ends in a separator.
std::optional<VSTGUI::PixelBuffer> drawSkin(const std::string& skinFolder, int zoom = 100);

// Runs reportSkin and draws the skin into a PNG file. An empty path writes no file. Returns all
// complaints, including those found only by drawing, such as damaged pictures.
int reportAndDrawSkin(const std::string& skinFolder, const std::string& pngPath, std::ostream& out,
                      int zoom = 100);

// Returns false if the file cannot be written.
bool writePng(const std::string& path, const VSTGUI::PixelBuffer& picture);

}  // namespace editor
