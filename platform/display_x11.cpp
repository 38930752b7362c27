// Asks the X server and its window manager.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/system_display.h"
#include "platform/xcb_owners.h"

namespace platform {
namespace {

constexpr double kUsualDotsPerInch = 96;

using Property = XcbOwned<xcb_get_property_reply_t>;

xcb_get_property_cookie_t ask(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t property,
                              xcb_atom_t type) {
    constexpr uint32_t kMostWords = 1 << 16;
    return xcb_get_property(connection, 0, root, property, type, 0, kMostWords);
}

xcb_atom_t existingAtom(xcb_connection_t* connection, const std::string& name) {
    const auto asked =
        xcb_intern_atom(connection, 1, static_cast<uint16_t>(name.size()), name.c_str());
    const XcbOwned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, asked, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// Desktops with larger text set "Xft.dpi: 144".
double scaleIn(const std::string& resources) {
    constexpr std::string_view kName = "Xft.dpi:";
    const std::size_t at = resources.find(kName);
    if (at == std::string::npos) return 1;
    // Whole numbers only: the decimal point follows the locale.
    const long dots = std::strtol(resources.c_str() + at + kName.size(), nullptr, 10);
    return dots > 0 ? static_cast<double>(dots) / kUsualDotsPerInch : 1;
}

}  // namespace

std::optional<Display> systemDisplay() {
    const XcbConnection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get())) return std::nullopt;
    const auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    if (screens.rem == 0) return std::nullopt;
    const xcb_screen_t& screen = *screens.data;
    Display display{screen.width_in_pixels, screen.height_in_pixels, 1};

    const auto resourcesAsked =
        ask(connection.get(), screen.root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING);
    const auto areaAsked = ask(connection.get(), screen.root,
                               existingAtom(connection.get(), "_NET_WORKAREA"), XCB_ATOM_CARDINAL);
    const Property resources(xcb_get_property_reply(connection.get(), resourcesAsked, nullptr));
    if (resources) {
        const auto* const text = static_cast<const char*>(xcb_get_property_value(resources.get()));
        const int length = xcb_get_property_value_length(resources.get());
        display.scale = scaleIn(std::string(text, static_cast<std::size_t>(length)));
    }
    // Left, top, width and height for each desktop.
    constexpr int kArea = 4 * sizeof(uint32_t);
    const Property area(xcb_get_property_reply(connection.get(), areaAsked, nullptr));
    if (area && area->format == 32 && xcb_get_property_value_length(area.get()) >= kArea) {
        const auto* const sides = static_cast<const uint32_t*>(xcb_get_property_value(area.get()));
        display.width = std::min(display.width, static_cast<int>(sides[2]));
        display.height = std::min(display.height, static_cast<int>(sides[3]));
    }
    return display;
}

}  // namespace platform
