// A private key replaces the current user's. The shell also finds the roaming folder there.
#include <stdexcept>
#include <string>

#include <windows.h>

#include "tests/support/own_settings.h"
#include "tests/support/temporary_folder.h"

struct OwnSettings::System {
    TemporaryFolder folder;
    std::wstring name;
    HKEY key = nullptr;
};

OwnSettings::OwnSettings() : system_(new System) {
    const std::filesystem::path folder = system_->folder.path();
    const std::wstring roaming = (folder / L"AppData" / L"Roaming").make_preferred().wstring();
    std::filesystem::create_directories(roaming);
    system_->name = L"Software\\" + folder.parent_path().filename().wstring();
    constexpr const wchar_t* kShellFolders =
        L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    const bool works =
        RegCreateKeyExW(HKEY_CURRENT_USER, system_->name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &system_->key, nullptr) == ERROR_SUCCESS &&
        RegOverridePredefKey(HKEY_CURRENT_USER, system_->key) == ERROR_SUCCESS &&
        RegSetKeyValueW(HKEY_CURRENT_USER, kShellFolders, L"AppData", REG_SZ, roaming.c_str(),
                        static_cast<DWORD>((roaming.size() + 1) * sizeof(wchar_t))) ==
            ERROR_SUCCESS;
    if (!works) throw std::runtime_error("no settings of its own");
}

OwnSettings::~OwnSettings() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(system_->key);
    RegDeleteTreeW(HKEY_CURRENT_USER, system_->name.c_str());
}
