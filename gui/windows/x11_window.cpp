// The window on X11: a child window with its own connection, served from CFrame::idle.
#include "gui/windows/native_window.h"
#include "gui/windows/x11_keyboard.h"
#include "platform/x11_pixels.h"
#include "platform/xcb_owners.h"

#include <algorithm>
#include <optional>

#include <poll.h>

namespace VSTGUI {
namespace {

using platform::XcbConnection;
using platform::XcbOwned;

constexpr uint32_t kEvents =
    XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
    XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_ENTER_WINDOW | XCB_EVENT_MASK_LEAVE_WINDOW |
    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE;

constexpr struct {
    uint16_t mask;
    int32_t bit;
} kStateBits[] = {
    {XCB_MOD_MASK_SHIFT, kShift},  {XCB_MOD_MASK_CONTROL, kControl}, {XCB_MOD_MASK_1, kAlt},
    {XCB_MOD_MASK_4, kApple},      {XCB_BUTTON_MASK_1, kLButton},    {XCB_BUTTON_MASK_2, kMButton},
    {XCB_BUTTON_MASK_3, kRButton},
};

CButtonState heldAndModifiers(uint16_t state) {
    CButtonState result;
    for (const auto& row : kStateBits)
        if (state & row.mask) result |= row.bit;
    return result;
}

CButtonState modifiersIn(uint16_t state) {
    return heldAndModifiers(state).getModifierState();
}

// Returns 0 for unknown buttons and for the wheel, which the server reports as buttons 4 to 7.
int32_t buttonBit(xcb_button_t button) {
    switch (button) {
        case 1:
            return kLButton;
        case 2:
            return kMButton;
        case 3:
            return kRButton;
        case 8:
            return kButton4;
        case 9:
            return kButton5;
        default:
            return 0;
    }
}

const xcb_screen_t* screenOf(const xcb_setup_t* setup, xcb_window_t root) {
    for (auto screen = xcb_setup_roots_iterator(setup); screen.rem; xcb_screen_next(&screen))
        if (screen.data->root == root) return screen.data;
    return nullptr;
}

class X11Window final : public NativeWindow {
  public:
    X11Window(XcbConnection connection, const platform::X11PixelFormat& format,
              WindowClient& client)
        : connection_(std::move(connection)),
          format_(format),
          keyboard_(connection_.get()),
          client_(client),
          colormap_(xcb_generate_id(link())),
          window_(xcb_generate_id(link())),
          graphics_(xcb_generate_id(link())) {}
    ~X11Window() override { close(); }

    bool create(const xcb_screen_t& screen, xcb_window_t parent, int width, int height);

    void close() override;
    void resize(int width, int height) override;
    void show(const PixelBuffer& picture, const IntRect& area) override;
    void flush() override;
    void takeKeyboard() override;
    void hidePointer() override;
    void showPointer() override;
    void pump() override;
    bool hasReports() const override;

  private:
    xcb_connection_t* link() const { return connection_.get(); }
    bool isOpen() const { return connection_ != nullptr; }
    void handle(const xcb_generic_event_t& event);
    void handlePress(const xcb_button_press_event_t& press);
    void handleKey(const xcb_key_press_event_t& key, EventType type);
    void passOn(const xcb_key_press_event_t& key);
    xcb_window_t windowAboveThatWants(uint32_t events) const;
    void blacken(const IntRect& area);
    void handleFocusOut(const xcb_focus_out_event_t& focus);
    void deliverMotion();
    CPoint placeOf(int x, int y);
    void setCursor(xcb_cursor_t cursor);
    void moveHiddenPointerBack();
    void leaveTheEdge();

    // A pointer that hides during a drag.
    struct HiddenPointer {
        CPoint home;    // where the drag began, on the screen
        CPoint inside;  // the same in this window
        CPoint last;    // where it was seen last, on the screen
        CPoint moved;   // since the drag began
    };

    XcbConnection connection_;  // null once closed
    platform::X11PixelFormat format_;
    X11Keyboard keyboard_;
    WindowClient& client_;
    xcb_colormap_t colormap_;
    xcb_window_t window_;
    xcb_gcontext_t graphics_;
    std::optional<xcb_motion_notify_event_t> motion_;  // the latest of several moves
    xcb_window_t root_ = XCB_NONE;
    CPoint screenSize_;
    CPoint pressed_;  // the latest press, in this window
    CPoint pressedOnScreen_;
    std::optional<HiddenPointer> hidden_;
};

// The parent may have a depth of 32 bits. A colormap, a border and the root's visual let the child
// have a different depth.
bool X11Window::create(const xcb_screen_t& screen, xcb_window_t parent, int width, int height) {
    xcb_create_colormap(link(), XCB_COLORMAP_ALLOC_NONE, colormap_, screen.root,
                        screen.root_visual);
    root_ = screen.root;
    screenSize_ = CPoint(screen.width_in_pixels, screen.height_in_pixels);
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, 0, kEvents, colormap_};
    const auto made = xcb_create_window_checked(
        link(), screen.root_depth, window_, parent, 0, 0, static_cast<uint16_t>(width),
        static_cast<uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
        XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
    const XcbOwned<xcb_generic_error_t> error(xcb_request_check(link(), made));
    if (error) return false;
    xcb_create_gc(link(), graphics_, window_, 0, nullptr);
    xcb_map_window(link(), window_);
    xcb_flush(link());
    return true;
}

void X11Window::close() {
    if (!isOpen()) return;
    showPointer();
    xcb_destroy_window(link(), window_);
    xcb_flush(link());
    connection_.reset();  // the server frees everything else of this connection
}

void X11Window::resize(int width, int height) {
    if (!isOpen()) return;
    const uint32_t values[] = {static_cast<uint32_t>(std::max(width, 1)),
                               static_cast<uint32_t>(std::max(height, 1))};
    xcb_configure_window(link(), window_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    xcb_flush(link());
}

// A host may make the window larger than the picture. A new context draws in black.
void X11Window::blacken(const IntRect& area) {
    if (area.isEmpty()) return;
    const xcb_rectangle_t all = {static_cast<int16_t>(area.left), static_cast<int16_t>(area.top),
                                 static_cast<uint16_t>(area.width()),
                                 static_cast<uint16_t>(area.height())};
    xcb_poly_fill_rectangle(link(), window_, graphics_, 1, &all);
}

void X11Window::show(const PixelBuffer& picture, const IntRect& wanted) {
    if (!isOpen()) return;
    blacken({std::max(wanted.left, picture.width()), wanted.top, wanted.right, wanted.bottom});
    blacken({wanted.left, std::max(wanted.top, picture.height()), wanted.right, wanted.bottom});
    const IntRect area = wanted.common(picture.bounds());
    if (area.isEmpty()) return;
    const platform::PixelRows rows{picture.row(area.top) + area.left,
                                   static_cast<size_t>(picture.width()), area.width(),
                                   area.height()};
    format_.put(link(), window_, graphics_, rows, area.left, area.top);
}

// Once for all areas, because each time wakes the server.
void X11Window::flush() {
    if (isOpen()) xcb_flush(link());
}

void X11Window::takeKeyboard() {
    if (!isOpen()) return;
    xcb_set_input_focus(link(), XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    xcb_flush(link());
}

void X11Window::setCursor(xcb_cursor_t cursor) {
    xcb_change_window_attributes(link(), window_, XCB_CW_CURSOR, &cursor);
    xcb_flush(link());
}

void X11Window::hidePointer() {
    if (!isOpen() || hidden_) return;
    const XcbOwned<xcb_query_pointer_reply_t> now(
        xcb_query_pointer_reply(link(), xcb_query_pointer(link(), window_), nullptr));
    if (!now) return;
    const CPoint at(now->root_x, now->root_y);
    hidden_ = HiddenPointer{pressedOnScreen_, pressed_, at, at - pressedOnScreen_};
    // A bitmap without a set pixel, used as its own mask, shows nothing.
    const xcb_pixmap_t shape = xcb_generate_id(link());
    const xcb_gcontext_t clear = xcb_generate_id(link());
    const xcb_cursor_t cursor = xcb_generate_id(link());
    const xcb_rectangle_t all = {0, 0, 1, 1};
    xcb_create_pixmap(link(), 1, shape, window_, 1, 1);
    xcb_create_gc(link(), clear, shape, 0, nullptr);
    xcb_poly_fill_rectangle(link(), shape, clear, 1, &all);
    xcb_create_cursor(link(), cursor, shape, shape, 0, 0, 0, 0, 0, 0, 0, 0);
    setCursor(cursor);
    leaveTheEdge();
    xcb_free_cursor(link(), cursor);
    xcb_free_gc(link(), clear);
    xcb_free_pixmap(link(), shape);
}

void X11Window::showPointer() {
    if (!isOpen() || !hidden_) return;
    moveHiddenPointerBack();
    hidden_.reset();
    setCursor(XCB_CURSOR_NONE);
}

void X11Window::moveHiddenPointerBack() {
    xcb_warp_pointer(link(), XCB_NONE, root_, 0, 0, 0, 0, static_cast<int16_t>(hidden_->home.x),
                     static_cast<int16_t>(hidden_->home.y));
    hidden_->last = hidden_->home;
    xcb_flush(link());
}

// At the edge of the screen, the pointer cannot go further.
void X11Window::leaveTheEdge() {
    const CPoint& at = hidden_->last;
    const bool atEdge =
        at.x <= 0 || at.y <= 0 || at.x >= screenSize_.x - 1 || at.y >= screenSize_.y - 1;
    if (atEdge) moveHiddenPointerBack();
}

// While hidden, asks the server instead of believing the event: after a jump, moves from before it
// may still be queued.
CPoint X11Window::placeOf(int x, int y) {
    if (!hidden_) return {CCoord(x), CCoord(y)};
    const XcbOwned<xcb_query_pointer_reply_t> now(
        xcb_query_pointer_reply(link(), xcb_query_pointer(link(), window_), nullptr));
    if (now) {
        const CPoint at(now->root_x, now->root_y);
        hidden_->moved = hidden_->moved + at - hidden_->last;
        hidden_->last = at;
        leaveTheEdge();
    }
    return hidden_->inside + hidden_->moved;
}

void X11Window::pump() {
    while (isOpen()) {
        const XcbOwned<xcb_generic_event_t> event(xcb_poll_for_event(link()));
        if (!event) break;
        const auto type = event->response_type & 0x7F;
        if (type == XCB_MOTION_NOTIFY) {
            motion_ = reinterpret_cast<const xcb_motion_notify_event_t&>(*event);
            continue;
        }
        deliverMotion();
        if (isOpen()) handle(*event);
    }
    deliverMotion();
}

bool X11Window::hasReports() const {
    if (!isOpen()) return false;
    pollfd state = {xcb_get_file_descriptor(link()), POLLIN, 0};
    return poll(&state, 1, 0) != 0;
}

void X11Window::deliverMotion() {
    if (!isOpen() || !motion_) return;
    const xcb_motion_notify_event_t motion = *motion_;
    motion_.reset();
    client_.pointerMoved(placeOf(motion.event_x, motion.event_y), heldAndModifiers(motion.state));
}

void X11Window::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_EXPOSE: {
            const auto& area = reinterpret_cast<const xcb_expose_event_t&>(event);
            return client_.exposed({area.x, area.y, area.x + area.width, area.y + area.height});
        }
        case XCB_BUTTON_PRESS:
            return handlePress(reinterpret_cast<const xcb_button_press_event_t&>(event));
        case XCB_BUTTON_RELEASE: {
            const auto& up = reinterpret_cast<const xcb_button_release_event_t&>(event);
            const int32_t button = buttonBit(up.detail);
            const CPoint where = hidden_ ? hidden_->inside : CPoint(up.event_x, up.event_y);
            if (button) client_.pointerReleased(where, modifiersIn(up.state) | button);
            return;
        }
        case XCB_ENTER_NOTIFY: {
            const auto& in = reinterpret_cast<const xcb_enter_notify_event_t&>(event);
            if (in.mode == XCB_NOTIFY_MODE_NORMAL)
                client_.pointerMoved(placeOf(in.event_x, in.event_y), heldAndModifiers(in.state));
            return;
        }
        case XCB_LEAVE_NOTIFY: {
            const auto& out = reinterpret_cast<const xcb_leave_notify_event_t&>(event);
            if (out.mode == XCB_NOTIFY_MODE_NORMAL) client_.pointerLeft();
            return;
        }
        case XCB_KEY_PRESS:
            return handleKey(reinterpret_cast<const xcb_key_press_event_t&>(event),
                             EventType::KeyDown);
        case XCB_KEY_RELEASE:
            return handleKey(reinterpret_cast<const xcb_key_press_event_t&>(event),
                             EventType::KeyUp);
        case XCB_FOCUS_OUT:
            return handleFocusOut(reinterpret_cast<const xcb_focus_out_event_t&>(event));
        case XCB_MAPPING_NOTIFY:
            return keyboard_.reload();
        default:
            return;
    }
}

void X11Window::handlePress(const xcb_button_press_event_t& press) {
    const CPoint where(press.event_x, press.event_y);
    const CButtonState modifiers = modifiersIn(press.state);
    switch (press.detail) {
        case 4:
            return client_.wheelTurned(where, 0, 1, modifiers);
        case 5:
            return client_.wheelTurned(where, 0, -1, modifiers);
        case 6:
            return client_.wheelTurned(where, -1, 0, modifiers);
        case 7:
            return client_.wheelTurned(where, 1, 0, modifiers);
        default:
            break;
    }
    const int32_t button = buttonBit(press.detail);
    if (!button) return;
    if (!hidden_) {
        pressed_ = where;
        pressedOnScreen_ = CPoint(press.root_x, press.root_y);
    }
    client_.pointerPressed(where, modifiers | button);
}

void X11Window::handleKey(const xcb_key_press_event_t& key, EventType type) {
    KeyboardEvent event(type);
    keyboard_.translate(key.detail, key.state, event);
    event.modifiers = modifiersOf(modifiersIn(key.state));
    const bool isKnown = event.character || event.virt != VirtualKey::None;
    if (!isKnown || !client_.keyChanged(event)) passOn(key);
}

// Unused keys go to the host, as if this window did not listen, so its transport keys work while
// the editor has the keyboard. Synthetic keys stay here: one sent by the host would go round in
// circles.
void X11Window::passOn(const xcb_key_press_event_t& key) {
    if (!isOpen() || key.response_type & 0x80) return;
    const bool isPress = key.response_type == XCB_KEY_PRESS;
    const uint32_t mask = isPress ? XCB_EVENT_MASK_KEY_PRESS : XCB_EVENT_MASK_KEY_RELEASE;
    xcb_key_press_event_t passed = key;
    passed.event = windowAboveThatWants(mask);
    if (!passed.event) return;
    xcb_send_event(link(), 0, passed.event, mask, reinterpret_cast<const char*>(&passed));
    xcb_flush(link());
}

// Returns 0 if there is none below the root.
xcb_window_t X11Window::windowAboveThatWants(uint32_t events) const {
    for (xcb_window_t at = window_;;) {
        const XcbOwned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(link(), xcb_query_tree(link(), at), nullptr));
        if (!tree || tree->parent == tree->root) return 0;
        at = tree->parent;
        const XcbOwned<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(link(), xcb_get_window_attributes(link(), at),
                                            nullptr));
        if (!attributes) return 0;
        if (attributes->all_event_masks & events) return at;
    }
}

void X11Window::handleFocusOut(const xcb_focus_out_event_t& focus) {
    const bool byGrab = focus.mode == XCB_NOTIFY_MODE_GRAB || focus.mode == XCB_NOTIFY_MODE_UNGRAB;
    const bool byPointer = focus.detail == XCB_NOTIFY_DETAIL_POINTER;
    if (!byGrab && !byPointer) client_.keyboardLost();
}

}  // namespace

std::unique_ptr<NativeWindow> openNativeWindow(void* parent, int width, int height,
                                               WindowClient& client) {
    const auto parentId = static_cast<xcb_window_t>(reinterpret_cast<uintptr_t>(parent));
    XcbConnection connection(xcb_connect(nullptr, nullptr));
    xcb_connection_t* const link = connection.get();
    if (xcb_connection_has_error(link)) return nullptr;
    const XcbOwned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(link, xcb_query_tree(link, parentId), nullptr));
    if (!tree) return nullptr;
    const xcb_screen_t* const screen = screenOf(xcb_get_setup(link), tree->root);
    if (!screen) return nullptr;
    const auto format = platform::X11PixelFormat::of(*xcb_get_setup(link), *screen);
    if (!format) return nullptr;

    auto window = std::make_unique<X11Window>(std::move(connection), *format, client);
    if (!window->create(*screen, parentId, std::max(width, 1), std::max(height, 1))) return nullptr;
    return window;
}

void releaseNativeResources() {}

}  // namespace VSTGUI
