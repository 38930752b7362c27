// The handle of our own code, which Windows wants of whoever makes windows.
#pragma once

namespace platform {

// The HINSTANCE of the library or program that this code is linked into; null when the system does
// not tell. Nothing needs to be released. Windows only.
void* moduleHandle();

}  // namespace platform
