// Named texts kept per user.
#pragma once

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
    std::string company_;
    std::string product_;
};

}  // namespace platform
