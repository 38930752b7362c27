// The flag of the process.
#include "editor/skin_missing.h"

#include <atomic>

namespace editor {
namespace {

std::atomic<bool> skinMissing{false};

}  // namespace

bool isSkinMissing() {
    return skinMissing;
}

void setSkinMissing(bool missing) {
    skinMissing = missing;
}

}  // namespace editor
