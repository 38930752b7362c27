// A modal window with its own connection, drawn in memory.
#include "platform/message_window_x11.h"

#include <pthread.h>
#include <signal.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "platform/message_picture.h"
#include "platform/utf8.h"
#include "platform/x11_pixels.h"
#include "platform/xcb_owners.h"

namespace platform {
namespace {

// Writing to a server that is gone raises SIGPIPE, which would end the host.
class BrokenPipeGuard {
  public:
    BrokenPipeGuard() {
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending_ = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &pipe_, &previous_);
    }
    ~BrokenPipeGuard() {
        const timespec now = {0, 0};
        if (!wasPending_) sigtimedwait(&pipe_, nullptr, &now);
        pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
    }
    BrokenPipeGuard(const BrokenPipeGuard&) = delete;
    BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

  private:
    sigset_t pipe_;
    sigset_t previous_;
    bool wasPending_;
};

enum Atom {
    kProtocols,
    kDeleteWindow,
    kUtf8Name,
    kUtf8,
    kWindowType,
    kDialogType,
    kState,
    kAboveState,
    kNumAtoms
};
constexpr const char* kAtomNames[kNumAtoms] = {
    "WM_PROTOCOLS",        "WM_DELETE_WINDOW",           "_NET_WM_NAME",  "UTF8_STRING",
    "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DIALOG", "_NET_WM_STATE", "_NET_WM_STATE_ABOVE"};

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 1 && number > 0; --number) xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

class MessageWindow {
  public:
    MessageWindow(xcb_connection_t* connection, const xcb_screen_t& screen,
                  const X11PixelFormat& format)
        : connection_(connection),
          screen_(screen),
          format_(format),
          window_(xcb_generate_id(connection)),
          graphics_(xcb_generate_id(connection)) {}

    void open(const std::string& title, const std::string& text, MessageIcon icon);
    // Returns false if the display is lost first.
    bool waitUntilDismissed();

  private:
    void internAtoms();
    void setProperties(const std::string& title);
    template <typename Item, size_t kCount>
    void setProperty(xcb_atom_t property, xcb_atom_t type, const Item (&items)[kCount]) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, property, type,
                            8 * sizeof(Item), kCount, items);
    }
    void setText(xcb_atom_t property, xcb_atom_t type, const std::string& text) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                            static_cast<uint32_t>(text.size()), text.data());
    }
    void show();
    void setPressed(bool pressed);
    bool dismisses(const xcb_generic_event_t& event);
    bool isDismissingKey(xcb_keycode_t code) const;

    xcb_connection_t* connection_;
    const xcb_screen_t& screen_;
    const X11PixelFormat& format_;
    const xcb_window_t window_;
    const xcb_gcontext_t graphics_;
    std::array<xcb_atom_t, kNumAtoms> atoms_ = {};
    MessagePicture plain_;
    MessagePicture pressedPicture_;
    bool pressed_ = false;
    bool hasAskedForKeys_ = false;
};

void MessageWindow::internAtoms() {
    std::array<xcb_intern_atom_cookie_t, kNumAtoms> requests;
    for (size_t i = 0; i < kNumAtoms; ++i) {
        const auto length = static_cast<uint16_t>(std::strlen(kAtomNames[i]));
        requests[i] = xcb_intern_atom(connection_, 0, length, kAtomNames[i]);
    }
    for (size_t i = 0; i < kNumAtoms; ++i) {
        const XcbOwned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection_, requests[i], nullptr));
        if (reply) atoms_[i] = reply->atom;
    }
}

void MessageWindow::setProperties(const std::string& title) {
    // Make the caption well-formed, and short enough for one request.
    std::string caption;
    for (size_t position = 0; position < title.size() && caption.size() < 200;)
        caption += utf8::encode(utf8::next(title, position));
    setText(XCB_ATOM_WM_NAME, atoms_[kUtf8], caption);
    setText(atoms_[kUtf8Name], atoms_[kUtf8], caption);
    const xcb_atom_t protocols[] = {atoms_[kDeleteWindow]};
    setProperty(atoms_[kProtocols], XCB_ATOM_ATOM, protocols);
    const xcb_atom_t type[] = {atoms_[kDialogType]};
    setProperty(atoms_[kWindowType], XCB_ATOM_ATOM, type);
    // Stay above the host, which waits for the message; behind its window nobody would find it.
    const xcb_atom_t state[] = {atoms_[kAboveState]};
    setProperty(atoms_[kState], XCB_ATOM_ATOM, state);

    constexpr uint32_t kInputHint = 1;
    const uint32_t hints[9] = {kInputHint, 1};
    setProperty(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, hints);
    constexpr uint32_t kSmallestAndLargestSize = 16 | 32;
    const auto width = static_cast<uint32_t>(plain_.width);
    const auto height = static_cast<uint32_t>(plain_.height);
    const uint32_t size[18] = {kSmallestAndLargestSize, 0, 0, 0, 0, width, height, width, height};
    setProperty(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, size);
}

void MessageWindow::open(const std::string& title, const std::string& text, MessageIcon icon) {
    const int largestHeight = screen_.height_in_pixels * 3 / 4;
    plain_ = drawMessage(title, text, icon, false, largestHeight);
    pressedPicture_ = drawMessage(title, text, icon, true, largestHeight);
    internAtoms();
    const uint32_t values[] = {screen_.white_pixel,
                               XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS |
                                   XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_KEY_PRESS |
                                   XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen_.root,
                      static_cast<int16_t>((screen_.width_in_pixels - plain_.width) / 2),
                      static_cast<int16_t>((screen_.height_in_pixels - plain_.height) / 2),
                      static_cast<uint16_t>(plain_.width), static_cast<uint16_t>(plain_.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen_.root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    xcb_create_gc(connection_, graphics_, window_, 0, nullptr);
    setProperties(title);
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
}

bool MessageWindow::waitUntilDismissed() {
    for (;;) {
        const XcbOwned<xcb_generic_event_t> event(xcb_wait_for_event(connection_));
        if (!event) return false;
        if (dismisses(*event)) return true;
    }
}

void MessageWindow::show() {
    const MessagePicture& picture = pressed_ ? pressedPicture_ : plain_;
    format_.put(
        connection_, window_, graphics_,
        {picture.pixels.data(), static_cast<size_t>(picture.width), picture.width, picture.height},
        0, 0);
    xcb_flush(connection_);
}

void MessageWindow::setPressed(bool pressed) {
    if (pressed == pressed_) return;
    pressed_ = pressed;
    show();
}

bool MessageWindow::dismisses(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_EXPOSE:
            if (!hasAskedForKeys_) {  // only a visible window can take them
                hasAskedForKeys_ = true;
                xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
            }
            show();
            return false;
        case XCB_BUTTON_PRESS: {
            const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(event);
            const bool onButton = plain_.button.holds(press.event_x, press.event_y);
            if (press.detail == XCB_BUTTON_INDEX_1) setPressed(onButton);
            return false;
        }
        case XCB_BUTTON_RELEASE: {
            const auto& release = reinterpret_cast<const xcb_button_release_event_t&>(event);
            if (release.detail != XCB_BUTTON_INDEX_1 || !pressed_) return false;
            setPressed(false);
            return plain_.button.holds(release.event_x, release.event_y);
        }
        case XCB_KEY_PRESS:
            return isDismissingKey(reinterpret_cast<const xcb_key_press_event_t&>(event).detail);
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            return message.type == atoms_[kProtocols] &&
                   message.data.data32[0] == atoms_[kDeleteWindow];
        }
        case XCB_DESTROY_NOTIFY:
            return true;
        default:
            return false;
    }
}

bool MessageWindow::isDismissingKey(xcb_keycode_t code) const {
    const XcbOwned<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection_, xcb_get_keyboard_mapping(connection_, code, 1), nullptr));
    if (!reply || reply->keysyms_per_keycode == 0) return false;
    constexpr xcb_keysym_t kKeys[] = {0xFF0D, 0xFF8D, 0xFF1B, 0x20};  // Return Enter Escape Space
    const xcb_keysym_t symbol = *xcb_get_keyboard_mapping_keysyms(reply.get());
    return std::find(std::begin(kKeys), std::end(kKeys), symbol) != std::end(kKeys);
}

}  // namespace

bool showMessageWindow(const std::string& title, const std::string& text, MessageIcon icon) {
    const BrokenPipeGuard guard;
    int screenNumber = 0;
    const XcbConnection connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get())) return false;
    const xcb_screen_t* const screen = screenOf(connection.get(), screenNumber);
    if (!screen) return false;
    const auto format = X11PixelFormat::of(*xcb_get_setup(connection.get()), *screen);
    if (!format) return false;
    MessageWindow window(connection.get(), *screen, *format);
    window.open(title, text, icon);
    return window.waitUntilDismissed();
}

}  // namespace platform
