// A temporary file beside the one that it becomes.
#pragma once

#include <cstdint>
#include <string>

#include "platform/input_error.h"

namespace platform {

// Locked as long as this lives, so that other runs do not take it for a leftover.
class TemporaryFile {
  public:
    // Creates an empty file under an unused name beside `path`, and removes those that runs which
    // were killed have left there. Throws InputError.
    explicit TemporaryFile(const std::string& path);
    // Removes the file unless it has been renamed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return temporaryPath_; }
    // Stores it safely and renames it to the final path. Nobody may have it open for writing.
    // Throws InputError.
    void commit();

  private:
    static std::string temporaryPath(const std::string& path, int number);

    std::string path_;
    std::string temporaryPath_;
    std::intptr_t handle_ = -1;  // the system's, with the lock
};

// The error for a file that cannot be written.
[[noreturn]] void failToWrite(const std::string& path, const std::string& reason);

}  // namespace platform
