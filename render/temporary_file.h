// A temporary file beside the one that it becomes.
#pragma once

#include <string>

namespace render {

// Locked as long as this lives, so that other runs do not take it for a leftover.
class TemporaryFile {
  public:
    // Creates an empty file under an unused name beside `path`, and removes those that runs which
    // were killed have left there. Throws host::Error.
    explicit TemporaryFile(const std::string& path);
    // Removes the file unless it has been renamed.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return temporaryPath_; }
    // Renames it to the final path. Throws host::Error.
    void commit();

  private:
    std::string path_;
    std::string temporaryPath_;
    int descriptor_ = -1;
};

// The error for a file that cannot be written.
[[noreturn]] void failToWrite(const std::string& path, const std::string& reason);

}  // namespace render
