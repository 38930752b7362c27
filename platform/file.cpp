// Whole files, read and put in place.
#include "platform/file.h"

#include "platform/system_replacement.h"

namespace platform {

std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes) {
    auto contents = readFileStart(path, maxBytes + 1);
    return contents && contents->size() <= maxBytes ? std::move(contents) : std::nullopt;
}

bool writeFile(const std::string& path, const std::string& contents) {
    return replaceSystemFile(path, [&] { return contents; });
}

bool updateFile(const std::string& path, std::size_t maxBytes, const FileEdit& edit) {
    return replaceSystemFile(path, [&]() -> std::optional<std::string> {
        const auto present = readFile(path, maxBytes);
        // What is there and cannot be read must not be lost.
        if (!present && fileExists(path)) return std::nullopt;
        return edit(present.value_or(""));
    });
}

}  // namespace platform
