// A private X server for a test, and a host's windows on it.
#include "tests/gui/x11_server.h"

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace VSTGUI {
namespace {

// Returns the display number that the server writes when it is ready; empty on a timeout.
std::string readDisplay(int pipe) {
    constexpr int kPatience = 60000;  // milliseconds
    pollfd ready = {pipe, POLLIN, 0};
    std::string number;
    char digit = 0;
    while (poll(&ready, 1, kPatience) > 0 && read(pipe, &digit, 1) == 1 && digit != '\n')
        number += digit;
    return number;
}

bool isInstalled(const char* program) {
    return std::system(("command -v " + std::string(program) + " >/dev/null").c_str()) == 0;
}

}  // namespace

X11Server::X11Server(const std::string& screen) {
    if (!isInstalled("Xvfb") || !isInstalled("xdotool")) return;
    int ends[2];
    if (pipe(ends) != 0) return;
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);  // also when the test is killed
        close(ends[0]);
        const std::string end = std::to_string(ends[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", end.c_str(), "-screen", "0", screen.c_str(),
               "-nolisten", "tcp", static_cast<char*>(nullptr));
        _exit(1);
    }
    close(ends[1]);
    const std::string number = readDisplay(ends[0]);
    close(ends[0]);
    if (number.empty()) throw std::runtime_error("Xvfb does not start");
    setenv("DISPLAY", (":" + number).c_str(), 1);
    connection_ = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection_)) {
        xcb_disconnect(connection_);
        connection_ = nullptr;
        throw std::runtime_error("Xvfb refuses its test");
    }
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

X11Server::~X11Server() {
    if (connection_) xcb_disconnect(connection_);
    if (process_ <= 0) return;
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
}

xcb_visualid_t X11Server::visualOfDepth(int wanted) const {
    for (auto depth = xcb_screen_allowed_depths_iterator(screen_); depth.rem;
         xcb_depth_next(&depth))
        if (depth.data->depth == wanted && depth.data->visuals_len > 0)
            return xcb_depth_visuals_iterator(depth.data).data->visual_id;
    return 0;
}

xcb_window_t X11Server::makeWindow(int x, int y, int width, int height, int depth) {
    const bool own = depth == 0 || depth == screen_->root_depth;
    const xcb_visualid_t visual = own ? screen_->root_visual : visualOfDepth(depth);
    if (!visual) return 0;
    const xcb_colormap_t colors = xcb_generate_id(connection_);
    xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colors, screen_->root, visual);
    const xcb_window_t window = xcb_generate_id(connection_);
    const uint32_t values[] = {0xFF808080, 0, 1, colors};  // the third keeps window managers away
    xcb_create_window(
        connection_, static_cast<uint8_t>(own ? screen_->root_depth : depth), window, screen_->root,
        static_cast<int16_t>(x), static_cast<int16_t>(y), static_cast<uint16_t>(width),
        static_cast<uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
        values);
    xcb_map_window(connection_, window);
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return window;
}

void X11Server::destroyWindow(xcb_window_t window) {
    xcb_destroy_window(connection_, window);
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void X11Server::askTopWindowToClose() {
    const auto atom = [this](const std::string& name) {
        const auto request =
            xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.c_str());
        auto* const reply = xcb_intern_atom_reply(connection_, request, nullptr);
        const xcb_atom_t result = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return result;
    };
    auto* const tree =
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, screen_->root), nullptr);
    if (!tree || tree->children_len == 0) std::abort();
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = xcb_query_tree_children(tree)[tree->children_len - 1];
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(connection_, 0, event.window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(connection_);
    std::free(tree);
}

void X11Server::listenForKeys(xcb_window_t window) const {
    const uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

int X11Server::takeKeyPresses() const {
    int presses = 0;
    while (auto* const event = xcb_poll_for_event(connection_)) {
        if ((event->response_type & 0x7F) == XCB_KEY_PRESS) ++presses;
        std::free(event);
    }
    return presses;
}

void X11Server::drive(const std::string& command) const {
    if (std::system(("xdotool " + command).c_str()) != 0) std::abort();
}

std::pair<int, int> X11Server::pointer() const {
    auto* const reply = xcb_query_pointer_reply(
        connection_, xcb_query_pointer(connection_, screen_->root), nullptr);
    if (!reply) return {-1, -1};
    const std::pair<int, int> place(reply->root_x, reply->root_y);
    std::free(reply);
    return place;
}

std::vector<uint32_t> X11Server::contents(int x, int y, int width, int height) const {
    const auto request = xcb_get_image(
        connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, screen_->root, static_cast<int16_t>(x),
        static_cast<int16_t>(y), static_cast<uint16_t>(width), static_cast<uint16_t>(height), ~0u);
    auto* const reply = xcb_get_image_reply(connection_, request, nullptr);
    if (!reply) return {};
    const uint8_t* const bytes = xcb_get_image_data(reply);
    const size_t count = static_cast<size_t>(width) * height;
    const size_t perPixel = xcb_get_image_data_length(reply) / count;
    std::vector<uint32_t> pixels(count);
    for (size_t i = 0; i < count; ++i) std::memcpy(&pixels[i], bytes + i * perPixel, perPixel);
    std::free(reply);
    return pixels;
}

}  // namespace VSTGUI
