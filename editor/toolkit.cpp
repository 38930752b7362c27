// Counts the users of the view library.
#include "editor/toolkit.h"

namespace editor {
namespace {

int users = 0;

}  // namespace

Toolkit::Toolkit() {
    if (users++ == 0) setUp();
}

Toolkit::~Toolkit() {
    if (--users == 0) tearDown();
}

}  // namespace editor
