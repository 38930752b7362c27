// One frame with one of each control. Every system and build draws the same bytes.
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

class Scene : public GuiTest {
  protected:
    Scene() {
        const auto handle = plain(12, 12, CColor(250, 210, 60, 200));
        const auto strip = gradient(30, 90, 40);
        frame->setBackground(gradient(400, 300, 60));
        add(new CKnob(CRect(10, 10, 60, 60), &recorder, 0, nullptr, handle))->setValue(0.3f);
        add(new CKnob(CRect(70, 10, 120, 60), &recorder, 1, nullptr, nullptr))->setValue(0.7f);
        add(new CAnimKnob(CRect(130, 10, 160, 40), &recorder, 2, 3, 30, strip))->setValue(1);
        add(new CSlider(CRect(170, 10, 182, 110), &recorder, 3, 10, 98, handle, strip, CPoint(),
                        CSlider::kVertical | CSlider::kBottom))
            ->setAlphaValue(0.6f);
        add(new COnOffButton(CRect(190, 10, 220, 55), &recorder, 4, strip))->setValue(1);
        add(new CVerticalSwitch(CRect(230, 10, 260, 40), &recorder, 5, 3, 30, 3, strip))
            ->setValue(0.5f);
        add(new CVuMeter(CRect(270, 10, 300, 100), strip, plain(30, 90, kRedCColor), 9))
            ->setValue(0.6f);
        auto* const display = add(new CParamDisplay(CRect(10, 80, 90, 110)));
        display->setStyle(CParamDisplay::kRoundRectStyle | CParamDisplay::kShadowText);
        display->setFrameColor(kGreenCColor);
        auto* const label =
            add(new CTextLabel(CRect(10, 120, 160, 150), "Strings \xC3\xA9\xC3\x9F"));
        const auto font = makeOwned<CFontDesc>(*kNormalFontBig);
        font->setStyle(kBoldFace | kItalicFace | kUnderlineFace);
        label->setFont(font);
        label->setTransparency(true);
        add(new CTextEdit(CRect(10, 160, 160, 180), &recorder, 6, "typed text"));
        menu = add(new COptionMenu(CRect(200, 120, 280, 140), &recorder, 7, nullptr, nullptr,
                                   COptionMenu::kCheckStyle));
        for (int i = 0; i < 20; ++i) menu->addEntry(("entry " + std::to_string(i)).c_str());
        menu->setCurrent(4);
        frame->idle();
    }
    uint64_t shown() { return headless::hashOf(headless::picture(*frame)); }

    COptionMenu* menu;
};

// Any change of looks changes these numbers. Look at the picture, then update them.
TEST_F(Scene, GivesTheKnownBytes) {
    EXPECT_EQ(shown(), 15713464183337507175u) << "as built";
    headless::click(*frame, CPoint(40, 170));
    headless::key(*frame, VirtualKey::Home);
    headless::key(*frame, VirtualKey::Right, kShift);
    EXPECT_EQ(shown(), 4292144718401322323u) << "typing";
    headless::click(*frame, CPoint(240, 130));
    headless::move(*frame, CPoint(240, 180), 0);
    EXPECT_EQ(shown(), 657890614881908530u) << "with the menu open";
    frame->setZoom(1.75);
    EXPECT_EQ(shown(), 4426874157991351605u) << "enlarged";
}

TEST_F(Scene, LooksTheSameInPartsAsInOne) {
    for (const double zoom : {1.0, 1.25, 2.0}) {
        SCOPED_TRACE(zoom);
        frame->setZoom(zoom);
        const uint64_t inOne = shown();
        for (int y = 0; y < 300; y += 37)
            for (int x = 0; x < 400; x += 41) {
                frame->invalidRect(CRect(x, y, x + 23, y + 19));
                frame->redraw();
            }
        EXPECT_EQ(shown(), inOne);
    }
}

}  // namespace
}  // namespace VSTGUI
