// Stores the state as a bank file beside the settings.
#include "app/saved_state.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/file.h"
#include "platform/folders.h"
#include "host/error.h"
#include "host/files.h"
#include "host/patches.h"
#include "platform/product.h"

namespace app {
namespace {

// The folder of the settings file. Empty if the system has none.
std::string settingsFolder() {
    const auto base = platform::applicationDataFolder();
    if (!base) return {};
    const std::string company = *base + "/" + platform::kCompanyName;
    const std::string folder = company + "/" + platform::kProductName;
    platform::createFolder(company);
    platform::createFolder(folder);
    return folder;
}

std::string hexadecimal(uint32_t number) {
    char text[9];
    std::snprintf(text, sizeof text, "%08x", number);
    return text;
}

// Adds the suffix to the file's name, and a number if that name is taken. Returns the new name, or
// nothing if the file cannot be renamed.
std::string setAside(const std::string& path, const std::string& suffix) {
    constexpr int kMostNumbers = 99;
    for (int number = 1; number <= kMostNumbers; ++number) {
        const std::string aside = path + suffix + (number == 1 ? "" : "-" + std::to_string(number));
        std::error_code error;
        const auto taken = std::filesystem::symlink_status(aside, error);
        if (taken.type() != std::filesystem::file_type::not_found) continue;
        std::filesystem::rename(path, aside, error);
        return error ? std::string() : aside;
    }
    return {};
}

}  // namespace

SavedState::SavedState(host::PluginHost& host) : host_(host) {
    const std::string folder = settingsFolder();
    if (folder.empty()) return;
    path_ = folder + "/standalone-" + hexadecimal(static_cast<uint32_t>(host.uniqueId())) + ".fxb";
}

void SavedState::load() {
    if (path_.empty() || !platform::fileExists(path_)) return;
    try {
        host::loadBank(host_, path_);
    } catch (const host::Error& error) {
        const std::string aside = setAside(path_, ".damaged");
        const std::string place =
            aside.empty() ? "where it is, and nothing is saved" : "as " + aside;
        if (aside.empty()) mayWrite_ = false;
        throw host::Error(std::string(error.what()) + " It is kept " + place +
                          "; the default bank is played.");
    }
    saved_ = host::bankBytes(host_);
}

std::string SavedState::putAside() {
    if (path_.empty() || !platform::fileExists(path_)) return {};
    const std::string aside = setAside(path_, ".before");
    if (!aside.empty()) return aside;
    mayWrite_ = false;
    throw host::Error(path_ + " cannot be renamed, so nothing is saved.");
}

void SavedState::save() {
    if (path_.empty()) throw host::Error("There is no folder to keep the state in.");
    std::string bytes = host::bankBytes(host_);
    if (bytes == saved_ || !mayWrite_) return;
    host::writeWhole(path_, bytes);
    saved_ = std::move(bytes);
}

}  // namespace app
