// Settings in the current user's registry, as UTF-16.
#include "platform/settings_store.h"

#include <utility>
#include <vector>

#include <windows.h>

namespace platform {
namespace {

std::wstring wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring out(length, L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, out.data(), length);
    return out;
}

std::string narrow(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string out(length, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, out.data(), length, nullptr, nullptr);
    return out;
}

std::wstring keyPath(const std::string& company, const std::string& product) {
    return L"Software\\" + wide(company) + L"\\" + wide(product);
}

}  // namespace

std::optional<std::string> SettingsStore::readFromSystem(const std::string& name) const {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, keyPath(company_, product_).c_str(), 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::vector<wchar_t> buffer(32768);
    DWORD bytes = static_cast<DWORD>((buffer.size() - 1) * sizeof(wchar_t));
    DWORD type = 0;
    const LONG result = RegQueryValueExW(key, wide(name).c_str(), nullptr, &type,
                                         reinterpret_cast<BYTE*>(buffer.data()), &bytes);
    RegCloseKey(key);
    if (result != ERROR_SUCCESS || type != REG_SZ) return std::nullopt;
    buffer[bytes / sizeof(wchar_t)] = L'\0';
    return narrow(buffer.data());
}

bool SettingsStore::writeToSystem(const std::string& name, const std::string& value) const {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, keyPath(company_, product_).c_str(), 0, nullptr, 0,
                        KEY_WRITE, nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return false;
    }
    const std::wstring text = wide(value);
    const LONG result = RegSetValueExW(key, wide(name).c_str(), 0, REG_SZ,
                                       reinterpret_cast<const BYTE*>(text.c_str()),
                                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
    return result == ERROR_SUCCESS;
}

}  // namespace platform
