// Chooses between the system's settings and a test's.
#include "platform/settings_store.h"

#include <map>
#include <utility>

namespace platform {

struct ScopedSettings::Memory {
    Kind kind;
    std::map<std::string, std::string> values;
};

ScopedSettings::Memory* ScopedSettings::current_ = nullptr;

ScopedSettings::ScopedSettings(Kind kind)
    : memory_(new Memory{kind, {}}), before_(std::exchange(current_, memory_.get())) {}

ScopedSettings::~ScopedSettings() {
    current_ = before_;
}

SettingsStore::SettingsStore(std::string company, std::string product)
    : company_(std::move(company)), product_(std::move(product)) {}

std::optional<std::string> SettingsStore::read(const std::string& name) const {
    const auto* const memory = ScopedSettings::current_;
    if (!memory) return readFromSystem(name);
    const auto found = memory->values.find(name);
    return found == memory->values.end() ? std::nullopt : std::optional(found->second);
}

bool SettingsStore::write(const std::string& name, const std::string& value) const {
    auto* const memory = ScopedSettings::current_;
    if (!memory) return writeToSystem(name, value);
    if (memory->kind == ScopedSettings::kReadOnly) return false;
    memory->values[name] = value;
    return true;
}

}  // namespace platform
