// The window through XCB, following ICCCM and EWMH.
#include "app/editor_window.h"

#include <cstdint>
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
    poll(&state, 1, static_cast<int>(patience.count()));
    while (Event event{xcb_poll_for_event(connection)}) {
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

EditorWindow::EditorWindow(host::PluginHost& host, ComputerKeyboard& keyboard)
    : host_(host), keyboard_(keyboard), connection_(connectToDisplay()) {
    ERect* rect = nullptr;
    askEditor(effEditGetRect, &rect);
    const bool hasSize = rect && rect->right > rect->left && rect->bottom > rect->top;
    create(hasSize ? rect->right - rect->left : kBareWidth,
           hasSize ? rect->bottom - rect->top : kBareHeight);
    setTitle(host_.name());

    host_.onSizeWindow([this](int width, int height) { return resize(width, height); });
    askEditor(effEditOpen, reinterpret_cast<void*>(std::uintptr_t{window_}));
    // An instrument that does not implement the opcode answers 0, which means "keys required".
    tellsWhenItWantsKeys_ = host_.dispatch(effKeysRequired) != 0;
    listenBelow(window_);
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
}

EditorWindow::~EditorWindow() {
    askEditor(effEditClose);
    host_.onSizeWindow(nullptr);
    keyboard_.releaseAll();
    xcb_disconnect(connection_);
}

void EditorWindow::askEditor(VstInt32 opcode, void* ptr) const {
    if (host_.hasEditor()) host_.dispatch(opcode, 0, 0, ptr);
}

void EditorWindow::create(int width, int height) {
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    window_ = xcb_generate_id(connection_);
    const uint32_t values[] = {screen.black_pixel, kEvents};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0,
                      static_cast<uint16_t>(width), static_cast<uint16_t>(height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
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
    announce(width, height);
    // Wait until the editor's own connection can find the window.
    const XcbOwned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

// Only the editor resizes the window.
void EditorWindow::announce(int width, int height) {
    constexpr uint32_t kSizeHint = 1 << 3, kLeastHint = 1 << 4, kMostHint = 1 << 5;
    uint32_t hints[18] = {kSizeHint | kLeastHint | kMostHint};
    for (const int place : {3, 5, 7}) {  // size, minimum and maximum
        hints[place] = static_cast<uint32_t>(width);
        hints[place + 1] = static_cast<uint32_t>(height);
    }
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, 18, hints);
}

bool EditorWindow::resize(int width, int height) {
    if (width < 1 || height < 1 || width > INT16_MAX || height > INT16_MAX) return false;
    announce(width, height);
    const uint32_t size[] = {static_cast<uint32_t>(width), static_cast<uint32_t>(height)};
    xcb_configure_window(connection_, window_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size);
    xcb_flush(connection_);
    return true;
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
    // The editor gets the same keys over its own connection. Whether it wants keys before or after
    // them tells whose they are.
    const bool hadKeys = editorWantsKeys();
    askEditor(effEditIdle);
    const bool editorHasKeys = hadKeys || editorWantsKeys();
    for (std::size_t i = 0; i < events.size(); ++i) {
        const bool goesOn = i + 1 < events.size() && isRepeat(events[i], events[i + 1]);
        if (!goesOn) handle(*events[i], editorHasKeys);
    }
    return !isClosed_ && xcb_connection_has_error(connection_) == 0;
}

bool EditorWindow::editorWantsKeys() const {
    return tellsWhenItWantsKeys_ && host_.dispatch(effKeysRequired) == 0;
}

void EditorWindow::handle(const xcb_generic_event_t& event, bool editorHasKeys) {
    switch (event.response_type & 0x7f) {
        case XCB_KEY_PRESS: {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
            const bool isShortcut = (key.state & kShortcutModifiers) != 0;
            if (!editorHasKeys && !isShortcut) keyboard_.press(key.detail);
            return;
        }
        case XCB_KEY_RELEASE:
            return keyboard_.release(
                reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
        case XCB_FOCUS_OUT: {
            const auto detail = reinterpret_cast<const xcb_focus_out_event_t&>(event).detail;
            const bool staysInside =
                detail == XCB_NOTIFY_DETAIL_INFERIOR || detail == XCB_NOTIFY_DETAIL_POINTER;
            if (!staysInside) keyboard_.releaseAll();
            return;
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
