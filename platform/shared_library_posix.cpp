// Shared libraries through dlopen.
#include "platform/shared_library.h"

#include <stdexcept>

#include <dlfcn.h>

namespace platform {
namespace {

// The loader's last error, without a leading path.
std::string loaderError(const std::string& path) {
    const char* text = dlerror();
    const std::string error = text ? text : "unknown error";
    const std::string prefix = path + ": ";
    return error.compare(0, prefix.size(), prefix) == 0 ? error.substr(prefix.size()) : error;
}

}  // namespace

const char* const kLibraryEnding = ".so";

SharedLibrary::SharedLibrary(const std::string& path) {
    // dlopen searches the system's folders for a name without a slash.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    handle_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throw std::runtime_error(loaderError(file));
}

SharedLibrary::~SharedLibrary() {
    dlclose(handle_);
}

void* SharedLibrary::symbol(const char* name) const {
    return dlsym(handle_, name);
}

}  // namespace platform
