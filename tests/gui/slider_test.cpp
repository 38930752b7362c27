// Sliders: drags in every mode, the wheel, and what they draw.
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

using Sliders = GuiTest;

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

TEST_F(Sliders, FollowThePointerByTheTable) {
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

TEST_F(Sliders, ObeyTheirOwnWheelAxis) {
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

TEST_F(Sliders, DrawTheHandleBetweenItsLimits) {
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

TEST_F(Sliders, RampTowardsThePointer) {
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
