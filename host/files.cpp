// The platform's calls only report success or failure; the checks here find the reason.
#include "host/files.h"

#include <filesystem>
#include <system_error>

#include "platform/file.h"
#include "platform/path_text.h"
#include "host/error.h"

namespace host {

namespace fs = std::filesystem;

std::string readWhole(const std::string& path, std::size_t maxBytes, const std::string& what) {
    std::error_code error;
    const auto status = fs::status(platform::systemPath(path), error);
    if (status.type() == fs::file_type::not_found) throw Error("There is no file " + path + ".");
    if (status.type() != fs::file_type::regular) {
        throw Error(path + " is not a file that can be read.");
    }
    const auto size = fs::file_size(platform::systemPath(path), error);
    if (!error && size > maxBytes) throw Error(path + " is too large to be " + what + ".");
    auto bytes = platform::readFile(path, maxBytes);
    if (!bytes) throw Error(path + " cannot be read.");
    return *std::move(bytes);
}

std::string writablePath(const std::string& path) {
    std::error_code error;
    const auto status = fs::status(platform::systemPath(path), error);
    if (exists(status) && !is_regular_file(status)) {
        throw Error(path + " cannot be written: it is not a regular file.");
    }
    const auto target = fs::canonical(platform::systemPath(path), error);
    return error ? path : platform::pathText(target);
}

void writeWhole(const std::string& path, const std::string& bytes) {
    if (!platform::writeFile(writablePath(path), bytes)) throw Error(path + " cannot be written.");
}

bool isSameFile(const std::string& one, const std::string& other) {
    std::error_code error;
    const fs::path paths[] = {platform::systemPath(one), platform::systemPath(other)};
    if (fs::equivalent(paths[0], paths[1], error)) return true;
    const auto first = fs::weakly_canonical(fs::absolute(paths[0], error), error);
    return !error && first == fs::weakly_canonical(fs::absolute(paths[1], error), error);
}

}  // namespace host
