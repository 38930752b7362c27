// An X11 window with the bar, an instrument's editor below it, and the keyboard.
#pragma once

#include <bitset>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <xcb/xcb.h>

#include "app/control_bar.h"
#include "host/plugin_host.h"
#include "platform/display.h"

namespace app {

class ComputerKeyboard;

// The editor and the bar draw in child windows over their own connections and take keys there. This
// window listens on the children, too. Keys play no notes while the instrument requires them
// (effKeysRequired), for example in a text field or a menu.
class EditorWindow {
  public:
    // Opens and shows the window. Throws host::Error if there is no display. The actions must
    // outlive it.
    EditorWindow(host::PluginHost& host, ComputerKeyboard& keyboard, const BarActions& actions);
    ~EditorWindow();
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;

    void setTitle(const std::string& title);  // UTF-8
    void show(const BarState& state) { bar_->show(state); }
    // Waits for events, at most that long, handles them and lets the editor idle. Returns false
    // once the window is closed or the display is gone.
    bool serve(std::chrono::milliseconds patience);

  private:
    void create();
    void announce();
    void openEditor();
    void setSize(int editorWidth, int editorHeight);
    int roomBeside(int editorHeight) const;  // pixels that the screen leaves for the bar
    int barHeight() const { return height_ - editorHeight_; }
    bool resize(int width, int height);
    VSTGUI::PixelBuffer picture() const;
    void listenBelow(xcb_window_t window);
    void handle(const xcb_generic_event_t& event, bool keysAreTaken);
    const std::function<void()>* actionOf(xcb_keycode_t key) const;  // null if it has none
    void askEditor(VstInt32 opcode, void* ptr = nullptr) const;
    bool keysAreWanted() const;
    void changeText(xcb_atom_t property, xcb_atom_t type, const std::string& text);
    xcb_atom_t atom(const char* name) const;

    host::PluginHost& host_;
    ComputerKeyboard& keyboard_;
    const BarActions& actions_;
    const std::optional<platform::Display> display_ = platform::mainDisplay();
    xcb_connection_t* connection_;
    xcb_window_t window_ = 0;
    xcb_window_t stage_ = 0;  // the editor's place in the window
    int width_ = 0;           // of the window
    int height_ = 0;
    int editorWidth_ = 0;
    int editorHeight_ = 0;
    std::unique_ptr<ControlBar> bar_;
    xcb_atom_t deleteWindow_ = 0;
    std::string title_;
    std::bitset<256> heldKeys_;  // those with an action, which does not repeat
    bool tellsWhenItWantsKeys_ = false;
    bool isClosed_ = false;
};

}  // namespace app
