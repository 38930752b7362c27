// Files through POSIX calls.
#include "platform/file.h"

#include <atomic>
#include <cerrno>
#include <cstdio>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

// One of its own for each write, so that two writers do not mix.
std::string temporaryName(const std::string& path) {
    static std::atomic<unsigned> serial{0};
    return path + "." + std::to_string(getpid()) + "-" + std::to_string(serial++) + ".tmp";
}

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

bool writeAll(int descriptor, const std::string& contents) {
    std::size_t written = 0;
    while (written < contents.size()) {
        const ssize_t count =
            write(descriptor, contents.data() + written, contents.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        written += static_cast<std::size_t>(count);
    }
    return fsync(descriptor) == 0;
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

bool writeFile(const std::string& path, const std::string& contents) {
    const std::string temporary = temporaryName(path);
    const int descriptor =
        open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (descriptor < 0) return false;
    bool whole = writeAll(descriptor, contents);
    whole = close(descriptor) == 0 && whole;
    if (whole && rename(temporary.c_str(), path.c_str()) == 0) return true;
    unlink(temporary.c_str());
    return false;
}

bool fileExists(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && isRegular(status);
}

bool folderHasEntry(const std::string& folder) {
    DIR* const directory = opendir(folder.c_str());
    if (!directory) return false;
    const bool any = readdir(directory) != nullptr;
    closedir(directory);
    return any;
}

std::vector<std::string> folderEntries(const std::string& folder) {
    std::vector<std::string> names;
    DIR* const directory = opendir(folder.c_str());
    if (!directory) return names;
    while (const dirent* const entry = readdir(directory)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
    }
    closedir(directory);
    return names;
}

bool createFolder(const std::string& folder) {
    return mkdir(folder.c_str(), 0777) == 0;
}

}  // namespace platform
