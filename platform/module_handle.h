// The handle of our own code, which Windows needs to create windows.
#pragma once

namespace platform {

// The HINSTANCE of the library or program that contains this code, or null if the system does not
// tell. It must not be released. Windows only.
void* moduleHandle();

}  // namespace platform
