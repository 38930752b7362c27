// Replaces a file: writes a locked temporary file beside it, then renames that.
#include "platform/system_replacement.h"

#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr int kMostLinks = 40;  // the kernel's own limit
constexpr std::chrono::milliseconds kPause{1};
constexpr mode_t kPermissions = 07777;

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }

  private:
    const int number_;
};

// Ends in a separator; empty for a file of the current folder.
std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

// The final target of the links at path. The target need not exist.
std::string withoutLinks(std::string path) {
    char target[PATH_MAX];
    for (int i = 0; i < kMostLinks; ++i) {
        const ssize_t length = readlink(path.c_str(), target, sizeof target);
        if (length < 0) break;
        const std::string text(target, static_cast<std::size_t>(length));
        path = text[0] == '/' ? text : folderOf(path) + text;
    }
    return path;
}

bool isStillAt(const std::string& path, int descriptor) {
    struct stat named = {}, held = {};
    return lstat(path.c_str(), &named) == 0 && fstat(descriptor, &held) == 0 &&
           S_ISREG(held.st_mode) && named.st_dev == held.st_dev && named.st_ino == held.st_ino;
}

// Opens the file at path, creating it if necessary, and locks it. Returns -1 on failure.
int openAlone(const std::string& path) {
    const auto deadline = std::chrono::steady_clock::now() + kReplacementPatience;
    do {
        // Neither wait for a pipe nor follow a link.
        const int descriptor =
            open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
        if (descriptor < 0) {
            // A leftover of a crash may belong to another user. The folder's permissions decide who
            // may remove it.
            if (errno == EACCES && unlink(path.c_str()) == 0) continue;
            return -1;
        }
        // On a file system without locks, writers are not kept apart.
        const bool busy = flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        // The previous holder may have renamed or removed the file since we opened it.
        if (!busy && isStillAt(path, descriptor)) return descriptor;
        close(descriptor);
        std::this_thread::sleep_for(kPause);
    } while (std::chrono::steady_clock::now() < deadline);
    return -1;
}

bool writeAll(int descriptor, const std::string& contents) {
    if (ftruncate(descriptor, 0) != 0) return false;
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

// Makes the new name reach the disk.
void flushFolder(const std::string& folder) {
    const Descriptor descriptor(
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.number() >= 0) fsync(descriptor.number());
}

}  // namespace

bool replaceSystemFile(const std::string& path, Links links, const ContentsMaker& contents) {
    const std::string target = links == Links::kFollow ? withoutLinks(path) : path;
    struct stat old = {};
    const bool exists = lstat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return false;
    // A rename would even replace devices and write-protected files.
    if (exists && (!S_ISREG(old.st_mode) || access(target.c_str(), W_OK) != 0)) return false;

    const std::string temporary = target + kReplacementEnding;
    const Descriptor descriptor(openAlone(temporary));
    if (descriptor.number() < 0) return false;
    const auto bytes = contents();
    const bool whole = bytes &&
                       (!exists || fchmod(descriptor.number(), old.st_mode & kPermissions) == 0) &&
                       writeAll(descriptor.number(), *bytes);
    if (whole && rename(temporary.c_str(), target.c_str()) == 0) {
        flushFolder(folderOf(target));
        return true;
    }
    unlink(temporary.c_str());
    return false;
}

}  // namespace platform
