// The host window on an X server, which all such windows in the process share.
#include "tests/support/host_window.h"

#include <string>

#include "tests/gui/x11_server.h"

struct HostWindow::System {
    std::shared_ptr<VSTGUI::X11Server> server;
    xcb_window_t window = 0;
};

HostWindow::HostWindow(int width, int height) : system_(std::make_unique<System>()) {
    static std::weak_ptr<VSTGUI::X11Server> running;
    system_->server = running.lock();
    if (!system_->server) {
        running = system_->server = std::make_shared<VSTGUI::X11Server>("1280x800x24");
    }
    if (system_->server->isRunning())
        system_->window = system_->server->makeWindow(0, 0, width, height);
}

HostWindow::~HostWindow() {
    if (isOpen()) system_->server->destroyWindow(system_->window);
}

bool HostWindow::isOpen() const {
    return system_->window != 0;
}

void* HostWindow::parent() const {
    return reinterpret_cast<void*>(std::uintptr_t{system_->window});
}

void HostWindow::click(int x, int y, Button button) {
    system_->server->drive("mousemove " + std::to_string(x) + ' ' + std::to_string(y) + " click " +
                           std::to_string(button));
}

void HostWindow::drag(int fromX, int fromY, int toX, int toY) {
    system_->server->drive("mousemove " + std::to_string(fromX) + ' ' + std::to_string(fromY) +
                           " mousedown 1 mousemove " + std::to_string(toX) + ' ' +
                           std::to_string(toY) + " mouseup 1");
}

void HostWindow::serve() {}

std::uint32_t HostWindow::pixel(int x, int y) const {
    const auto pixels = system_->server->contents(x, y, 1, 1);
    return pixels.empty() ? 0 : pixels[0] & 0xFFFFFF;
}
