// The host window on Windows.
#include "tests/support/host_window.h"

#include <windows.h>

struct HostWindow::System {
    HWND window = nullptr;

    HWND child() const { return GetWindow(window, GW_CHILD); }
    void send(UINT message, WPARAM buttons, int x, int y) const {
        SendMessageW(child(), message, buttons, MAKELPARAM(x, y));
    }
};

HostWindow::HostWindow(int width, int height) : system_(std::make_unique<System>()) {
    system_->window = CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 0, 0, width,
                                      height, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
}

HostWindow::~HostWindow() {
    if (isOpen()) DestroyWindow(system_->window);
}

bool HostWindow::isOpen() const {
    return system_->window != nullptr;
}

void* HostWindow::parent() const {
    return system_->window;
}

void HostWindow::click(int x, int y, Button button) {
    const bool left = button == kLeft;
    system_->send(WM_MOUSEMOVE, 0, x, y);
    system_->send(left ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, left ? MK_LBUTTON : MK_RBUTTON, x, y);
    system_->send(left ? WM_LBUTTONUP : WM_RBUTTONUP, 0, x, y);
}

void HostWindow::drag(int fromX, int fromY, int toX, int toY) {
    system_->send(WM_MOUSEMOVE, 0, fromX, fromY);
    system_->send(WM_LBUTTONDOWN, MK_LBUTTON, fromX, fromY);
    system_->send(WM_MOUSEMOVE, MK_LBUTTON, toX, toY);
    system_->send(WM_LBUTTONUP, 0, toX, toY);
}

void HostWindow::serve() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

std::uint32_t HostWindow::pixel(int x, int y) const {
    const HWND child = system_->child();
    const HDC screen = GetDC(child);
    const COLORREF seen = GetPixel(screen, x, y);
    ReleaseDC(child, screen);
    return std::uint32_t{GetRValue(seen)} << 16 | std::uint32_t{GetGValue(seen)} << 8 |
           GetBValue(seen);
}
