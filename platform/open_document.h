// Opens a document for the musician to read, in a program of its own.
#pragma once

#include <functional>
#include <string>

namespace platform {

// False when no program could be started. Windows: the word processor that comes with the system,
// or what the user has chosen for such files. Linux: xdg-open.
using DocumentOpener = std::function<bool(const std::string& path)>;
bool openDocument(const std::string& path);

// Puts another opener in place for a scope. For tests.
class ScopedDocumentOpener {
  public:
    explicit ScopedDocumentOpener(DocumentOpener opener);
    ~ScopedDocumentOpener();
    ScopedDocumentOpener(const ScopedDocumentOpener&) = delete;
    ScopedDocumentOpener& operator=(const ScopedDocumentOpener&) = delete;
};

}  // namespace platform
