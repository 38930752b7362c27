// An X11 window that shows an instrument's editor and listens to the keyboard.
#pragma once

#include <chrono>
#include <string>

#include <xcb/xcb.h>

#include "host/plugin_host.h"

namespace app {

class ComputerKeyboard;

// The editor draws in a child window over its own connection and takes keys there. This window
// listens on the child, too. Keys play no notes while the instrument requires them
// (effKeysRequired), for example in a text field or a menu.
class EditorWindow {
  public:
    // Opens and shows the window. Throws host::Error if there is no display.
    EditorWindow(host::PluginHost& host, ComputerKeyboard& keyboard);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    void setTitle(const std::string& title);  // UTF-8
    // Waits for events, at most that long, handles them and lets the editor idle. Returns false
    // once the window is closed or the display is gone.
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
