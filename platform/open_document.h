// Opens a document in another program, for the musician to read.
#pragma once

#include <functional>
#include <string>

namespace platform {

// Returns false if no program could be started, or if it reports soon that it cannot open the
// document. Windows: the word processor that comes with the system, or the user's choice for such
// files. Linux: xdg-open.
using DocumentOpener = std::function<bool(const std::string& path)>;
bool openDocument(const std::string& path);

// Substitutes another opener within a scope. For tests.
class ScopedDocumentOpener {
  public:
    explicit ScopedDocumentOpener(DocumentOpener opener);
    ~ScopedDocumentOpener();
    ScopedDocumentOpener(const ScopedDocumentOpener&) = delete;
    ScopedDocumentOpener& operator=(const ScopedDocumentOpener&) = delete;
};

}  // namespace platform
