// Behaviour of all controls: values, edits and the reset gesture.
#include "tests/gui/gui_fixture.h"

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

}  // namespace
}  // namespace VSTGUI
