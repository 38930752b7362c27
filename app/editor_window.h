// A window on X11 that shows an instrument's editor and listens to the keyboard.
#pragma once

#include <chrono>
#include <string>

#include <xcb/xcb.h>

#include "host/plugin_host.h"

namespace app {

class ComputerKeyboard;

// The editor draws in a child window over a connection of its own and takes its keys there; this
// window listens on the child too. While the instrument requires the keys (effKeysRequired), for a
// text field or a menu, they play nothing.
class EditorWindow {
  public:
    // Opens and shows it. Throws host::Error when there is no display.
    EditorWindow(host::PluginHost& host, ComputerKeyboard& keyboard);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    void setTitle(const std::string& title);  // UTF-8
    // Waits that long at most for something to do, does it, and lets the editor work. False once
    // the window has been closed, or the display is gone.
    bool serve(std::chrono::milliseconds patience);

  private:
    void create(int width, int height);
    void announce(int width, int height);
    bool resize(int width, int height);
    void listenBelow(xcb_window_t window);
    void handle(const xcb_generic_event_t& event, bool editorHasKeys);
    void askEditor(VstInt32 opcode, void* ptr = nullptr) const;
    bool editorWantsKeys() const;
    void changeText(xcb_atom_t property, xcb_atom_t type, const std::string& text);
    xcb_atom_t atom(const char* name) const;

    host::PluginHost& host_;
    ComputerKeyboard& keyboard_;
    xcb_connection_t* connection_;
    xcb_window_t window_ = 0;
    xcb_atom_t deleteWindow_ = 0;
    std::string title_;
    bool tellsWhenItWantsKeys_ = false;
    bool isClosed_ = false;
};

}  // namespace app
