// A folder for the files of one test, removed with everything in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

// Changes the current folder within a scope.
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
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("quarzel-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Ends in a separator.
    std::string path() const { return path_.string() + '/'; }
    std::string path(const std::string& name) const { return (path_ / name).string(); }

    // Returns the path of the file.
    std::string write(const std::string& name, const std::string& contents) const {
        std::ofstream(path_ / name, std::ios::binary) << contents;
        return path(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    std::ptrdiff_t entryCount() const {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

  private:
    std::filesystem::path path_;
};
