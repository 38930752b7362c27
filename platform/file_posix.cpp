// Files through POSIX calls.
#include "platform/file.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

bool isRegular(const struct stat& status) {
    return S_ISREG(status.st_mode);
}

std::optional<std::string> readAll(int descriptor, std::size_t maxBytes) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !isRegular(status)) return std::nullopt;
    if (static_cast<unsigned long long>(status.st_size) > maxBytes) return std::nullopt;

    std::string contents(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const ssize_t count = read(descriptor, &contents[filled], contents.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;  // the file shrank while it was read
        filled += static_cast<std::size_t>(count);
    }
    contents.resize(filled);
    return contents;
}

}  // namespace

std::optional<std::string> readFile(const std::string& path, std::size_t maxBytes) {
    // Opening a pipe must not wait for its other end.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::nullopt;
    auto contents = readAll(descriptor, maxBytes);
    close(descriptor);
    return contents;
}

bool fileExists(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && isRegular(status);
}

}  // namespace platform
