// State of the whole process. Any thread may use it, because hosts may open editors on several.
#include "editor/skin_missing.h"

#include <atomic>
#include <mutex>

namespace editor {
namespace {

std::atomic<bool> skinMissing{false};
std::mutex reasonMutex;
std::string reasonText;

}  // namespace

bool isSkinMissing() {
    return skinMissing;
}

void setSkinMissing(bool missing) {
    skinMissing = missing;
}

std::string screenReason() {
    const std::lock_guard<std::mutex> lock(reasonMutex);
    return reasonText;
}

void setScreenReason(const std::string& reason) {
    const std::lock_guard<std::mutex> lock(reasonMutex);
    reasonText = reason;
}

}  // namespace editor
