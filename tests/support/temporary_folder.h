// A folder of its own for one test, removed with everything in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

// Makes a folder the current one for a scope.
class CurrentFolder {
  public:
    explicit CurrentFolder(const std::string& folder) { std::filesystem::current_path(folder); }
    ~CurrentFolder() { std::filesystem::current_path(before_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    const std::filesystem::path before_ = std::filesystem::current_path();
};

class TemporaryFolder {
  public:
    TemporaryFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("quarzel-test-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Ends in a separator.
    std::string path() const { return path_.string() + '/'; }

    void write(const std::string& name, const std::string& contents) const {
        std::ofstream(path_ / name, std::ios::binary) << contents;
    }

  private:
    std::filesystem::path path_;
};
