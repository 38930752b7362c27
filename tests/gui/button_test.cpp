// Switches, buttons, the splash screen and the meter.
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

// A strip of frames, one above the other. The red of a frame is its number.
SharedPointer<CBitmap> strip(int width, int frameHeight, int frames) {
    PixelBuffer pixels(width, frameHeight * frames);
    for (int i = 0; i < frames; ++i)
        fillArea(pixels, {0, i * frameHeight, width, (i + 1) * frameHeight},
                 premultiplied(CColor(static_cast<uint8_t>(i + 1), 0, 0)));
    return makeOwned<CBitmap>(makeOwned<IPlatformBitmap>(std::move(pixels)));
}

class Buttons : public GuiTest {
  protected:
    int frameAt(int x, int y) { return pixel(x, y).red - 1; }
};

TEST_F(Buttons, VerticalSwitchesChooseByThePointer) {
    auto* const control = add(
        new CVerticalSwitch(CRect(100, 100, 120, 160), &recorder, 1, 3, 60, 3, strip(20, 60, 3)));
    EXPECT_EQ(control->getDefaultValue(), 0);
    struct Case {
        double y;
        float value;
    };
    headless::press(*frame, CPoint(110, 100));
    for (const Case& row :
         {Case{0, 0}, {19, 0}, {20, 0.5f}, {39, 0.5f}, {40, 1}, {59, 1}, {900, 1}, {-900, 0}}) {
        SCOPED_TRACE(row.y);
        headless::move(*frame, CPoint(110, 100 + row.y));
        EXPECT_EQ(control->getValue(), row.value);
    }
    headless::release(*frame, CPoint(110, 100));
    EXPECT_EQ(reports(), "begin 0.5 1 0 end") << "only changes";
    headless::wheel(*frame, CPoint(110, 110), 1);
    EXPECT_EQ(reports(), "");
}

TEST_F(Buttons, HorizontalSwitchesChooseByThePicturesWidth) {
    add(new CHorizontalSwitch(CRect(100, 100, 160, 120), &recorder, 1, 3, 20, 3, strip(60, 20, 3)));
    headless::press(*frame, CPoint(125, 110));
    headless::move(*frame, CPoint(141, 110));
    headless::release(*frame, CPoint(141, 110));
    EXPECT_EQ(reports(), "begin 0.5 1 end");
    EXPECT_EQ(frameAt(110, 110), 2);
    headless::key(*frame, VirtualKey::Left);
    EXPECT_FALSE(headless::key(*frame, VirtualKey::Up));
    headless::key(*frame, VirtualKey::Right);
    headless::key(*frame, VirtualKey::Right);
    EXPECT_EQ(reports(), "begin 0.5 end begin 1 end begin end");
}

TEST_F(Buttons, SwitchesShowTheFrameOfTheirValue) {
    auto* const control =
        add(new CVerticalSwitch(CRect(0, 0, 20, 60), &recorder, 1, 4, 60, 4, strip(20, 60, 4)));
    struct Case {
        float value;
        int frame;
    };
    for (const Case& row :
         {Case{0, 0}, {0.24f, 0}, {0.25f, 1}, {1 / 3.f, 1}, {2 / 3.f, 2}, {1, 3}}) {
        SCOPED_TRACE(row.value);
        control->setValue(row.value);
        frame->idle();
        EXPECT_EQ(frameAt(5, 5), row.frame);
    }
    auto* const single =
        add(new CVerticalSwitch(CRect(50, 0, 70, 60), &recorder, 1, 1, 60, 1, strip(20, 60, 1)));
    headless::click(*frame, CPoint(55, 30));
    EXPECT_EQ(single->getValue(), 0);
    EXPECT_EQ(frameAt(55, 5), 0);
    headless::click(*frame, CPoint(5, 5));
    EXPECT_FALSE(headless::key(*frame, VirtualKey::Left));
    reports();
    headless::key(*frame, VirtualKey::Down);
    EXPECT_EQ(reports(), "begin 0.3333 end");
}

TEST_F(Buttons, OnOffTogglesAtTheReleaseInside) {
    auto* const button = add(new COnOffButton(CRect(0, 0, 20, 10), &recorder, 1, strip(20, 10, 2)));
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(reports(), "begin 1 end");
    EXPECT_EQ(frameAt(5, 5), 1);
    headless::press(*frame, CPoint(5, 5));
    headless::release(*frame, CPoint(50, 5));
    EXPECT_EQ(reports(), "begin end") << "outside";
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(reports(), "begin 0 end");
    button->setValue(0.7f);
    frame->idle();
    EXPECT_EQ(frameAt(5, 5), 0) << "the lower half is for the maximum alone";
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(reports(), "begin 1 end") << "anything else goes to the maximum";
}

TEST_F(Buttons, KickReportsBothEndsAtTheReleaseInside) {
    add(new CKickButton(CRect(0, 0, 20, 10), &recorder, 1, strip(20, 10, 2)));
    headless::press(*frame, CPoint(5, 5));
    EXPECT_EQ(reports(), "begin");
    EXPECT_EQ(frameAt(5, 5), 1);
    headless::move(*frame, CPoint(50, 5));
    EXPECT_EQ(frameAt(5, 5), 0);
    headless::move(*frame, CPoint(6, 5));
    EXPECT_EQ(frameAt(5, 5), 1);
    headless::release(*frame, CPoint(6, 5));
    EXPECT_EQ(reports(), "1 0 end");
    EXPECT_EQ(frameAt(5, 5), 0);
    headless::press(*frame, CPoint(5, 5));
    headless::release(*frame, CPoint(50, 5));
    EXPECT_EQ(reports(), "begin 0 end");
}

// Closes the splash screen at its second press.
class About : public CControl {
  public:
    using CControl::CControl;
    void draw(CDrawContext* context) override {
        context->setFillColor(kBlueCColor);
        context->drawRect(getViewSize(), kDrawFilled);
        setDirty(false);
    }
    CMouseEventResult onMouseDown(CPoint&, const CButtonState&) override {
        if (++presses == 2) valueChanged();
        return kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    }
    int presses = 0;
};

TEST_F(Buttons, TheSplashScreenShowsItsViewUntilThatIsDone) {
    auto* const about = new About(CRect(100, 100, 200, 200));
    auto* const splash = add(new CSplashScreen(CRect(0, 0, 20, 20), &recorder, 1, about));
    about->setListener(splash);
    add(new COnOffButton(CRect(50, 0, 70, 20), &recorder, 2));

    headless::click(*frame, CPoint(5, 5), kRButton);
    EXPECT_EQ(reports(), "") << "the left button only";
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(reports(), "1");
    EXPECT_EQ(frame->getModalView(), about);
    EXPECT_EQ(pixel(150, 150), kBlueCColor);
    headless::click(*frame, CPoint(60, 10));
    EXPECT_EQ(reports(), "") << "every press goes to the view";
    EXPECT_EQ(about->presses, 1);
    headless::click(*frame, CPoint(60, 10));
    EXPECT_EQ(reports(), "0");
    EXPECT_EQ(frame->getModalView(), nullptr);
    EXPECT_EQ(pixel(150, 150), kBlackCColor);

    about->presses = 0;
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(frame->getModalView(), about) << "again";
    splash->unSplash();
    EXPECT_EQ(frame->getModalView(), nullptr);
    EXPECT_EQ(splash->getValue(), 0);
    headless::click(*frame, CPoint(5, 5));  // the frame closes while it shows
}

TEST_F(Buttons, TheSplashScreenMayShowAPicture) {
    add(new CSplashScreen(CRect(0, 0, 20, 20), &recorder, 1, gradient(200, 200),
                          CRect(100, 100, 150, 150), CPoint(30, 40)));
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(pixel(100, 100), CColor(30, 40, 0));
    headless::click(*frame, CPoint(300, 200));
    EXPECT_EQ(reports(), "1 0");
}

TEST_F(Buttons, TheMeterRisesAtOnceAndFallsStepByStep) {
    auto* const meter = new CVuMeter(CRect(0, 0, 10, 100), plain(10, 100, kGreenCColor),
                                     plain(10, 100, kRedCColor), 10);
    meter->setValue(0.5f);
    frame->addView(meter);
    const auto litRows = [&] {
        int rows = 0;
        for (int y = 0; y < 100; ++y) rows += pixel(5, y) == kGreenCColor;
        return rows;
    };
    EXPECT_EQ(litRows(), 50) << "the first drawing shows the value itself";
    EXPECT_EQ(pixel(5, 99), kGreenCColor);
    EXPECT_EQ(pixel(5, 0), kRedCColor);
    meter->setValue(1);
    frame->idle();
    EXPECT_EQ(litRows(), 100);
    meter->setValue(0);
    clock.run(*frame, 110);
    EXPECT_EQ(litRows(), 70) << "three times in a tenth of a second";
    clock.run(*frame, 1000);
    EXPECT_EQ(litRows(), 0);
    meter->setDecreaseStepValue(0.5f);
    meter->setValue(0.97f);
    EXPECT_EQ(litRows(), 100) << "whole segments";
}

TEST_F(Buttons, TheMeterMayLie) {
    auto* const meter = new CVuMeter(CRect(0, 0, 100, 10), plain(100, 10, kGreenCColor),
                                     plain(100, 10, kRedCColor), 4, CVuMeter::kHorizontal);
    meter->setValue(0.5f);
    frame->addView(meter);
    EXPECT_EQ(pixel(49, 5), kGreenCColor);
    EXPECT_EQ(pixel(50, 5), kRedCColor);
    meter->setOnBitmap(nullptr);
    EXPECT_EQ(pixel(80, 5), kBlackCColor) << "nothing without the picture of the lit segments";
    meter->setNbLed(0);
    frame->idle();
}

}  // namespace
}  // namespace VSTGUI
