// A folder of its own for one test, removed with everything in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

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
