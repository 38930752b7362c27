// Values, edits and gestures: what controls share, knobs and sliders.
#include "gui/controls/drag_control.h"
#include "gui_fixture.h"

#include <cmath>

namespace VSTGUI {
namespace {

class Plain : public CControl {
  public:
    using CControl::CControl;
    void draw(CDrawContext*) override { setDirty(false); }
};

class Controls : public GuiTest {
  protected:
    Plain* addPlain() { return add(new Plain(CRect(0, 0, 20, 20), &recorder, 7)); }
};

TEST_F(Controls, ClampTheirValueAndKnowItsPlace) {
    Plain* const control = addPlain();
    control->setMin(-10);
    control->setMax(30);
    control->setValue(50);
    EXPECT_EQ(control->getValue(), 30);
    control->setValue(NAN);
    EXPECT_EQ(control->getValue(), -10);
    control->setValueNormalized(0.25f);
    EXPECT_EQ(control->getValue(), 0);
    EXPECT_EQ(control->getValueNormalized(), 0.25f);
    control->setMax(-10);
    EXPECT_EQ(control->getValueNormalized(), 0) << "a range of 0";
    EXPECT_EQ(reports(), "") << "setting tells nobody";
    EXPECT_EQ(control->getDefaultValue(), 0.5f);
    EXPECT_EQ(control->getWheelInc(), 0.1f);
    EXPECT_EQ(control->getTag(), 7);
}

TEST_F(Controls, AreDirtyWhileTheValueIsNotTheOneDrawn) {
    Plain* const control = addPlain();
    EXPECT_FALSE(control->isDirty());
    control->setValue(0.3f);
    EXPECT_TRUE(control->isDirty());
    frame->idle();
    EXPECT_FALSE(control->isDirty());
    control->setMin(-1);
    control->setValue(-1);
    control->setDirty();
    EXPECT_EQ(control->getOldValue(), 0) << "never the value itself";
    control->setDirty(false);
    control->setValue(0);
    control->setDirty();
    EXPECT_EQ(control->getOldValue(), -1);
}

TEST_F(Controls, NestTheirEditsAndTellOnlyOfTheOutermost) {
    Plain* const control = addPlain();
    control->beginEdit();
    control->beginEdit();
    control->endEdit();
    EXPECT_TRUE(control->isEditing());
    control->endEdit();
    control->endEdit();  // one too many
    EXPECT_EQ(recorder.log,
              (std::vector<std::string>{"begin", "editor begins 7", "editor ends 7", "end"}));
}

TEST_F(Controls, EndAnOpenEditWhenTheyAreRemoved) {
    Plain* const control = addPlain();
    control->beginEdit();
    frame->removeView(control);
    EXPECT_EQ(reports(), "begin end");
}

TEST_F(Controls, GoBackToTheDefaultByAPressWithControl) {
    auto* const button = add(new COnOffButton(CRect(0, 0, 20, 20)));
    headless::click(*frame, CPoint(5, 5), kLButton | kControl);
    EXPECT_EQ(reports(), "begin 0.5 end");
    headless::click(*frame, CPoint(5, 5), kLButton | kControl);
    EXPECT_EQ(reports(), "") << "swallowed, nothing to change";
    headless::click(*frame, CPoint(5, 5), kLButton | kControl | kShift);
    EXPECT_EQ(reports(), "begin 1 end") << "the gesture is Control alone";
    EXPECT_EQ(button->getValue(), 1);
}

TEST_F(Controls, AskTheirListenerAboutPressesWithModifiers) {
    add(new COnOffButton(CRect(0, 0, 20, 20)));
    recorder.modifierAnswer = 1;
    headless::click(*frame, CPoint(5, 5), kLButton | kAlt);
    EXPECT_EQ(reports(), "");
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(reports(), "begin 1 end") << "not asked without a modifier";
}

// A press at the first point, moves to the others; the state holds for the whole gesture unless a
// move brings its own.
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
    void setHalf(CControl* control) {
        control->setValue(0.5f);
        frame->idle();
        reports();
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

struct SliderCase {
    const char* name;
    CRect size;
    int32_t first, last;
    CPoint handle;
    int32_t style;
    CSliderMode mode;
    CPoint press;
    int32_t modifiers;
    std::vector<CPoint> moves;
    const char* reports;
};

TEST_F(Knobs, AndSlidersFollowThePointerByTheTable) {
    using S = CSlider;
    const CRect upright(20, 20, 36, 170);
    const CRect lying(60, 20, 210, 40);
    const CRect lyingFurther(260, 20, 410, 40);
    const CPoint handle(16, 20);
    const auto usual = CSliderMode::UseGlobal;
    const SliderCase cases[] = {
        {"bottom",
         upright,
         20,
         150,
         handle,
         S::kVertical | S::kBottom,
         usual,
         {28, 150},
         0,
         {{28, 105}, {28, 10}, {28, 300}},
         "begin 0.06923 0.4154 1 0 end"},
        {"fine",
         upright,
         20,
         150,
         handle,
         S::kVertical | S::kBottom,
         usual,
         {28, 95},
         kShift,
         {{28, 65}},
         "begin 0.5223 end"},
        {"top",
         upright,
         20,
         150,
         handle,
         S::kVertical | S::kTop,
         usual,
         {28, 150},
         0,
         {},
         "begin 0.9308 end"},
        {"neither bit is vertical",
         upright,
         20,
         150,
         handle,
         0,
         usual,
         {28, 150},
         0,
         {},
         "begin 0.9308 end"},
        {"left",
         lying,
         60,
         194,
         handle,
         S::kHorizontal | S::kLeft,
         usual,
         {140, 30},
         0,
         {{180, 30}},
         "begin 0.5448 0.8433 end"},
        {"right",
         lyingFurther,
         260,
         394,
         handle,
         S::kHorizontal | S::kRight,
         usual,
         {340, 30},
         0,
         {},
         "begin 0.4552 end"},
        {"touch beside",
         lying,
         60,
         194,
         handle,
         S::kHorizontal,
         CSliderMode::Touch,
         {70, 30},
         0,
         {{100, 30}},
         ""},
        {"touch the handle",
         lying,
         60,
         194,
         handle,
         S::kHorizontal,
         CSliderMode::Touch,
         {130, 30},
         0,
         {{197, 30}},
         "begin 1 end"},
        {"relative",
         lying,
         60,
         194,
         handle,
         S::kHorizontal,
         CSliderMode::RelativeTouch,
         {70, 30},
         0,
         {{83.4, 30}},
         "begin 0.6 end"},
        {"no travel", lying, 60, 60, handle, S::kHorizontal, usual, {70, 30}, 0, {}, "begin 0 end"},
    };
    for (const SliderCase& row : cases) {
        SCOPED_TRACE(row.name);
        auto* const slider = add(new CSlider(
            row.size, &recorder, 1, row.first, row.last,
            plain(static_cast<int>(row.handle.x), static_cast<int>(row.handle.y), kRedCColor),
            nullptr, CPoint(), row.style));
        slider->setSliderMode(row.mode);
        setHalf(slider);
        headless::press(*frame, row.press, kLButton | row.modifiers);
        for (const CPoint& move : row.moves) headless::move(*frame, move, kLButton | row.modifiers);
        headless::release(*frame, row.press);
        EXPECT_EQ(reports(), row.reports);
        frame->removeView(slider);
    }
}

TEST_F(Knobs, AndSlidersObeyTheirOwnWheelAxis) {
    struct Case {
        const char* name;
        int32_t style;
        double up, right;
        const char* reports;
    };
    using S = CSlider;
    const Case cases[] = {
        {"up", S::kVertical | S::kBottom, 1, 0, "begin 0.6"},
        {"up from the top", S::kVertical | S::kTop, 1, 0, "begin 0.4"},
        {"sideways", S::kVertical, 0, 1, ""},
        {"up on a lying one", S::kHorizontal, 1, 0, ""},
        {"right", S::kHorizontal | S::kLeft, 0, 1, "begin 0.4"},
        {"right from the right", S::kHorizontal | S::kRight, 0, 1, "begin 0.6"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        auto* const slider = add(new CSlider(CRect(0, 0, 100, 100), &recorder, 1, 0, 90, nullptr,
                                             nullptr, CPoint(), row.style));
        setHalf(slider);
        headless::wheel(*frame, CPoint(50, 50), row.up, 0, row.right);
        EXPECT_EQ(reports(), row.reports);
        frame->removeView(slider);
    }
}

TEST_F(Knobs, AndSlidersDrawTheHandleBetweenItsLimits) {
    auto* const slider = add(new CSlider(CRect(20, 20, 36, 170), &recorder, 1, 20, 150,
                                         plain(16, 20, kRedCColor), gradient(200, 200, 7),
                                         CPoint(20, 20), CSlider::kVertical | CSlider::kBottom));
    struct Case {
        float value;
        int top;
    };
    for (const Case& row : {Case{0, 150}, {1, 20}, {0.5f, 85}, {0.9999f, 20}, {0.991f, 21}}) {
        SCOPED_TRACE(row.value);
        slider->setValue(row.value);
        frame->idle();
        EXPECT_EQ(pixel(20, row.top), kRedCColor);
        EXPECT_EQ(pixel(35, row.top + 19), kRedCColor);
        if (row.top > 20) {
            EXPECT_EQ(pixel(20, row.top - 1), CColor(20, row.top - 1, 7));
        }
    }
}

TEST_F(Knobs, AndSlidersRampTowardsThePointer) {
    auto* const slider = add(new CSlider(CRect(0, 0, 200, 20), &recorder, 1, 0, 180,
                                         plain(20, 20, kRedCColor), nullptr));
    slider->setSliderMode(CSliderMode::Ramp);
    headless::press(*frame, CPoint(99, 10));
    EXPECT_EQ(slider->getValue(), 0);
    clock.run(*frame, 100);
    EXPECT_GT(slider->getValue(), 0.1f);
    EXPECT_LT(slider->getValue(), 0.3f);
    clock.run(*frame, 400);
    EXPECT_EQ(slider->getValue(), 0.5f);
    headless::release(*frame, CPoint(99, 10));
    slider->setValue(0);
    clock.run(*frame, 100);
    EXPECT_EQ(slider->getValue(), 0) << "not after the release";
}

}  // namespace
}  // namespace VSTGUI
