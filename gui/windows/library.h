// Set-up of the layer for the module that contains it.
#pragma once

namespace VSTGUI {

// The module's handle: HINSTANCE on Windows, what dlopen gave elsewhere.
using PlatformInstanceHandle = void*;

// Before the first bitmap, font or view, and after the last. Calls are counted; the last exit()
// releases what the first init() made.
void init(PlatformInstanceHandle instance);
void exit();

PlatformInstanceHandle moduleHandle();

}  // namespace VSTGUI
