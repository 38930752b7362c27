// A folder for the files of one test, removed with all that is in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

class ScratchFolder {
  public:
    ScratchFolder() {
        const auto temporary = std::filesystem::temp_directory_path();
        std::random_device random;
        do {
            folder_ = temporary / ("quarzel_render_test_" + std::to_string(random()));
        } while (!std::filesystem::create_directory(folder_));
    }
    ~ScratchFolder() { std::filesystem::remove_all(folder_); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path(const std::string& name) const { return (folder_ / name).string(); }

    std::string write(const std::string& name, const std::string& contents) const {
        std::ofstream(path(name), std::ios::binary) << contents;
        return path(name);
    }

    std::string read(const std::string& name) const {
        std::ifstream file(path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    std::ptrdiff_t fileCount() const {
        return std::distance(std::filesystem::directory_iterator(folder_), {});
    }

  private:
    std::filesystem::path folder_;
};
