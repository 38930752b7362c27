// Files through POSIX calls.
#include "platform/file.h"

#include <algorithm>
#include <cerrno>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

bool isRegular(const struct stat& status) {
    return S_ISREG(status.st_mode);
}

std::optional<std::string> readStart(int descriptor, std::size_t bytes) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !isRegular(status)) return std::nullopt;

    const auto size = static_cast<unsigned long long>(status.st_size);
    std::string contents(static_cast<std::size_t>(std::min<unsigned long long>(size, bytes)), '\0');
    std::size_t filled = 0;
    while (filled < contents.size()) {
        const ssize_t count = read(descriptor, &contents[filled], contents.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;  // the file has shrunk since
        filled += static_cast<std::size_t>(count);
    }
    contents.resize(filled);
    return contents;
}

}  // namespace

std::optional<std::string> readFileStart(const std::string& path, std::size_t bytes, Links links) {
    const int noLink = links == Links::kRefuse ? O_NOFOLLOW : 0;
    // Do not wait for the other end of a pipe.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | noLink);
    if (descriptor < 0) return std::nullopt;
    auto contents = readStart(descriptor, bytes);
    close(descriptor);
    return contents;
}

bool fileExists(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && isRegular(status);
}

bool folderExists(const std::string& path) {
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
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
