// Draws a skin without a window and without an instrument.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "gui/graphics/pixel_buffer.h"

namespace editor {

// The whole editor at this zoom, in percent from 100 to 300, every parameter at its default.
// Nothing when the skin gives no picture; what is wrong with it is shown through
// platform::showMessage. skinFolder ends in a separator.
std::optional<VSTGUI::PixelBuffer> drawSkin(const std::string& skinFolder, int zoom = 100);

// Does as reportSkin, then draws the skin into a file, or nowhere without a path; complaints of the
// drawing, such as damaged pictures, are added.
int reportAndDrawSkin(const std::string& skinFolder, const std::string& pngPath, std::ostream& out,
                      int zoom = 100);

// False when the file cannot be written.
bool writePng(const std::string& path, const VSTGUI::PixelBuffer& picture);

}  // namespace editor
