// The window in a browser: the page's canvas. There is one.
#pragma once

#include "gui/windows/native_window.h"

extern "C" {
// The script's side. Pixels are rows of red, green, blue and alpha bytes, without gaps.
void quarzelShowPixels(const uint8_t* pixels, int left, int top, int width, int height);
void quarzelSizeCanvas(int width, int height);
void quarzelFocusCanvas();
void quarzelHidePointer(int hidden);
}

namespace VSTGUI {

// Who receives what happens on the canvas; null while no frame is open. Keep its owner alive during
// a call.
WindowClient* canvasClient();

// The virtual key of a name that browsers use, such as "ArrowLeft".
VirtualKey virtualKeyNamed(const char* name);

}  // namespace VSTGUI
