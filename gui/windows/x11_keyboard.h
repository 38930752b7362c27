// Turns X server key codes into characters and virtual keys. Uses the core keyboard mapping.
#pragma once

#include "gui/base/events.h"

#include <xcb/xcb.h>

#include <vector>

namespace VSTGUI {

class X11Keyboard {
  public:
    explicit X11Keyboard(xcb_connection_t* connection) : connection_(connection) { reload(); }

    void reload();  // call after the mapping has changed
    // Sets the virtual key or the character. Sets neither for keys without a use here.
    void translate(xcb_keycode_t code, uint16_t state, KeyboardEvent& event) const;

  private:
    xcb_keysym_t symbolFor(xcb_keycode_t code, uint16_t state) const;
    xcb_keysym_t symbolAt(size_t row, size_t column) const;

    xcb_connection_t* connection_;
    std::vector<xcb_keysym_t> symbols_;  // one row per key code
    size_t perCode_ = 0;
    xcb_keycode_t firstCode_ = 0;
};

}  // namespace VSTGUI
