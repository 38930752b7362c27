// The editor in a host's window.
#pragma once

#include <memory>

#include "editor/my_editor.h"
#include "plugin/clap/idle_timer.h"

namespace clap {

// [main]. What it calls of the host's may let go of it: callers keep a reference meanwhile.
class EditorWindow {
  public:
    EditorWindow(editor::EditorHost& instrument, const Host& host, const HostTimerSupport* timers)
        : host_(host), timers_(timers), editor_(instrument) {}
    ~EditorWindow() { hide(); }

    void setScale(double scale) { editor_.setContentScale(scale); }
    editor::EditorRect size() { return editor_.getRect(); }
    // Shows the editor in this window.
    bool setParent(void* parent);
    // Opens it again; nothing happens while it is open.
    bool show();
    void hide();

    void onTimer(Id timer);
    void onCallback();

  private:
    const Host& host_;
    const HostTimerSupport* const timers_;
    editor::myEditor editor_;
    void* parent_ = nullptr;
    std::unique_ptr<IdleTimer> timer_;  // while the editor is open
};

}  // namespace clap
