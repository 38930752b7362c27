// The system's handle of our own code.
#pragma once

namespace platform {

// Of the library or program that this code is linked into: an HINSTANCE on Windows, what dlopen
// gives elsewhere; null when the system does not tell. Nothing needs to be released.
void* moduleHandle();

}  // namespace platform
