// One name a line, in UTF-8.
#include "editor/browser/favourites.h"

#include <sstream>

#include "platform/file.h"
#include "platform/product.h"
#include "state/data_folder.h"

namespace editor {

namespace {

constexpr std::size_t kLargestFile = 1 << 20;

std::set<std::string> namesIn(const std::string& text) {
    std::set<std::string> names;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty()) names.insert(line);
    }
    return names;
}

}  // namespace

void Favourites::read() {
    const auto folder = state::findDataFolder(platform::kProductName);
    const auto text = folder ? platform::readFile(*folder + kFile, kLargestFile) : std::nullopt;
    names_ = namesIn(text.value_or(""));
}

// Another instance may have changed the file meanwhile, so only this one name changes in it.
bool Favourites::toggle(const std::string& name) {
    const auto folder = state::findDataFolder(platform::kProductName);
    const bool add = !has(name);
    std::set<std::string> names;
    const bool stored =
        folder && name.find('\n') == std::string::npos && !name.empty() &&
        platform::updateFile(*folder + kFile, kLargestFile,
                             [&](const std::optional<std::string>& present) {
                                 names = namesIn(present.value_or(""));
                                 add ? void(names.insert(name)) : void(names.erase(name));
                                 std::string text;
                                 for (const std::string& line : names) text += line + '\n';
                                 return text;
                             });
    if (stored) names_ = names;
    return stored;
}

}  // namespace editor
