// Initialises the layer for the module that contains it.
#pragma once

namespace VSTGUI {

// The module's handle: an HINSTANCE on Windows, the result of dlopen elsewhere.
using PlatformInstanceHandle = void*;

// Call init() before creating the first bitmap, font or view, and exit() after the last is gone.
// Calls are counted: the last exit() releases what the first init() created.
void init(PlatformInstanceHandle instance);
void exit();

PlatformInstanceHandle moduleHandle();

}  // namespace VSTGUI
