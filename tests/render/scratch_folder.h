// A folder for the files of one test, removed with all that is in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

class ScratchFolder {
  public:
    ScratchFolder() {
        const auto& test = *testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() /
                  (std::string("quarzel_") + test.test_suite_name() + test.name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
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
