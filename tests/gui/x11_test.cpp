// Frames in real windows of an X server, driven by real pointer and key events.
#include "gui/headless.h"
#include "tests/gui/gui_fixture.h"
#include "tests/gui/x11_server.h"

#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace VSTGUI {
namespace {

void* asParent(xcb_window_t window) {
    return reinterpret_cast<void*>(static_cast<uintptr_t>(window));
}

class X11Frames : public ::testing::Test {
  protected:
    void startServer(const std::string& screen) {
        server = std::make_unique<X11Server>(screen);
        if (!server->isRunning()) GTEST_SKIP() << "needs Xvfb and xdotool";
    }
    void SetUp() override {
        init(nullptr);
        startServer("800x600x24");
    }
    void TearDown() override {
        for (CFrame* const frame : frames) frame->close();
        exit();
    }

    CFrame* openAt(int x, int y, int depth = 0) {
        parent = server->makeWindow(x, y, 400, 300, depth);
        auto* const frame = new CFrame(CRect(0, 0, 400, 300), &recorder);
        frame->setBackground(gradient(400, 300, 99));
        if (parent && frame->open(asParent(parent))) {
            frames.push_back(frame);
            return frame;
        }
        frame->forget();
        return nullptr;
    }
    // Serves all frames until the condition holds. Returns false on a timeout.
    bool waitFor(const std::function<bool()>& condition) {
        using namespace std::chrono;
        const auto end = steady_clock::now() + minutes(1);
        while (steady_clock::now() < end) {
            for (CFrame* const frame : std::vector<CFrame*>(frames)) frame->idle();
            if (condition()) return true;
            std::this_thread::sleep_for(milliseconds(5));
        }
        return false;
    }
    // Runs the command and serves the frames meanwhile, as a host would.
    void drive(const std::string& command) {
        const auto done = std::async(std::launch::async, [&] { server->drive(command); });
        waitFor(
            [&] { return done.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    }
    // Runs the command, then waits for exactly these reports.
    ::testing::AssertionResult drive(const std::string& command, const std::string& expected) {
        drive(command);
        std::string seen;
        const auto complete = [&] {
            const std::string more = recorder.reports();
            if (!more.empty()) seen += (seen.empty() ? "" : " ") + more;
            return seen.size() >= expected.size();
        };
        if (waitFor(complete) && seen == expected) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << command << ": saw \"" << seen << "\"";
    }
    // True if the screen shows the frame's pixels there.
    bool shows(CFrame& frame, int x, int y) {
        const PixelBuffer& wanted = headless::picture(frame);
        const auto seen = server->contents(x, y, wanted.width(), wanted.height());
        for (size_t i = 0; i < seen.size(); ++i) {
            const int row = static_cast<int>(i) / wanted.width();
            const uint32_t pixel = wanted.at(static_cast<int>(i) % wanted.width(), row);
            if ((pixel ^ seen[i]) & 0xFFFFFF) return false;
        }
        return !seen.empty();
    }

    Recorder recorder;
    std::unique_ptr<X11Server> server;
    std::vector<CFrame*> frames;
    xcb_window_t parent = 0;
};

TEST_F(X11Frames, ControlsFollowTheMouseTheWheelAndTheKeys) {
    CFrame* const frame = openAt(10, 20);
    ASSERT_TRUE(frame);
    frame->addView(
        new CKnob(CRect(0, 0, 60, 60), &recorder, 1, nullptr, plain(20, 20, kGreenCColor)));
    frame->addView(new COnOffButton(CRect(150, 0, 190, 40), &recorder, 3));
    auto* const menu = new COptionMenu(CRect(0, 150, 80, 170), &recorder, 7);
    for (const char* title : {"one", "two", "three"}) menu->addEntry(title);
    frame->addView(menu);
    auto* const edit = new CTextEdit(CRect(200, 150, 300, 170), &recorder, 8, "");
    frame->addView(edit);
    ASSERT_TRUE(waitFor([&] { return shows(*frame, 10, 20); }));

    const struct {
        const char* commands;
        const char* reports;
    } rows[] = {
        {"mousemove 40 50 mousedown 1 mousemove 40 10 mouseup 1", "begin 0.2 end"},
        {"mousemove 40 50 click 4", "begin 0.3 end"},  // the end comes when the wheel rests
        {"key Up key shift+Down", "begin 0.4 end begin 0.39 end"},
        // beyond the edge of the screen
        {"mousemove 40 50 mousedown 1 mousemove 40 0 sleep 0.4 mousemove_relative -- 0 -30 sleep "
         "0.4 "
         "mouseup 1",
         "begin 0.64 0.79 end"},
        {"mousemove 180 40 click 1 key Return", "begin 1 end begin 0 end"},
        {"mousemove 50 180 click 1 mousemove 50 222 click 1", "begin 1 end"},
        {"mousemove 50 180 click 1 key Down key Return", "begin 2 end"},
        {"mousemove 250 180 click 1 type 'a Path/Z1'", ""},
        {"key Return", "begin 0 end"},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(drive(row.commands, row.reports));
        if (&row == rows + 3) {
            EXPECT_EQ(server->pointer(), std::make_pair(40, 50)) << "where the drag began";
        }
    }
    EXPECT_TRUE(edit->getText() == "a Path/Z1") << edit->getText().data();
    EXPECT_TRUE(waitFor([&] { return shows(*frame, 10, 20); }));
}

TEST_F(X11Frames, TypingReachesTheFieldInUnicodeAndLeavingItCommits) {
    CFrame* const frame = openAt(0, 0);
    ASSERT_TRUE(frame);
    auto* const edit = new CTextEdit(CRect(0, 0, 100, 20), &recorder, 1, "old");
    frame->addView(edit);
    frame->idle();
    drive("mousemove 50 10 click 1");
    ASSERT_TRUE(waitFor([&] { return frame->getFocusView() == edit; }));
    drive("key --delay 50 ctrl+a oslash Caps_Lock oslash division Caps_Lock");
    EXPECT_TRUE(drive("key Return", "begin 0 end"));
    EXPECT_TRUE(edit->getText() == "\xC3\xB8\xC3\x98\xC3\xB7") << edit->getText().data();
    drive("mousemove 50 10 click 1");
    ASSERT_TRUE(waitFor([&] { return frame->getFocusView() == edit; }));
    drive("key --delay 50 ctrl+a adiaeresis EuroSign");
    EXPECT_TRUE(drive("key ctrl+a key End key shift+Left key BackSpace mousemove 300 200 click 1",
                      "begin 0 end"));
    EXPECT_TRUE(edit->getText() == "\xC3\xA4") << edit->getText().data();
}

TEST_F(X11Frames, LeaveTheKeysThatNobodyUsesToTheHost) {
    CFrame* const frame = openAt(0, 0);
    ASSERT_TRUE(frame);
    frame->addView(new CKnob(CRect(0, 0, 60, 60), &recorder, 1, nullptr, nullptr));
    frame->addView(new CTextEdit(CRect(100, 0, 200, 20), &recorder, 2, ""));
    server->listenForKeys(parent);
    const std::string sendToFrame =
        "getwindowfocus -f windowfocus " + std::to_string(parent) + " key --window %1 space";
    const struct {
        std::string keys;
        int presses;  // that the host gets
    } cases[] = {
        {"mousemove 300 200 click 1 key space key F5 key ctrl+s", 4},
        {"mousemove 30 30 click 1 key Up key space", 1},
        {"mousemove 150 10 click 1 type 'a b'", 0},
        {"key Return key space", 1},
        {sendToFrame, 0},  // a sent key may come from the host: it stays
        {"key space", 1},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.keys);
        drive(row.keys);
        int presses = 0;
        waitFor([&] { return (presses += server->takeKeyPresses()) >= row.presses; });
        EXPECT_EQ(presses, row.presses);
    }
    EXPECT_EQ(server->takeKeyPresses(), 0);
}

TEST_F(X11Frames, TwoInOneProcessKeepTheirEventsApart) {
    CFrame* const first = openAt(0, 0);
    CFrame* const second = openAt(400, 300);
    ASSERT_TRUE(first && second);
    Recorder other;
    first->addView(new COnOffButton(CRect(0, 0, 40, 40), &recorder, 1));
    second->addView(new COnOffButton(CRect(0, 0, 40, 40), &other, 2));
    EXPECT_TRUE(drive("mousemove 20 20 click 1", "begin 1 end"));
    EXPECT_EQ(other.reports(), "");
    drive("mousemove 420 320 click 1");
    EXPECT_TRUE(waitFor([&] { return other.log.size() >= 3; }));
    EXPECT_EQ(other.reports(), "begin 1 end");
    frames.erase(frames.begin());
    first->close();
    drive("click 1");
    EXPECT_TRUE(waitFor([&] { return other.log.size() >= 3; }));
    EXPECT_TRUE(waitFor([&] { return shows(*second, 400, 300); }));
    EXPECT_EQ(recorder.reports(), "");
}

TEST_F(X11Frames, KnowWhenThePointerLeaves) {
    struct Watcher : IMouseObserver {
        void onMouseEntered(CView*, CFrame*) override { inside = true; }
        void onMouseExited(CView*, CFrame*) override { inside = false; }
        void onMouseEvent(MouseEvent&, CFrame*) override {}
        bool inside = false;
    } watcher;
    CFrame* const frame = openAt(0, 0);
    ASSERT_TRUE(frame);
    frame->addView(new COnOffButton(CRect(0, 0, 40, 40), &recorder, 1));
    frame->registerMouseObserver(&watcher);
    drive("mousemove 20 20");
    EXPECT_TRUE(waitFor([&] { return watcher.inside; }));
    drive("mousemove 600 400");
    EXPECT_TRUE(waitFor([&] { return !watcher.inside; }));
    frame->unregisterMouseObserver(&watcher);
}

TEST_F(X11Frames, OpenInAParentThatIsDeeperThanTheScreen) {
    CFrame* const frame = openAt(50, 60, 32);
    ASSERT_TRUE(frame);
    EXPECT_TRUE(waitFor([&] { return shows(*frame, 50, 60); }));
}

TEST_F(X11Frames, AreShownAgainAfterTheyWereCovered) {
    CFrame* const frame = openAt(0, 0);
    ASSERT_TRUE(frame);
    ASSERT_TRUE(waitFor([&] { return shows(*frame, 0, 0); }));
    const xcb_window_t cover = server->makeWindow(30, 30, 200, 200);
    EXPECT_FALSE(shows(*frame, 0, 0));
    server->destroyWindow(cover);
    EXPECT_TRUE(waitFor([&] { return shows(*frame, 0, 0); }));
}

TEST_F(X11Frames, GrowWithTheirZoomAndScaleThePointer) {
    CFrame* const frame = openAt(0, 0);
    ASSERT_TRUE(frame);
    frame->addView(new COnOffButton(CRect(100, 100, 120, 120), &recorder, 1));
    frame->setZoom(1.5);
    EXPECT_TRUE(drive("mousemove 178 178 click 1", "begin 1 end"));
    EXPECT_TRUE(waitFor([&] {
        // The parent cuts the larger window off.
        const auto seen = server->contents(399, 299, 1, 1);
        return (seen[0] & 0xFFFFFF) == (headless::picture(*frame).at(399, 299) & 0xFFFFFF);
    }));
    // Some hosts make the window larger than it wants to be.
    frame->setZoom(1);
    frame->setSize(200, 150);
    drive("getwindowfocus -f windowsize %1 400 300");
    EXPECT_TRUE(waitFor([&] { return (server->contents(399, 299, 1, 1)[0] & 0xFFFFFF) == 0; }));
    EXPECT_TRUE(shows(*frame, 0, 0));
}

TEST_F(X11Frames, SurviveTheirCloseInAnEventAndTheHostsParentGoing) {
    struct Closer : Recorder {
        void valueChanged(CControl*) override { std::exchange(frame, nullptr)->close(); }
        using VSTGUIEditorInterface::frame;
    } closer;
    closer.frame = openAt(0, 0);
    ASSERT_TRUE(closer.frame);
    closer.frame->addView(new COnOffButton(CRect(0, 0, 40, 40), &closer, 1));
    CFrame* const served = frames.back();
    served->remember();
    drive("mousemove 20 20 click 1 click 1 mousemove 30 30");
    EXPECT_TRUE(waitFor([&] { return closer.frame == nullptr; }));
    frames.clear();
    served->forget();

    CFrame* const orphan = openAt(0, 0);
    ASSERT_TRUE(orphan);
    orphan->idle();
    server->destroyWindow(parent);
    for (int i = 0; i < 5; ++i) {
        orphan->invalid();
        orphan->idle();
    }
}

TEST_F(X11Frames, DoNotOpenInAWindowThatIsNone) {
    auto* const frame = new CFrame(CRect(0, 0, 40, 30), nullptr);
    EXPECT_FALSE(frame->open(asParent(0x7FFFFFF)));
    setenv("DISPLAY", ":none", 1);
    EXPECT_FALSE(frame->open(asParent(1)));
    frame->close();
}

TEST_F(X11Frames, AreShownInStripsBelowTheServersRequestLimit) {
    startServer("1900x1500x24");
    parent = server->makeWindow(0, 0, 1900, 1500);
    auto* const frame = new CFrame(CRect(0, 0, 1900, 1500), nullptr);
    frame->setBackground(gradient(1900, 1500, 7));
    ASSERT_TRUE(frame->open(asParent(parent)));
    frames.push_back(frame);
    EXPECT_TRUE(waitFor([&] { return shows(*frame, 0, 0); }));
}

TEST_F(X11Frames, ConvertTheirPixelsToSixteenBits) {
    startServer("800x600x16");
    parent = server->makeWindow(0, 0, 64, 48);
    auto* const frame = new CFrame(CRect(0, 0, 64, 48), nullptr);
    frame->setBackgroundColor(CColor(0xFF, 0x84, 0x18));
    ASSERT_TRUE(frame->open(asParent(parent)));
    frames.push_back(frame);
    EXPECT_TRUE(waitFor([&] {
        const auto seen = server->contents(0, 0, 64, 48);
        return seen[0] == (0x1F << 11 | 0x21 << 5 | 0x03) && seen[64 * 48 - 1] == seen[0];
    }));
}

}  // namespace
}  // namespace VSTGUI
