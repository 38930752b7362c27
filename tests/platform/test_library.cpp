// A library for the tests to load.
#include <string>

#include "platform/folders.h"

extern "C" int answer() {
    return 42;
}

extern "C" const char* ownFolder() {
    static std::string folder;
    folder = platform::moduleFolder().value_or("unknown");
    return folder.c_str();
}
