// System messages on Linux: in a window, or on standard error.
#include "platform/message_box.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <future>
#include <optional>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "platform/message_picture.h"
#include "tests/gui/x11_server.h"
#include "tests/support/wait_for.h"

namespace {

using platform::drawMessage;
using platform::MessageIcon;
using platform::MessagePicture;

constexpr int kScreenWidth = 800;
constexpr int kScreenHeight = 600;

TEST(SystemMessage, IsOneLineOnStandardErrorWithoutADisplay) {
    for (const char* const display : {"", ":4711"}) {
        SCOPED_TRACE(display);
        setenv("DISPLAY", display, 1);
        testing::internal::CaptureStderr();
        platform::showMessage("Skin Error", "Missing tag x for object knob", MessageIcon::kError);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "Skin Error: Missing tag x for object knob\n");
    }
}

class MessageWindow : public testing::Test {
  protected:
    void SetUp() override {
        server_.emplace(std::to_string(kScreenWidth) + "x" + std::to_string(kScreenHeight) + "x24");
        if (!server_->isRunning()) GTEST_SKIP() << "needs Xvfb and xdotool";
    }

    // Shows a message on another thread and waits until it is completely visible.
    void show(const std::string& title, const std::string& text, MessageIcon icon) {
        picture_ = drawMessage(title, text, icon, false, kScreenHeight * 3 / 4);
        left_ = (kScreenWidth - picture_.width) / 2;
        top_ = (kScreenHeight - picture_.height) / 2;
        message_ =
            std::async(std::launch::async, [=] { platform::showMessage(title, text, icon); });
        ASSERT_TRUE(waitFor([this] {
            auto seen = server_->contents(left_, top_, picture_.width, picture_.height);
            for (uint32_t& pixel : seen) pixel |= 0xFF000000;
            return seen == picture_.pixels;
        }));
    }

    bool isDismissed(int milliseconds = 60000) {
        return message_.wait_for(std::chrono::milliseconds(milliseconds)) ==
               std::future_status::ready;
    }

    std::string pointAt(int x, int y) const {
        return "mousemove " + std::to_string(left_ + x) + " " + std::to_string(top_ + y) + " ";
    }

    std::future<void> message_;  // ends with the server at the latest
    std::optional<VSTGUI::X11Server> server_;
    MessagePicture picture_;
    int left_ = 0;
    int top_ = 0;
};

TEST_F(MessageWindow, StandsUntilItsButtonAKeyOrTheWindowManagerDismissesIt) {
    show("Bitmap not found", "knob.png", MessageIcon::kNone);
    const int buttonX = picture_.button.left + 20;
    const int buttonY = picture_.button.top + 10;
    server_->drive(pointAt(5, 5) + "click 1 key a " + pointAt(buttonX, buttonY) +
                   "click 3 mousedown 1 " + pointAt(5, 5) + "mouseup 1");
    EXPECT_FALSE(isDismissed(100));
    server_->drive(pointAt(buttonX, buttonY) + "click 1");
    ASSERT_TRUE(isDismissed());

    for (const char* const key : {"Return", "KP_Enter", "Escape", "space"}) {
        SCOPED_TRACE(key);
        show("Skin Error", "Missing tag x for object knob\nand a second line", MessageIcon::kError);
        server_->drive(std::string("key ") + key);
        ASSERT_TRUE(isDismissed());
    }

    show("XML error", "<GUI> node missing", MessageIcon::kError);
    server_->askTopWindowToClose();
    ASSERT_TRUE(isDismissed());
}

TEST_F(MessageWindow, GoesToStandardErrorWhenTheDisplayIsLost) {
    testing::internal::CaptureStderr();
    show("Missing Bank", "default.fxb", MessageIcon::kNone);
    server_.reset();
    EXPECT_TRUE(isDismissed());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Missing Bank: default.fxb\n");
}

TEST(MessagePicture, KeepsAnyTextWithinItsMargins) {
    const MessagePicture smallest = drawMessage("", "", MessageIcon::kNone, false, 450);
    std::string words, accents;
    for (int i = 0; i < 3000; ++i) {
        words += i % 3 ? "violas " : "and celli ";
        accents += "\u00c5\u0416\u03a9";
    }
    const struct {
        const char* name;
        std::string title, text;
        int atLeastTaller;  // than the smallest picture, in lines
    } kRows[] = {{"one line", "t", "text", 1},
                 {"several lines", "t", "one\n\ttwo\r\n\nfour\n", 4},
                 {"long", words, words, 10},
                 {"one long word, not ASCII", accents, accents, 10},
                 {"malformed", "\xff\xc3", std::string("\xf0\x9f\x00\x01\xe2\x82", 6), 1},
                 {"unknown letters", "\u5f26\u697d", "\u5f26\u697d \U0001f3bb", 1},
                 {"blanks", "   ", std::string(5000, ' ') + "end", 1}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        const auto picture = drawMessage(row.title, row.text, MessageIcon::kError, false, 450);
        EXPECT_GE(picture.height, smallest.height + 15 * row.atLeastTaller);
        EXPECT_LE(picture.height, 450);
        EXPECT_LE(picture.width, 640);
        const auto isGround = [&](int x, int y) {
            return picture.pixels[static_cast<size_t>(y) * picture.width + x] == picture.pixels[0];
        };
        int inked = 0;
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                if (isGround(x, y) || picture.button.holds(x, y)) continue;
                ++inked;
                ASSERT_TRUE(x > 15 && x < picture.width - 15 && y > 15 && y < picture.button.top)
                    << x << ", " << y;
            }
        }
        EXPECT_GT(inked, 1200);  // the icon alone
    }
}

}  // namespace
