// Named texts kept per user.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {

// Texts are UTF-8. Windows: values of the registry key Software\COMPANY\PRODUCT of the current
// user. Linux: lines of the file COMPANY/PRODUCT/settings under the application-data folder.
class SettingsStore {
  public:
    SettingsStore(std::string company, std::string product);

    // Nothing when it was never written or cannot be read.
    std::optional<std::string> read(const std::string& name) const;
    // False when it could not be kept; a name holds no '=' and no line break.
    bool write(const std::string& name, const std::string& value) const;

  private:
    std::optional<std::string> readFromSystem(const std::string& name) const;
    bool writeToSystem(const std::string& name, const std::string& value) const;

    std::string company_;
    std::string product_;
};

// Keeps settings in memory for a scope, none at first, in place of all stores; or refuses to keep
// any. For tests.
class ScopedSettings {
  public:
    enum Kind { kWritable, kReadOnly };
    explicit ScopedSettings(Kind kind = kWritable);
    ~ScopedSettings();
    ScopedSettings(const ScopedSettings&) = delete;
    ScopedSettings& operator=(const ScopedSettings&) = delete;

  private:
    struct Memory;
    std::unique_ptr<Memory> memory_;
    Memory* before_;
    static Memory* current_;
    friend class SettingsStore;
};

}  // namespace platform
