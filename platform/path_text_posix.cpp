// Paths are UTF-8.
#include "platform/path_text.h"

namespace platform {

std::string utf8FromPath(const std::string& path) {
    return path;
}

std::string pathFromUtf8(const std::string& text) {
    return text;
}

std::filesystem::path systemPath(const std::string& path) {
    return path;
}

std::string pathText(const std::filesystem::path& path) {
    return path.string();
}

}  // namespace platform
