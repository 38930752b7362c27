// A shared library, loaded by path at run time.
#pragma once

#include <string>

namespace platform {

// What names of plug-ins end in.
extern const char* const kLibraryEnding;

class SharedLibrary {
  public:
    // Loads exactly the file at path, without the system's search path. Throws std::runtime_error
    // with the system's reason.
    explicit SharedLibrary(const std::string& path);
    // Unloads the library. Pointers into it become invalid.
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    // The address of an exported symbol, or null.
    void* symbol(const char* name) const;

  private:
    void* handle_;
};

}  // namespace platform
