// The window in a browser: pixels go to the page's canvas, and the page reports what happens on it.
#include "gui/windows/canvas_window.h"

#include <cstring>
#include <vector>

namespace VSTGUI {
namespace {

WindowClient* current = nullptr;

class CanvasWindow final : public NativeWindow {
  public:
    CanvasWindow(int width, int height, WindowClient& client) : client_(client) {
        current = &client;
        quarzelSizeCanvas(width, height);
    }
    ~CanvasWindow() override { close(); }

    void close() override {
        if (current == &client_) current = nullptr;
    }
    void resize(int width, int height) override { quarzelSizeCanvas(width, height); }
    void show(const PixelBuffer& picture, const IntRect& wanted) override;
    void takeKeyboard() override { quarzelFocusCanvas(); }
    // A browser keeps the drag when the pointer leaves the canvas, but cannot lift the screen's
    // edges.
    void hidePointer() override { quarzelHidePointer(1); }
    void showPointer() override { quarzelHidePointer(0); }
    void pump() override {}  // the page reports by itself

  private:
    WindowClient& client_;
    std::vector<uint8_t> bytes_;
};

void CanvasWindow::show(const PixelBuffer& picture, const IntRect& wanted) {
    const IntRect area = wanted.common(picture.bounds());
    if (area.isEmpty()) return;
    bytes_.resize(static_cast<size_t>(area.width()) * area.height() * 4);
    uint8_t* to = bytes_.data();
    for (int y = area.top; y < area.bottom; ++y) {
        const uint32_t* const row = picture.row(y);
        for (int x = area.left; x < area.right; ++x, to += 4) {
            to[0] = static_cast<uint8_t>(row[x] >> 16);
            to[1] = static_cast<uint8_t>(row[x] >> 8);
            to[2] = static_cast<uint8_t>(row[x]);
            to[3] = 255;  // a window is opaque
        }
    }
    quarzelShowPixels(bytes_.data(), area.left, area.top, area.width(), area.height());
}

constexpr struct {
    const char* name;
    VirtualKey key;
} kVirtualKeys[] = {
    {"Backspace", VirtualKey::Back},
    {"Tab", VirtualKey::Tab},
    {"Enter", VirtualKey::Return},
    {"Escape", VirtualKey::Escape},
    {"Home", VirtualKey::Home},
    {"End", VirtualKey::End},
    {"ArrowLeft", VirtualKey::Left},
    {"ArrowUp", VirtualKey::Up},
    {"ArrowRight", VirtualKey::Right},
    {"ArrowDown", VirtualKey::Down},
    {"PageUp", VirtualKey::PageUp},
    {"PageDown", VirtualKey::PageDown},
    {"Insert", VirtualKey::Insert},
    {"Delete", VirtualKey::Delete},
    {"F2", VirtualKey::F2},
};

}  // namespace

WindowClient* canvasClient() {
    return current;
}

VirtualKey virtualKeyNamed(const char* name) {
    for (const auto& row : kVirtualKeys)
        if (std::strcmp(row.name, name) == 0) return row.key;
    return VirtualKey::None;
}

std::unique_ptr<NativeWindow> openNativeWindow(void*, int width, int height, WindowClient& client) {
    if (current) return nullptr;
    return std::make_unique<CanvasWindow>(width, height, client);
}

void releaseNativeResources() {}

}  // namespace VSTGUI
