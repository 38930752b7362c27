// Compares each part of a name with the entries of its folder.
#include "editor/skin/picture_files.h"

#include <algorithm>

#include "editor/skin/skin_text.h"
#include "platform/file.h"

namespace editor {
namespace {

std::vector<std::string> partsOf(const std::string& path) {
    const char separators[] = {'/', platform::kSeparator, '\0'};
    std::vector<std::string> parts;
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find_first_of(separators, start), path.size());
        const std::string part = path.substr(start, end - start);
        start = end + 1;
        if (part.empty() || part == ".") continue;
        if (part == ".." && !parts.empty() && parts.back() != "..") {
            parts.pop_back();
        } else {
            parts.push_back(part);
        }
    }
    return parts;
}

}  // namespace

std::string normalizedName(const std::string& fileName) {
    std::string name;
    for (const std::string& part : partsOf(fileName)) {
        if (!name.empty()) name += platform::kSeparator;
        name += part;
    }
    return name;
}

// Returns the entry with this name, else one that differs in case, else the name itself.
std::string PictureFiles::entryLike(const std::string& folder, const std::string& name) {
    const auto [at, isNew] = entries_.try_emplace(folder);
    if (isNew) at->second = platform::folderEntries(folder);
    const auto& entries = at->second;
    if (std::find(entries.begin(), entries.end(), name) != entries.end()) return name;
    const auto found =
        std::find_if(entries.begin(), entries.end(),
                     [&name](const std::string& entry) { return equalIgnoringCase(entry, name); });
    return found == entries.end() ? name : *found;
}

std::optional<std::string> PictureFiles::find(const std::string& fileName) {
    std::string path = folder_ + normalizedName(fileName);
    if (platform::fileExists(path)) return path;
    path = folder_;
    for (const std::string& part : partsOf(fileName)) {
        if (path.back() != platform::kSeparator) path += platform::kSeparator;
        path += entryLike(path, part);
    }
    return platform::fileExists(path) ? std::optional(path) : std::nullopt;
}

}  // namespace editor
