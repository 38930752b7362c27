// Knobs: drags, the wheel, keys, and what they draw.
#include "tests/gui/gui_fixture.h"

#include <cmath>

namespace VSTGUI {
namespace {

// A press at the first point and moves to the others. The state applies to the whole gesture,
// unless a move has its own.
struct Gesture {
    const char* name;
    struct Move {
        CPoint to;
        int32_t modifiers;
    };
    int32_t knobMode;
    CPoint press;
    int32_t pressModifiers;
    std::vector<Move> moves;
    const char* reports;
};

class Knobs : public GuiTest {
  protected:
    CKnob* addKnob() {
        auto* const knob = add(
            new CKnob(CRect(60, 60, 120, 120), &recorder, 1, nullptr, plain(10, 10, kWhiteCColor)));
        setHalf(knob);
        return knob;
    }
    void perform(const Gesture& gesture) {
        recorder.knobMode = gesture.knobMode;
        headless::press(*frame, gesture.press, kLButton | gesture.pressModifiers);
        for (const auto& move : gesture.moves)
            headless::move(*frame, move.to, kLButton | move.modifiers);
        headless::release(*frame, gesture.press);
    }
};

TEST_F(Knobs, FollowThePointerByTheTable) {
    CKnob* const knob = addKnob();
    const CPoint middle(90, 90);
    const CPoint top(90, 64);
    const Gesture gestures[] = {
        {"up", kLinearMode, middle, 0, {{{90, 40}, 0}}, "begin 0.75 end"},
        {"right", kLinearMode, middle, 0, {{{140, 90}, 0}}, "begin 0.75 end"},
        {"fine", kLinearMode, middle, kShift, {{{90, 40}, kShift}}, "begin 0.6667 end"},
        {"Shift later",
         kLinearMode,
         middle,
         0,
         {{{90, 70}, 0}, {{90, 40}, kShift}},
         "begin 0.6 0.75 end"},
        {"fine after that",
         kLinearMode,
         middle,
         0,
         {{{90, 70}, kShift}, {{90, 40}, kShift}, {{90, 10}, 0}, {{90, 20}, 0}},
         "begin 0.6 0.7 0.8 0.75 end"},
        {"far", kLinearMode, middle, 0, {{{90, -900}, 0}, {{90, 900}, 0}}, "begin 1 0 end"},
        {"no move", kCircularMode, CPoint(65, 90), 0, {}, "begin end"},
        {"circular right", kCircularMode, top, 0, {{{115, 90}, 0}}, "begin 0.8333 end"},
        {"circular left", kCircularMode, top, 0, {{{65, 90}, 0}}, "begin 0.1667 end"},
        {"circular start", kCircularMode, top, 0, {{{70, 110}, 0}}, "begin 0 end"},
        {"circular end", kCircularMode, top, 0, {{{110, 110}, 0}}, "begin 1 end"},
        {"circular gap", kCircularMode, top, 0, {{{92, 118}, 0}}, "begin 1 end"},
        {"over the gap",
         kCircularMode,
         top,
         0,
         {{{65, 90}, 0}, {{112, 110}, 0}, {{65, 91}, 0}},
         "begin 0.1667 0 0.1582 end"},
        {"over the gap, from where it was pressed",
         kCircularMode,
         CPoint(115, 90),
         0,
         {{{65, 90}, 0}, {{90, 65}, 0}},
         "begin 1 0.5 end"},
        {"relative circular", kRelativCircularMode, top, 0, {{{65, 90}, 0}}, "begin 0.1667 end"},
        {"Alt makes it circular", kLinearMode, top, kAlt, {{{65, 90}, kAlt}}, "begin 0.1667 end"},
        {"Alt makes it linear", kCircularMode, middle, kAlt, {{{90, 40}, kAlt}}, "begin 0.75 end"},
    };
    for (const Gesture& gesture : gestures) {
        SCOPED_TRACE(gesture.name);
        setHalf(knob);
        perform(gesture);
        EXPECT_EQ(reports(), gesture.reports);
    }
}

TEST_F(Knobs, IgnoreOtherButtons) {
    addKnob();
    headless::press(*frame, CPoint(90, 90), kRButton);
    headless::move(*frame, CPoint(90, 40), kRButton);
    headless::release(*frame, CPoint(90, 40), kRButton);
    EXPECT_EQ(reports(), "");
}

TEST_F(Knobs, TurnByTheWheelAsOneEdit) {
    addKnob();
    headless::wheel(*frame, CPoint(90, 90), 1);
    clock.run(*frame, 400);
    headless::wheel(*frame, CPoint(90, 90), 1, kShift);
    clock.run(*frame, 400);
    EXPECT_EQ(reports(), "begin 0.6 0.61");
    clock.run(*frame, 200);
    EXPECT_EQ(reports(), "end") << "half a second after the last notch";
    headless::wheel(*frame, CPoint(90, 90), -2);
    headless::press(*frame, CPoint(90, 90));
    EXPECT_EQ(reports(), "begin 0.41 end begin") << "or at a following press";
}

TEST_F(Knobs, StepByKeysAndTakeADragBackByEscape) {
    CKnob* const knob = addKnob();
    frame->setFocusView(knob);
    headless::key(*frame, VirtualKey::Up);
    headless::key(*frame, VirtualKey::Left, kShift);
    EXPECT_EQ(reports(), "begin 0.6 end begin 0.59 end");
    EXPECT_FALSE(headless::key(*frame, VirtualKey::Up, kControl));
    headless::press(*frame, CPoint(90, 90));
    headless::move(*frame, CPoint(90, 70));
    EXPECT_TRUE(headless::key(*frame, VirtualKey::Escape));
    headless::move(*frame, CPoint(90, 60));
    headless::release(*frame, CPoint(90, 60));
    EXPECT_EQ(reports(), "begin 0.69 0.59 end");
    EXPECT_FALSE(headless::key(*frame, VirtualKey::Escape));
}

TEST_F(Knobs, DrawTheHandleOnItsCircle) {
    CKnob* const knob = addKnob();
    struct Case {
        float value;
        int left, top;
    };
    for (const Case& row :
         {Case{0, 69, 101}, {0.25f, 64, 76}, {0.5f, 85, 63}, {0.75f, 106, 76}, {1, 101, 101}}) {
        SCOPED_TRACE(row.value);
        knob->setValue(row.value);
        frame->idle();
        EXPECT_EQ(pixel(row.left, row.top), kWhiteCColor);
        EXPECT_EQ(pixel(row.left + 9, row.top + 9), kWhiteCColor);
        EXPECT_EQ(pixel(row.left - 1, row.top), kBlackCColor);
        EXPECT_EQ(pixel(row.left, row.top - 1), kBlackCColor);
    }
}

TEST_F(Knobs, DrawThePieceOfTheBackgroundAtTheirOffset) {
    auto* const knob = add(new CKnob(CRect(60, 60, 120, 120), &recorder, 1, gradient(200, 200),
                                     nullptr, CPoint(60, 60)));
    EXPECT_EQ(pixel(61, 119), CColor(61, 119, 0));
    knob->setColorHandle(kGreenCColor);
    knob->setColorShadowHandle(kRedCColor);
    knob->setHandleLineWidth(3);
    knob->setValue(0.5f);
    frame->idle();
    EXPECT_EQ(pixel(90, 75), kGreenCColor) << "a line to the middle";
}

TEST_F(Knobs, OfFramesShowTheLastOnlyAtTheEnd) {
    PixelBuffer strip(4, 40);  // ten frames, 4 high
    for (int frameIndex = 0; frameIndex < 10; ++frameIndex)
        fillArea(strip, {0, frameIndex * 4, 4, frameIndex * 4 + 4},
                 premultiplied(CColor(static_cast<uint8_t>(10 + frameIndex), 0, 0)));
    const auto picture = makeOwned<CBitmap>(makeOwned<IPlatformBitmap>(std::move(strip)));
    auto* const knob = add(new CAnimKnob(CRect(0, 0, 4, 4), &recorder, 1, 99, 4, picture));
    EXPECT_EQ(knob->getNumSubPixmaps(), 10) << "counted from the strip";
    const auto frameAt = [&](float value) {
        knob->setValue(value);
        frame->idle();
        return pixel(1, 1).red - 10;
    };
    EXPECT_EQ(frameAt(0), 0);
    EXPECT_EQ(frameAt(1), 9);
    EXPECT_EQ(frameAt(0.9999f), 8);
    EXPECT_EQ(frameAt(std::nextafter(5 / 9.f, 0.f)), 4) << "just below a frame's own value";
    EXPECT_EQ(frameAt(std::nextafter(5 / 9.f, 1.f)), 5);
    knob->setInverseBitmap(true);
    EXPECT_EQ(frameAt(1), 0);
    knob->setBackground(plain(4, 9, kBlueCColor));
    EXPECT_EQ(knob->getNumSubPixmaps(), 2);
    knob->setBackground(nullptr);
    frame->idle();
}

}  // namespace
}  // namespace VSTGUI
