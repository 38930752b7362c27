// Locks tell leftovers from files in use.
#include "platform/temporary_file.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {
namespace {

constexpr mode_t kPermissions = 0666;

// Whether the lock was free and the file still has that name.
bool isOurs(int descriptor, const std::string& path) {
    struct stat named = {}, held = {};
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0 && lstat(path.c_str(), &named) == 0 &&
           fstat(descriptor, &held) == 0 && named.st_dev == held.st_dev &&
           named.st_ino == held.st_ino;
}

void removeLeftover(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return;
    if (isOurs(descriptor, path)) unlink(path.c_str());
    close(descriptor);
}

// Returns -1 if the name is taken.
int createAlone(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kPermissions);
    if (descriptor < 0 || isOurs(descriptor, path)) return descriptor;
    close(descriptor);
    errno = EEXIST;
    return -1;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& path) : path_(path) {
    for (int number = 1; handle_ < 0; ++number) {
        temporaryPath_ = temporaryPath(path_, number);
        removeLeftover(temporaryPath_);
        handle_ = createAlone(temporaryPath_);
        if (handle_ < 0 && errno != EEXIST) {
            failToWrite(path_, std::generic_category().message(errno));
        }
    }
}

TemporaryFile::~TemporaryFile() {
    const int descriptor = static_cast<int>(handle_);
    if (isOurs(descriptor, temporaryPath_)) unlink(temporaryPath_.c_str());
    close(descriptor);
}

void TemporaryFile::commit() {
    const bool isSafe = fsync(static_cast<int>(handle_)) == 0;
    if (!isSafe) failToWrite(path_, std::generic_category().message(errno));
    std::error_code error;
    std::filesystem::rename(temporaryPath_, path_, error);
    if (error) failToWrite(path_, error.message());
    temporaryPath_.clear();
}

}  // namespace platform
