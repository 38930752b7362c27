// Frames in real windows on Windows, driven by messages as in a host's loop.
#include "gui/headless.h"
#include "tests/gui/gui_fixture.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <chrono>

namespace VSTGUI {
namespace {

class Win32Frames : public ::testing::Test {
  protected:
    void SetUp() override {
        parent = makeParent();
        if (!parent) GTEST_SKIP() << "no desktop to open a window on";
        init(GetModuleHandleW(nullptr));
        frame = new CFrame(CRect(0, 0, 200, 100), &recorder);
        frame->setBackground(gradient(200, 100, 99));
        ASSERT_TRUE(frame->open(parent));
        child = GetWindow(parent, GW_CHILD);
        ASSERT_TRUE(child);
    }
    void TearDown() override {
        if (!parent) return;
        if (frame) frame->close();
        exit();
        DestroyWindow(parent);
    }

    static HWND makeParent() {
        return CreateWindowExW(0, L"STATIC", L"host", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    // Runs the host's loop until the condition holds.
    bool waitFor(const std::function<bool()>& condition) {
        using namespace std::chrono;
        const auto end = steady_clock::now() + minutes(1);
        while (steady_clock::now() < end) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
            if (condition()) return true;
            Sleep(5);
        }
        return false;
    }
    void send(UINT message, WPARAM word, int x, int y) {
        SendMessageW(child, message, word, MAKELPARAM(x, y));
    }
    void click(int x, int y) {
        send(WM_LBUTTONDOWN, MK_LBUTTON, x, y);
        if (frame) send(WM_LBUTTONUP, 0, x, y);
    }
    // True if the window shows the frame's pixels at a few points spread over it.
    bool shows() {
        const PixelBuffer& wanted = headless::picture(*frame);
        const HDC screen = GetDC(child);
        bool same = true;
        for (int y = 3; y < wanted.height(); y += 16)
            for (int x = 2; x < wanted.width(); x += 16) {
                const COLORREF seen = GetPixel(screen, x, y);
                const uint32_t pixel = wanted.at(x, y);
                same = same && seen == RGB(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255);
            }
        ReleaseDC(child, screen);
        return same;
    }

    Recorder recorder;
    HWND parent = nullptr;
    HWND child = nullptr;
    CFrame* frame = nullptr;
};

TEST_F(Win32Frames, AreDrawnByTheHostsLoopAlone) {
    EXPECT_TRUE(waitFor([&] { return shows(); }));
    frame->setBackgroundColor(CColor(10, 200, 30));
    frame->setBackground(nullptr);
    EXPECT_TRUE(waitFor([&] { return shows(); })) << "dirty views are found by the window's timer";
    EXPECT_EQ(headless::picture(*frame).at(50, 50), 0xFF0AC81Eu);
    frame->setZoom(1.5);
    EXPECT_TRUE(waitFor([&] { return shows(); }));
    RECT size;
    GetClientRect(child, &size);
    EXPECT_EQ(size.right, 300);
}

TEST_F(Win32Frames, PassOnTheMouseTheWheelAndTheKeys) {
    const auto handle = plain(10, 10, kRedCColor);
    frame->addView(new CKnob(CRect(0, 0, 60, 60), &recorder, 1, nullptr, handle));
    auto* const edit = new CTextEdit(CRect(100, 0, 200, 20), &recorder, 2, "");
    frame->addView(edit);
    waitFor([&] { return shows(); });
    recorder.reports();
    send(WM_LBUTTONDOWN, MK_LBUTTON, 30, 40);
    EXPECT_EQ(GetCapture(), child);
    send(WM_MOUSEMOVE, MK_LBUTTON, 30, 0);
    send(WM_MOUSEMOVE, MK_LBUTTON, 30, static_cast<WORD>(-20));
    send(WM_LBUTTONUP, 0, 30, 0);
    EXPECT_EQ(recorder.reports(), "begin 0.2 0.3 end");
    POINT back = {};
    GetCursorPos(&back);
    ScreenToClient(child, &back);
    EXPECT_EQ(back.x, 30);
    EXPECT_EQ(back.y, 40) << "the pointer returns from a drag";
    EXPECT_NE(GetCapture(), child);
    POINT middle = {30, 30};
    ClientToScreen(child, &middle);
    send(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), middle.x, middle.y);
    EXPECT_EQ(recorder.reports(), "begin 0.4");
    EXPECT_TRUE(waitFor([&] { return recorder.reports() == "end"; }))
        << "the timer runs without the editor's idle";
    send(WM_KEYDOWN, VK_DOWN, 0, 0);
    EXPECT_EQ(recorder.reports(), "begin 0.3 end");

    click(150, 10);
    for (const wchar_t unit :
         L"Pf\xE4"
         L"d \xD834\xDD1E") {
        if (unit) send(WM_CHAR, unit, 0, 0);
    }
    send(WM_KEYDOWN, VK_RETURN, 0, 0);
    EXPECT_EQ(recorder.reports(), "begin 0 end");
    EXPECT_TRUE(edit->getText() ==
                "Pf\xC3\xA4"
                "d \xF0\x9D\x84\x9E")
        << edit->getText().data();
    EXPECT_NE(SendMessageW(child, WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS, 0);
}

TEST_F(Win32Frames, LeaveTheKeysThatNobodyUsesToTheHost) {
    frame->addView(new CKnob(CRect(0, 0, 60, 60), &recorder, 1, nullptr, nullptr));
    frame->addView(new CTextEdit(CRect(100, 0, 200, 20), &recorder, 2, ""));
    // Sends the press, the character if the key types one, and the release.
    const auto key = [&](WPARAM code, wchar_t character) {
        send(WM_KEYDOWN, code, 0, 0);
        if (character) send(WM_CHAR, character, 0, 0);
        send(WM_KEYUP, code, 0, 0);
    };
    const auto takePassed = [&] {
        std::string passed;
        MSG message;
        while (PeekMessageW(&message, parent, WM_KEYDOWN, WM_KEYUP, PM_REMOVE))
            passed += (message.message == WM_KEYDOWN ? '+' : '-') + std::to_string(message.wParam);
        return passed;
    };
    takePassed();
    click(30, 80);
    key(VK_SPACE, L' ');
    key(VK_F5, 0);
    EXPECT_EQ(takePassed(), "+32-32+116-116");
    click(30, 30);
    key(VK_UP, 0);
    EXPECT_EQ(takePassed(), "");
    click(150, 10);
    key('A', L'a');
    key(VK_SPACE, L' ');
    key(VK_RETURN, L'\r');
    EXPECT_EQ(takePassed(), "");
    key(VK_RETURN, L'\r');
    EXPECT_EQ(takePassed(), "+13-13");
}

TEST_F(Win32Frames, EndADragWhenTheCaptureIsTakenAway) {
    frame->addView(
        new CKnob(CRect(0, 0, 60, 60), &recorder, 1, nullptr, plain(10, 10, kRedCColor)));
    waitFor([&] { return shows(); });
    recorder.reports();
    send(WM_LBUTTONDOWN, MK_LBUTTON, 30, 40);
    SetCapture(parent);
    EXPECT_EQ(recorder.reports(), "begin end");
    ReleaseCapture();
}

TEST_F(Win32Frames, MayBeClosedByTheirOwnMessage) {
    struct Closer : Recorder {
        void valueChanged(CControl*) override { std::exchange(*theirs, nullptr)->close(); }
        CFrame** theirs = nullptr;
    } closer;
    closer.theirs = &frame;
    frame->addView(new COnOffButton(CRect(0, 0, 40, 40), &closer, 1));
    click(20, 20);
    EXPECT_EQ(frame, nullptr);
    EXPECT_FALSE(IsWindow(child));
}

TEST_F(Win32Frames, SurviveTheHostsParentGoing) {
    DestroyWindow(parent);
    EXPECT_FALSE(IsWindow(child));
    frame->invalid();
    frame->idle();
    parent = makeParent();
}

TEST_F(Win32Frames, UnregisterTheirClassWithTheLastUser) {
    wchar_t name[64];
    ASSERT_GT(GetClassNameW(child, name, 64), 0);
    auto* const second = new CFrame(CRect(0, 0, 30, 30), nullptr);
    EXPECT_TRUE(second->open(parent));
    second->close();
    std::exchange(frame, nullptr)->close();
    WNDCLASSW found;
    EXPECT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), name, &found));
    exit();
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), name, &found));
    init(nullptr);
}

}  // namespace
}  // namespace VSTGUI
