// Finds an instrument and numbers equal names.
#include "host/instrument_names.h"

#include <map>

#include "platform/file.h"
#include "platform/folders.h"
#include "host/error.h"
#include "host/numbers.h"
#include "platform/shared_library.h"

namespace host {

std::string instrumentFile() {
    return std::string("QuarzelStrings") + platform::kLibraryEnding;
}

std::string instrumentPath(const std::string& typed) {
    if (!typed.empty()) return typed;
    const auto folder = platform::moduleFolder();
    if (!folder) throw Error("The folder of this program is unknown: name an instrument.");
    const std::string beside = *folder + instrumentFile();
    const std::string installed = *folder + "../lib/vst/" + instrumentFile();
    const bool isInstalled = !platform::fileExists(beside) && platform::fileExists(installed);
    return isInstalled ? installed : beside;
}

std::vector<std::string> distinctNames(const std::vector<std::string>& names) {
    std::map<std::string, int> seen;
    std::vector<std::string> distinct;
    for (const auto& name : names) {
        const int count = ++seen[name];
        distinct.push_back(count == 1 ? name : name + "#" + std::to_string(count));
    }
    return distinct;
}

std::vector<std::string> distinctProgramNames(PluginHost& host) {
    std::vector<std::string> names;
    for (int i = 0; i < host.programCount(); ++i) names.push_back(host.programName(i));
    return distinctNames(names);
}

std::vector<std::string> distinctParameterNames(const PluginHost& host) {
    std::vector<std::string> names;
    for (int i = 0; i < host.parameterCount(); ++i) names.push_back(host.parameterName(i));
    return distinctNames(names);
}

int indexOf(const std::string& text, const std::vector<std::string>& names,
            const std::string& what) {
    if (const auto index = parseInteger(text)) {
        if (*index >= 0 && *index < static_cast<int>(names.size())) return *index;
        throw Error("There is no " + what + " " + text + "; they go from 0 to " +
                    std::to_string(names.size() - 1) + ".");
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == text) return static_cast<int>(i);
    }
    throw Error("There is no " + what + " named " + text + ".");
}

}  // namespace host
