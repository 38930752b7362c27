// Named texts, stored per user.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {

// Texts are UTF-8. Windows: values of the current user's registry key Software\COMPANY\PRODUCT.
// Linux: lines of the file COMPANY/PRODUCT/settings in the application-data folder.
class SettingsStore {
  public:
    SettingsStore(std::string company, std::string product);

    // Returns nothing if it was never written or cannot be read.
    std::optional<std::string> read(const std::string& name) const;
    // Returns false if it could not be stored. A name contains neither '=' nor a line break.
    bool write(const std::string& name, const std::string& value) const;

  private:
    std::optional<std::string> readFromSystem(const std::string& name) const;
    bool writeToSystem(const std::string& name, const std::string& value) const;

    std::string company_;
    std::string product_;
};

// Replaces all stores by one in memory within a scope, empty at first, or by one that refuses to
// store anything. For tests.
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
