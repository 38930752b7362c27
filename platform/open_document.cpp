// Chooses between the system's opener and a test's.
#include "platform/open_document.h"

#include <utility>

#include "platform/system_document.h"

namespace platform {
namespace {

DocumentOpener replacement;

}  // namespace

bool openDocument(const std::string& path) {
    return replacement ? replacement(path) : openSystemDocument(path);
}

ScopedDocumentOpener::ScopedDocumentOpener(DocumentOpener opener) {
    replacement = std::move(opener);
}

ScopedDocumentOpener::~ScopedDocumentOpener() {
    replacement = nullptr;
}

}  // namespace platform
