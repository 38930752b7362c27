// The window through XCB, following ICCCM and EWMH.
#include "app/editor_window.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include <poll.h>
#include <unistd.h>

#include "app/computer_keyboard.h"
#include "host/error.h"
#include "platform/xcb_owners.h"

namespace app {
namespace {

using platform::XcbOwned;

constexpr uint32_t kKeyEvents = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
constexpr uint32_t kEvents =
    kKeyEvents | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
constexpr uint16_t kShortcutModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
constexpr std::chrono::milliseconds kRepeatGap{5};  // between the two events of a repeat
constexpr int kBareWidth = 480;                     // if the instrument has no editor
constexpr int kBareHeight = 120;

// The server's codes: the Linux input code plus 8.
enum Key : xcb_keycode_t { kSpace = 65, kF5 = 71, kF6 = 72, kHome = 110, kDelete = 119 };

xcb_connection_t* connectToDisplay() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) == 0) return connection;
    xcb_disconnect(connection);
    throw host::Error("No window: the X display cannot be opened.");
}

using Event = XcbOwned<xcb_generic_event_t>;

bool isRelease(const Event& event) {
    return (event->response_type & 0x7f) == XCB_KEY_RELEASE;
}

// The server repeats a held key by a release and a press at the same time.
bool isRepeat(const Event& first, const Event& second) {
    const auto& up = reinterpret_cast<const xcb_key_release_event_t&>(*first);
    const auto& down = reinterpret_cast<const xcb_key_press_event_t&>(*second);
    return isRelease(first) && (down.response_type & 0x7f) == XCB_KEY_PRESS &&
           up.detail == down.detail && up.time == down.time;
}

// An editor may forward keys that it does not use, as some hosts expect. This window already gets
// them by listening on the editor's window.
bool isSentKey(const xcb_generic_event_t& event) {
    constexpr uint8_t kSent = 0x80;
    return event.response_type == (XCB_KEY_PRESS | kSent) ||
           event.response_type == (XCB_KEY_RELEASE | kSent);
}

// Waits at most that long, then adds the events that have arrived.
void readEvents(xcb_connection_t* connection, std::chrono::milliseconds patience,
                std::vector<Event>& events) {
    pollfd state = {xcb_get_file_descriptor(connection), POLLIN, 0};
    const bool isReady = poll(&state, 1, static_cast<int>(patience.count())) != 0;
    const auto next = isReady ? xcb_poll_for_event : xcb_poll_for_queued_event;
    while (Event event{next(connection)}) {
        if (!isSentKey(*event)) events.push_back(std::move(event));
    }
}

// For the older window title property. Characters outside ASCII become question marks.
std::string asciiOf(const std::string& text) {
    std::string ascii;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) ascii += c;
        if (byte >= 0xc0) ascii += '?';
    }
    return ascii;
}

}  // namespace

EditorWindow::EditorWindow(host::PluginHost& host, ComputerKeyboard& keyboard,
                           const BarActions& actions)
    : host_(host), keyboard_(keyboard), actions_(actions), connection_(connectToDisplay()) {
    create();
    setTitle(host_.name());
    bar_ = std::make_unique<ControlBar>(window_, actions, [this] { return picture(); });
    bar_->setSize(width_, barHeight());
    host_.onSizeWindow([this](int width, int height) { return resize(width, height); });
    openEditor();
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
}

EditorWindow::~EditorWindow() {
    askEditor(effEditClose);
    bar_.reset();
    host_.onSizeWindow(nullptr);
    keyboard_.releaseAll();
    xcb_disconnect(connection_);
}

void EditorWindow::openEditor() {
    ERect* rect = nullptr;
    askEditor(effEditGetRect, &rect);
    const bool hasSize = rect && rect->right > rect->left && rect->bottom > rect->top;
    if (hasSize) resize(rect->right - rect->left, rect->bottom - rect->top);
    // Wait until the editor's own connection can find the window.
    const XcbOwned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    askEditor(effEditOpen, reinterpret_cast<void*>(std::uintptr_t{stage_}));
    // An instrument that does not implement the opcode answers 0, which means "keys required".
    tellsWhenItWantsKeys_ = host_.dispatch(effKeysRequired) != 0;
    listenBelow(window_);
}

void EditorWindow::askEditor(VstInt32 opcode, void* ptr) const {
    if (host_.hasEditor()) host_.dispatch(opcode, 0, 0, ptr);
}

void EditorWindow::create() {
    setSize(kBareWidth, kBareHeight);
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    window_ = xcb_generate_id(connection_);
    const uint32_t values[] = {screen.black_pixel, kEvents};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0,
                      static_cast<uint16_t>(width_), static_cast<uint16_t>(height_), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
    stage_ = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, stage_, window_, 0,
                      static_cast<int16_t>(barHeight()), kBareWidth, kBareHeight, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL, values);
    xcb_map_window(connection_, stage_);
    deleteWindow_ = atom("WM_DELETE_WINDOW");
    const xcb_atom_t protocols = atom("WM_PROTOCOLS");
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, protocols, XCB_ATOM_ATOM, 32,
                        1, &deleteWindow_);
    changeText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, std::string("quarzel\0Quarzel\0", 16));
    const auto process = static_cast<uint32_t>(getpid());
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &process);
    constexpr uint32_t kInputHint = 1;
    const uint32_t hints[9] = {kInputHint, 1};  // takes keyboard input
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_HINTS,
                        XCB_ATOM_WM_HINTS, 32, 9, hints);
    announce();
    // Wait until the bar's own connection can find the window.
    const XcbOwned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void EditorWindow::setSize(int editorWidth, int editorHeight) {
    editorWidth_ = editorWidth;
    editorHeight_ = editorHeight;
    width_ = std::max(editorWidth, ControlBar::kLeastWidth);
    height_ = editorHeight + ControlBar::heightFor(width_, roomBeside(editorHeight));
}

int EditorWindow::roomBeside(int editorHeight) const {
    if (!display_) return INT16_MAX;
    return display_->height - platform::kTitleBar - editorHeight;
}

// Only the editor resizes the window.
void EditorWindow::announce() {
    constexpr uint32_t kSizeHint = 1 << 3, kLeastHint = 1 << 4, kMostHint = 1 << 5;
    uint32_t hints[18] = {kSizeHint | kLeastHint | kMostHint};
    for (const int place : {3, 5, 7}) {  // size, minimum and maximum
        hints[place] = static_cast<uint32_t>(width_);
        hints[place + 1] = static_cast<uint32_t>(height_);
    }
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
}

bool EditorWindow::resize(int width, int height) {
    if (width < 1 || height < 1 || width > INT16_MAX) return false;
    if (height > INT16_MAX - ControlBar::heightFor(width, INT16_MAX)) return false;
    setSize(width, height);
    announce();
    const uint32_t size[] = {static_cast<uint32_t>(width_), static_cast<uint32_t>(height_)};
    xcb_configure_window(connection_, window_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size);
    const uint32_t stage[] = {static_cast<uint32_t>(barHeight()), static_cast<uint32_t>(width),
                              static_cast<uint32_t>(height)};
    xcb_configure_window(connection_, stage_,
                         XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         stage);
    xcb_flush(connection_);
    bar_->setSize(width_, barHeight());
    return true;
}

VSTGUI::PixelBuffer EditorWindow::picture() const {
    VSTGUI::PixelBuffer pixels(width_, height_);
    const XcbOwned<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection_,
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, 0, 0,
                      static_cast<uint16_t>(width_), static_cast<uint16_t>(height_), ~0u),
        nullptr));
    const std::size_t count = std::size_t(width_) * height_;
    const bool isReadable =
        image && xcb_get_setup(connection_)->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST &&
        xcb_get_image_data_length(image.get()) == int(4 * count);
    constexpr uint32_t kOpaque = 0xFF000000;
    if (isReadable) std::memcpy(pixels.row(0), xcb_get_image_data(image.get()), 4 * count);
    for (std::size_t i = 0; i < count; ++i) pixels.row(0)[i] |= kOpaque;
    return pixels;
}

void EditorWindow::listenBelow(xcb_window_t window) {
    const XcbOwned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    if (!tree) return;
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const uint32_t events = kKeyEvents;
        xcb_change_window_attributes(connection_, children[i], XCB_CW_EVENT_MASK, &events);
        listenBelow(children[i]);
    }
}

void EditorWindow::setTitle(const std::string& title) {
    if (title == title_) return;
    title_ = title;
    changeText(atom("_NET_WM_NAME"), atom("UTF8_STRING"), title);
    changeText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, asciiOf(title));
    xcb_flush(connection_);
}

bool EditorWindow::serve(std::chrono::milliseconds patience) {
    std::vector<Event> events;
    readEvents(connection_, patience, events);
    if (!events.empty() && isRelease(events.back())) readEvents(connection_, kRepeatGap, events);
    // The editor and the bar get the same keys over their own connections. Whether they want keys
    // before or after them tells whose they are.
    const bool wereWanted = !events.empty() && keysAreWanted();
    askEditor(effEditIdle);
    bar_->idle();
    const bool keysAreTaken = wereWanted || (!events.empty() && keysAreWanted());
    for (std::size_t i = 0; i < events.size(); ++i) {
        const bool goesOn = i + 1 < events.size() && isRepeat(events[i], events[i + 1]);
        if (!goesOn) handle(*events[i], keysAreTaken);
    }
    return !isClosed_ && xcb_connection_has_error(connection_) == 0;
}

bool EditorWindow::keysAreWanted() const {
    return bar_->wantsKeys() || (tellsWhenItWantsKeys_ && host_.dispatch(effKeysRequired) == 0);
}

const std::function<void()>* EditorWindow::actionOf(xcb_keycode_t key) const {
    switch (key) {
        case kSpace:
            return &actions_.playOrPause;
        case kHome:
            return &actions_.restart;
        case kF5:
            return &actions_.back;
        case kF6:
            return &actions_.forward;
        case kDelete:
            return &actions_.panic;
        default:
            return nullptr;
    }
}

void EditorWindow::handle(const xcb_generic_event_t& event, bool keysAreTaken) {
    switch (event.response_type & 0x7f) {
        case XCB_KEY_PRESS: {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
            const bool isShortcut = (key.state & kShortcutModifiers) != 0;
            if (keysAreTaken || isShortcut) return;
            if (const auto* const action = actionOf(key.detail)) {
                const bool repeats = heldKeys_[key.detail];
                heldKeys_.set(key.detail);
                return repeats ? void() : (*action)();
            }
            return keyboard_.press(key.detail);
        }
        case XCB_KEY_RELEASE: {
            const auto code = reinterpret_cast<const xcb_key_release_event_t&>(event).detail;
            heldKeys_.reset(code);
            return keyboard_.release(code);
        }
        case XCB_FOCUS_OUT: {
            const auto detail = reinterpret_cast<const xcb_focus_out_event_t&>(event).detail;
            const bool staysInside =
                detail == XCB_NOTIFY_DETAIL_INFERIOR || detail == XCB_NOTIFY_DETAIL_POINTER;
            if (staysInside) return;
            heldKeys_.reset();
            return keyboard_.releaseAll();
        }
        case XCB_CLIENT_MESSAGE: {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (message.data.data32[0] == deleteWindow_) isClosed_ = true;
            return;
        }
        case XCB_DESTROY_NOTIFY:
            isClosed_ = true;
            return;
    }
}

void EditorWindow::changeText(xcb_atom_t property, xcb_atom_t type, const std::string& text) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                        static_cast<uint32_t>(text.size()), text.data());
}

xcb_atom_t EditorWindow::atom(const char* name) const {
    const std::string text = name;
    const auto request =
        xcb_intern_atom(connection_, 0, static_cast<uint16_t>(text.size()), text.data());
    const XcbOwned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection_, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace app
