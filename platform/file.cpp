// Reads and replaces whole files.
#include "platform/file.h"

#include "platform/system_replacement.h"

namespace platform {

std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes, Links links) {
    auto contents = readFileStart(path, maxBytes + 1, links);
    return contents && contents->size() <= maxBytes ? std::move(contents) : std::nullopt;
}

bool writeFile(const std::string& path, const std::string& contents) {
    return replaceSystemFile(path, Links::kFollow, [&] { return contents; });
}

bool updateFile(const std::string& path, std::size_t maxBytes, const FileEdit& edit, Links links) {
    return replaceSystemFile(path, links, [&]() -> std::optional<std::string> {
        const auto present = readFile(path, maxBytes, links);
        // Do not replace a file that exists but cannot be read.
        if (!present && fileExists(path)) return std::nullopt;
        return edit(present);
    });
}

}  // namespace platform
