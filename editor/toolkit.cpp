// Counts the users of the view library.
#include "editor/toolkit.h"

#include "vstgui/lib/vstguiinit.h"
#include "vstgui/vstgui.h"

#include "platform/module_handle.h"

namespace editor {
namespace {

int users = 0;

}  // namespace

Toolkit::Toolkit() {
    if (users++ > 0) return;
    prepareThread();
    VSTGUI::init(static_cast<VSTGUI::PlatformInstanceHandle>(platform::moduleHandle()));
}

Toolkit::~Toolkit() {
    if (--users > 0) return;
    VSTGUI::exit();
    releaseThread();
}

}  // namespace editor
