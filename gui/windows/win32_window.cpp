// The window on Windows: a child window, driven by the host's message loop.
#include "gui/windows/library.h"
#include "gui/windows/native_window.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

namespace VSTGUI {
namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerTime = 16;  // milliseconds
constexpr double kWheelNotch = WHEEL_DELTA;

constexpr struct {
    WPARAM code;
    VirtualKey key;
} kVirtualKeys[] = {
    {VK_BACK, VirtualKey::Back},     {VK_TAB, VirtualKey::Tab},
    {VK_RETURN, VirtualKey::Return}, {VK_ESCAPE, VirtualKey::Escape},
    {VK_END, VirtualKey::End},       {VK_HOME, VirtualKey::Home},
    {VK_LEFT, VirtualKey::Left},     {VK_UP, VirtualKey::Up},
    {VK_RIGHT, VirtualKey::Right},   {VK_DOWN, VirtualKey::Down},
    {VK_PRIOR, VirtualKey::PageUp},  {VK_NEXT, VirtualKey::PageDown},
    {VK_INSERT, VirtualKey::Insert}, {VK_DELETE, VirtualKey::Delete},
    {VK_F2, VirtualKey::F2},
};

HINSTANCE ownModule() {
    const auto module = static_cast<HINSTANCE>(moduleHandle());
    return module ? module : GetModuleHandleW(nullptr);
}

bool isDown(int key) {
    return (GetKeyState(key) & 0x8000) != 0;
}

CButtonState modifiersNow() {
    CButtonState state;
    if (isDown(VK_SHIFT)) state |= kShift;
    if (isDown(VK_CONTROL)) state |= kControl;
    if (isDown(VK_MENU)) state |= kAlt;
    if (isDown(VK_LWIN) || isDown(VK_RWIN)) state |= kApple;
    return state;
}

CButtonState heldIn(WPARAM keys) {
    CButtonState state;
    if (keys & MK_LBUTTON) state |= kLButton;
    if (keys & MK_MBUTTON) state |= kMButton;
    if (keys & MK_RBUTTON) state |= kRButton;
    if (keys & MK_XBUTTON1) state |= kButton4;
    if (keys & MK_XBUTTON2) state |= kButton5;
    return state;
}

CPoint pointIn(LPARAM position) {
    return {static_cast<CCoord>(GET_X_LPARAM(position)),
            static_cast<CCoord>(GET_Y_LPARAM(position))};
}

class Win32Window final : public NativeWindow {
  public:
    explicit Win32Window(WindowClient& client) : client_(client) {}
    ~Win32Window() override { close(); }

    bool create(HWND parent, int width, int height);

    void close() override;
    void resize(int width, int height) override;
    void show(const PixelBuffer& picture, const IntRect& area) override;
    void takeKeyboard() override;
    void hidePointer() override;
    void showPointer() override;
    void pump() override {}  // the host's message loop delivers events

  private:
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM word, LPARAM position);
    LRESULT handle(UINT message, WPARAM word, LPARAM position);
    bool handlePointer(UINT message, WPARAM word, LPARAM position);
    void press(int32_t button, LPARAM position);
    void release(int32_t button, LPARAM position);
    void move(WPARAM keys, LPARAM position);
    CPoint hiddenMotion(const CPoint& at);
    void leaveTheEdge();
    void moveHome();
    void turnWheel(WPARAM word, LPARAM position, bool sideways);
    bool handleKeyMessage(UINT message, WPARAM word, LPARAM position);
    bool handleKey(WPARAM code, EventType type);
    bool handleCharacter(wchar_t unit);
    void passPressOn();
    void paint();

    // A pointer that hides during a drag. All places are in this window.
    struct HiddenPointer {
        CPoint home;                       // where the drag began
        CPoint last;                       // where it was seen last
        CPoint moved;                      // since the drag began
        std::optional<CPoint> jumpedFrom;  // set until the first move after a jump home
    };

    WindowClient& client_;
    CPoint pressedAt_;  // the latest press
    CPoint movedTo_;    // the latest move
    std::optional<HiddenPointer> hidden_;
    HWND handle_ = nullptr;    // null once closed
    HDC paintedOn_ = nullptr;  // set during WM_PAINT
    bool awaitsLeave_ = false;
    int pressed_ = 0;  // number of buttons held; they capture the mouse
    wchar_t highSurrogate_ = 0;
    std::optional<std::pair<WPARAM, LPARAM>> unusedPress_;  // waits for its character
    std::set<WPARAM> passedOn_;  // held keys whose press went to the host
};

// One window class per module, because another plug-in may contain the same layer.
class WindowClass {
  public:
    static WindowClass& instance() {
        static WindowClass only;
        return only;
    }

    const wchar_t* use(WNDPROC procedure) {
        if (registered_) return name_;
        std::swprintf(name_, std::size(name_), L"QuarzelFrame%p", static_cast<void*>(ownModule()));
        WNDCLASSW description = {};
        description.lpfnWndProc = procedure;
        description.hInstance = ownModule();
        description.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
        description.lpszClassName = name_;
        registered_ = RegisterClassW(&description) != 0;
        return name_;
    }

    void release() {
        if (registered_) UnregisterClassW(name_, ownModule());
        registered_ = false;
    }

  private:
    wchar_t name_[64] = {};
    bool registered_ = false;
};

bool Win32Window::create(HWND parent, int width, int height) {
    const wchar_t* const name = WindowClass::instance().use(&Win32Window::procedure);
    handle_ = CreateWindowExW(0, name, L"", WS_CHILD | WS_VISIBLE, 0, 0, width, height, parent,
                              nullptr, ownModule(), this);
    if (!handle_) return false;
    SetTimer(handle_, kTimer, kTimerTime, nullptr);
    return true;
}

void Win32Window::close() {
    if (!handle_) return;
    showPointer();
    const HWND handle = handle_;
    handle_ = nullptr;
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);  // no more messages arrive here
    KillTimer(handle, kTimer);
    DestroyWindow(handle);
}

void Win32Window::resize(int width, int height) {
    if (handle_)
        SetWindowPos(handle_, nullptr, 0, 0, width, height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Window::takeKeyboard() {
    if (handle_) SetFocus(handle_);
}

void Win32Window::hidePointer() {
    if (!handle_ || hidden_) return;
    hidden_ = HiddenPointer{pressedAt_, movedTo_, movedTo_ - pressedAt_, std::nullopt};
    SetCursor(nullptr);
    leaveTheEdge();
}

void Win32Window::showPointer() {
    if (!hidden_) return;
    moveHome();
    hidden_.reset();
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW)));
}

// After a jump, moves from before it may still be queued. They are nearer to where the jump began.
CPoint Win32Window::hiddenMotion(const CPoint& at) {
    const auto distance = [](const CPoint& a, const CPoint& b) {
        return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y));
    };
    HiddenPointer& hidden = *hidden_;
    const bool isStale =
        hidden.jumpedFrom && distance(at, *hidden.jumpedFrom) < distance(at, hidden.home);
    CPoint& last = isStale ? *hidden.jumpedFrom : hidden.last;
    hidden.moved = hidden.moved + at - last;
    last = at;
    if (isStale) return hidden.home + hidden.moved;
    hidden.jumpedFrom.reset();
    leaveTheEdge();
    return hidden.home + hidden.moved;
}

// At the edge of the screen, the pointer cannot go further.
void Win32Window::leaveTheEdge() {
    const CPoint at = hidden_->last;
    POINT screen = {static_cast<LONG>(at.x), static_cast<LONG>(at.y)};
    ClientToScreen(handle_, &screen);
    const LONG left = GetSystemMetrics(SM_XVIRTUALSCREEN);
    const LONG top = GetSystemMetrics(SM_YVIRTUALSCREEN);
    const bool atEdge = screen.x <= left || screen.y <= top ||
                        screen.x >= left + GetSystemMetrics(SM_CXVIRTUALSCREEN) - 1 ||
                        screen.y >= top + GetSystemMetrics(SM_CYVIRTUALSCREEN) - 1;
    if (!atEdge) return;
    hidden_->jumpedFrom = at;
    hidden_->last = hidden_->home;
    moveHome();
}

void Win32Window::moveHome() {
    POINT home = {static_cast<LONG>(hidden_->home.x), static_cast<LONG>(hidden_->home.y)};
    ClientToScreen(handle_, &home);
    SetCursorPos(home.x, home.y);
}

void Win32Window::show(const PixelBuffer& picture, const IntRect& wanted) {
    const IntRect area = wanted.common(picture.bounds());
    if (!handle_ || area.isEmpty()) return;
    if (!paintedOn_) {
        const RECT stale = {area.left, area.top, area.right, area.bottom};
        InvalidateRect(handle_, &stale, FALSE);
        return;
    }
    // Pass the rows of the area as a separate picture, top row first.
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.width();
    info.bmiHeader.biHeight = -area.height();
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(paintedOn_, area.left, area.top, static_cast<DWORD>(area.width()),
                      static_cast<DWORD>(area.height()), area.left, 0, 0,
                      static_cast<UINT>(area.height()), picture.row(area.top), &info,
                      DIB_RGB_COLORS);
}

LRESULT CALLBACK Win32Window::procedure(HWND handle, UINT message, WPARAM word, LPARAM position) {
    if (message == WM_NCCREATE) {
        const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(position);
        SetWindowLongPtrW(handle, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto* const window = reinterpret_cast<Win32Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (!window || !window->handle_) return DefWindowProcW(handle, message, word, position);
    const auto owner = shared(&window->client_.owner());  // a message may close the window
    return window->handle(message, word, position);
}

LRESULT Win32Window::handle(UINT message, WPARAM word, LPARAM position) {
    const HWND handle = handle_;
    if (handlePointer(message, word, position)) return 0;
    if (handleKeyMessage(message, word, position)) return 0;
    switch (message) {
        case WM_PAINT:
            paint();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_TIMER:
            client_.ticked();
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTALLKEYS | DLGC_WANTCHARS | DLGC_WANTARROWS;
        case WM_KILLFOCUS:
            client_.keyboardLost();
            return 0;
        case WM_NCDESTROY:  // the host has destroyed the parent
            handle_ = nullptr;
            SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
            break;
        default:
            break;
    }
    return DefWindowProcW(handle, message, word, position);
}

bool Win32Window::handlePointer(UINT message, WPARAM word, LPARAM position) {
    switch (message) {
        case WM_MOUSEMOVE:
            move(word, position);
            return true;
        case WM_MOUSELEAVE:
            awaitsLeave_ = false;
            client_.pointerLeft();
            return true;
        case WM_LBUTTONDOWN:
            press(kLButton, position);
            return true;
        case WM_MBUTTONDOWN:
            press(kMButton, position);
            return true;
        case WM_RBUTTONDOWN:
            press(kRButton, position);
            return true;
        case WM_LBUTTONUP:
            release(kLButton, position);
            return true;
        case WM_MBUTTONUP:
            release(kMButton, position);
            return true;
        case WM_RBUTTONUP:
            release(kRButton, position);
            return true;
        case WM_MOUSEWHEEL:
            turnWheel(word, position, false);
            return true;
        case WM_MOUSEHWHEEL:
            turnWheel(word, position, true);
            return true;
        case WM_CAPTURECHANGED:
            if (pressed_ > 0) {  // lost before the release
                pressed_ = 0;
                client_.pointerLost();
            }
            return true;
        default:
            return false;
    }
}

void Win32Window::press(int32_t button, LPARAM position) {
    if (pressed_++ == 0) SetCapture(handle_);
    if (!hidden_) pressedAt_ = pointIn(position);
    client_.pointerPressed(pointIn(position), modifiersNow() | button);
}

void Win32Window::release(int32_t button, LPARAM position) {
    if (pressed_ > 0 && --pressed_ == 0) ReleaseCapture();
    client_.pointerReleased(hidden_ ? hidden_->home : pointIn(position), modifiersNow() | button);
}

void Win32Window::move(WPARAM keys, LPARAM position) {
    if (!awaitsLeave_) {
        TRACKMOUSEEVENT wanted = {};
        wanted.cbSize = sizeof wanted;
        wanted.dwFlags = TME_LEAVE;
        wanted.hwndTrack = handle_;
        awaitsLeave_ = TrackMouseEvent(&wanted) != 0;
    }
    movedTo_ = pointIn(position);
    const CPoint where = hidden_ ? hiddenMotion(movedTo_) : movedTo_;
    client_.pointerMoved(where, heldIn(keys) | modifiersNow()());
}

void Win32Window::turnWheel(WPARAM word, LPARAM position, bool sideways) {
    POINT point = {GET_X_LPARAM(position), GET_Y_LPARAM(position)};  // on the screen
    ScreenToClient(handle_, &point);
    const double notches = GET_WHEEL_DELTA_WPARAM(word) / kWheelNotch;
    const CPoint where(point.x, point.y);
    client_.wheelTurned(where, sideways ? notches : 0, sideways ? 0 : notches, modifiersNow());
}

// Unused keys go to the host's window, so its transport keys work while the editor has the
// keyboard. A key that types a character waits for the character, because a text field may use it.
bool Win32Window::handleKeyMessage(UINT message, WPARAM word, LPARAM position) {
    switch (message) {
        case WM_KEYDOWN:
            unusedPress_.reset();
            if (handleKey(word, EventType::KeyDown)) return true;
            unusedPress_ = {word, position};
            if (!MapVirtualKeyW(static_cast<UINT>(word), MAPVK_VK_TO_CHAR)) passPressOn();
            return true;
        case WM_CHAR:
            if (handleCharacter(static_cast<wchar_t>(word))) unusedPress_.reset();
            passPressOn();
            return true;
        case WM_KEYUP:
            if (!handleKey(word, EventType::KeyUp) && passedOn_.count(word) && handle_)
                PostMessageW(GetParent(handle_), message, word, position);
            passedOn_.erase(word);
            return true;
        case WM_SYSKEYDOWN:
            return handleKey(word, EventType::KeyDown);
        case WM_SYSKEYUP:
            return handleKey(word, EventType::KeyUp);
        default:
            return false;
    }
}

void Win32Window::passPressOn() {
    const auto press = std::exchange(unusedPress_, std::nullopt);
    if (!press || !handle_) return;
    passedOn_.insert(press->first);
    PostMessageW(GetParent(handle_), WM_KEYDOWN, press->first, press->second);
}

// Plain characters arrive as WM_CHAR. While Control is held, only the key code identifies them.
bool Win32Window::handleKey(WPARAM code, EventType type) {
    KeyboardEvent event(type);
    const CButtonState modifiers = modifiersNow();
    event.modifiers = modifiersOf(modifiers);
    for (const auto& row : kVirtualKeys)
        if (row.code == code) event.virt = row.key;
    const bool control = modifiers.getModifierState() == kControl;
    if (control && code >= 'A' && code <= 'Z') event.character = static_cast<char32_t>(code + 32);
    if (event.virt == VirtualKey::None && !event.character) return false;
    return client_.keyChanged(event);
}

bool Win32Window::handleCharacter(wchar_t unit) {
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    const bool low = unit >= 0xDC00 && unit < 0xE000;
    const wchar_t before = std::exchange(highSurrogate_, high ? unit : 0);
    if (high || unit < ' ' || unit == 0x7F || (low && !before)) return high;
    KeyboardEvent event;
    event.character = unit;
    if (low) event.character = 0x10000 + ((before - 0xD800) << 10) + (unit - 0xDC00);
    // Send no modifiers: Shift, or Control with Alt, have already shaped the character.
    return client_.keyChanged(event);
}

void Win32Window::paint() {
    client_.drawPending();  // adds its areas to those painted now
    if (!handle_) return;
    PAINTSTRUCT painting = {};
    const HWND handle = handle_;
    paintedOn_ = BeginPaint(handle, &painting);
    const RECT& area = painting.rcPaint;
    client_.exposed({area.left, area.top, area.right, area.bottom});
    paintedOn_ = nullptr;
    EndPaint(handle, &painting);
}

}  // namespace

std::unique_ptr<NativeWindow> openNativeWindow(void* parent, int width, int height,
                                               WindowClient& client) {
    auto window = std::make_unique<Win32Window>(client);
    if (!window->create(static_cast<HWND>(parent), std::max(width, 1), std::max(height, 1)))
        return nullptr;
    return window;
}

void releaseNativeResources() {
    WindowClass::instance().release();
}

}  // namespace VSTGUI
