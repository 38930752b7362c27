// Settings in a small text file: one NAME=VALUE per line, with backslashes and line breaks escaped.
#include "platform/settings_store.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/file.h"
#include "platform/folders.h"

namespace platform {
namespace {

constexpr std::size_t kLargestFile = 1 << 20;

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') {
            out += "\\\\";
        } else if (c == '\n') {
            out += "\\n";
        } else {
            out += c;
        }
    }
    return out;
}

std::string unescaped(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
        } else {
            ++i;
            out += text[i] == 'n' ? '\n' : text[i];
        }
    }
    return out;
}

using Settings = std::map<std::string, std::string>;

Settings parsed(const std::string& contents) {
    Settings settings;
    std::size_t start = 0;
    while (start < contents.size()) {
        const std::size_t end = std::min(contents.find('\n', start), contents.size());
        const std::string line = contents.substr(start, end - start);
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) {
            settings[line.substr(0, equals)] = unescaped(line.substr(equals + 1));
        }
        start = end + 1;
    }
    return settings;
}

}  // namespace

std::optional<std::string> SettingsStore::readFromSystem(const std::string& name) const {
    const auto base = applicationDataFolder();
    if (!base) return std::nullopt;
    const auto contents =
        readFile(*base + "/" + company_ + "/" + product_ + "/settings", kLargestFile);
    if (!contents) return std::nullopt;
    const Settings settings = parsed(*contents);
    const auto found = settings.find(name);
    if (found == settings.end()) return std::nullopt;
    return found->second;
}

bool SettingsStore::writeToSystem(const std::string& name, const std::string& value) const {
    const auto base = applicationDataFolder();
    if (!base) return false;
    const std::string companyFolder = *base + "/" + company_;
    const std::string folder = companyFolder + "/" + product_;
    createFolder(companyFolder);
    createFolder(folder);

    return updateFile(folder + "/settings", kLargestFile, [&](const auto& present) {
        Settings settings = parsed(present.value_or(""));
        settings[name] = value;
        std::string contents;
        for (const auto& [key, text] : settings) contents += key + "=" + escaped(text) + "\n";
        return contents;
    });
}

}  // namespace platform
