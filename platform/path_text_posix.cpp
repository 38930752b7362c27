// Paths are UTF-8.
#include "platform/path_text.h"

namespace platform {

std::string utf8FromPath(const std::string& path) {
    return path;
}

std::string pathFromUtf8(const std::string& text) {
    return text;
}

}  // namespace platform
