// A library of code, loaded by its path while the program runs.
#pragma once

#include <string>

namespace platform {

class SharedLibrary {
  public:
    // Loads the file at path, never one that the system's search path would find. Throws
    // std::runtime_error with the system's own reason.
    explicit SharedLibrary(const std::string& path);
    // Unloads: nothing that came from the library may be used any more.
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    // The address of an exported name, or null.
    void* symbol(const char* name) const;

  private:
    void* handle_;
};

}  // namespace platform
