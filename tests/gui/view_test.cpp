// Views and containers: drawing order and areas, dispatch of the mouse and the keys, focus.
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

// Records what reaches it and returns the given answers.
class Probe : public CView {
  public:
    Probe(const CRect& size, std::string name, std::vector<std::string>& log)
        : CView(size), name_(std::move(name)), log_(log) {}
    ~Probe() override { log_.push_back(name_ + " gone"); }

    void draw(CDrawContext* context) override {
        CRect clip;
        context->getClipRect(clip);
        log_.push_back(name_ + " draws " + shortNumber(clip.getWidth()));
        context->setFillColor(color);
        context->drawRect(CRect(0, 0, 1000, 1000), kDrawFilled);
        setDirty(false);
    }
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState&) override {
        log_.push_back(name_ + " down " + shortNumber(where.x));
        if (onPress) onPress();
        return answer;
    }
    CMouseEventResult onMouseMoved(CPoint&, const CButtonState&) override {
        log_.push_back(name_ + " move");
        return moveAnswer;
    }
    CMouseEventResult onMouseUp(CPoint&, const CButtonState& buttons) override {
        log_.push_back(name_ + " up" + (buttons.isLeftButton() ? "" : " of another button"));
        return kMouseEventHandled;
    }
    CMouseEventResult onMouseCancel() override {
        log_.push_back(name_ + " cancel");
        return kMouseEventHandled;
    }
    void onKeyboardEvent(KeyboardEvent& event) override {
        log_.push_back(name_ + " key");
        event.consumed = true;
    }
    void takeFocus() override { log_.push_back(name_ + " takes focus"); }
    void looseFocus() override { log_.push_back(name_ + " looses focus"); }
    void onIdle() override { log_.push_back(name_ + " idle"); }

    CMouseEventResult answer = kMouseEventNotHandled;
    CMouseEventResult moveAnswer = kMouseEventHandled;
    std::function<void()> onPress;
    CColor color = kRedCColor;

  private:
    std::string name_;
    std::vector<std::string>& log_;
};

class Views : public GuiTest {
  protected:
    ~Views() override {
        if (frame) frame->close();
        frame = nullptr;
    }
    Probe* probe(const CRect& size, const std::string& name) {
        auto* const view = new Probe(size, name, log);
        frame->addView(view);
        frame->idle();
        log.clear();
        return view;
    }
    std::string logged() {
        std::string line;
        for (const auto& word : std::exchange(log, {})) line += (line.empty() ? "" : ", ") + word;
        return line;
    }
    std::vector<std::string> log;
};

TEST_F(Views, AreDrawnInOrderOfAddingAndEachClippedToItself) {
    Probe* const below = probe(CRect(10, 10, 50, 50), "below");
    probe(CRect(30, 10, 70, 50), "above")->color = kBlueCColor;
    below->invalid();
    frame->redraw();
    EXPECT_EQ(logged(), "below draws 40, above draws 20") << "only the area asked for";
    frame->invalid();
    EXPECT_EQ(pixel(29, 30), kRedCColor);
    EXPECT_EQ(pixel(30, 30), kBlueCColor);
    EXPECT_EQ(pixel(70, 30), kBlackCColor);
}

TEST_F(Views, AreDrawnWholeWhenDirtyAlthoughLittleWasAskedFor) {
    Probe* const view = probe(CRect(10, 10, 50, 50), "view");
    view->setDirty();
    frame->invalidRect(CRect(0, 0, 12, 12));
    frame->redraw();
    EXPECT_EQ(logged(), "view draws 40");
    EXPECT_FALSE(view->isDirty());
    frame->idle();
    EXPECT_EQ(logged(), "") << "nothing is dirty";
}

TEST_F(Views, AreNeitherDrawnNorHitWhileInvisible) {
    Probe* const view = probe(CRect(10, 10, 50, 50), "view");
    view->setVisible(false);
    EXPECT_EQ(pixel(20, 20), kBlackCColor);
    headless::click(*frame, CPoint(20, 20));
    EXPECT_EQ(logged(), "");
    view->setVisible(true);
    view->setAlphaValue(0.5f);
    EXPECT_EQ(pixel(20, 20), CColor(128, 0, 0));
    view->setMouseEnabled(false);
    log.clear();
    headless::click(*frame, CPoint(20, 20));
    EXPECT_EQ(logged(), "");
}

TEST_F(Views, AreHitInTheirMouseableAreaAlone) {
    Probe* const view = probe(CRect(10, 10, 50, 50), "view");
    EXPECT_EQ(view->getMouseableArea(), view->getViewSize());
    view->setMouseableArea(CRect(20, 20, 80, 30));
    headless::press(*frame, CPoint(15, 25));
    EXPECT_EQ(logged(), "");
    headless::press(*frame, CPoint(70, 25));
    EXPECT_EQ(logged(), "view down 70");
}

TEST_F(Views, CountTheirChildrenFromTheirOwnCorner) {
    auto* const box = new CViewContainer(CRect(100, 50, 200, 150));
    box->setBackgroundColor(kGreenCColor);
    auto* const inner = new Probe(CRect(20, 20, 90, 130), "inner", log);
    box->addView(inner);
    frame->addView(box);
    EXPECT_EQ(pixel(119, 80), kGreenCColor);
    EXPECT_EQ(pixel(120, 70), kRedCColor);
    EXPECT_EQ(pixel(150, 149), kRedCColor);
    EXPECT_EQ(pixel(150, 150), kBlackCColor) << "cut by the container";
    log.clear();
    headless::press(*frame, CPoint(130, 80));
    EXPECT_EQ(logged(), "inner down 30");

    CPoint point(0, 0);
    EXPECT_EQ(inner->localToFrame(point), CPoint(100, 50));
    EXPECT_EQ(inner->frameToLocal(point), CPoint(0, 0));
    EXPECT_EQ(frame->getViewAt(CPoint(130, 80)), nullptr);
    EXPECT_EQ(frame->getViewAt(CPoint(130, 80), GetViewOptions().deep()), inner);
    EXPECT_EQ(frame->getViewAt(CPoint(101, 51), GetViewOptions().includeViewContainer()), box);
    EXPECT_TRUE(frame->isChild(inner, true));
    EXPECT_FALSE(frame->isChild(inner));
}

TEST_F(Views, GetThePressFromTheTopAndOnlyTransparentOnesLetItThrough) {
    probe(CRect(0, 0, 50, 50), "low");
    Probe* const high = probe(CRect(0, 0, 50, 50), "high");
    headless::press(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "high down 5");
    headless::release(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "") << "not handled: no release";
    high->setTransparency(true);
    headless::press(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "high down 5, low down 5");
}

TEST_F(Views, KeepThePointerFromThePressToTheRelease) {
    Probe* const holder = probe(CRect(0, 0, 50, 50), "holder");
    probe(CRect(100, 0, 150, 50), "other");
    holder->answer = kMouseEventHandled;
    headless::press(*frame, CPoint(5, 5));
    headless::press(*frame, CPoint(110, 5), kRButton);
    headless::move(*frame, CPoint(110, 5), kLButton | kRButton);
    headless::release(*frame, CPoint(110, 5), kRButton);
    headless::release(*frame, CPoint(110, 5));
    EXPECT_EQ(logged(), "holder down 5, holder move, holder up");
    headless::move(*frame, CPoint(110, 5), 0);
    EXPECT_EQ(logged(), "other move");
}

TEST_F(Views, MayWantNoMoreOfAPressOrOfTheMoves) {
    Probe* const view = probe(CRect(0, 0, 50, 50), "view");
    view->answer = kMouseDownEventHandledButDontNeedMovedOrUpEvents;
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "view down 5");
    view->answer = kMouseEventHandled;
    view->moveAnswer = kMouseMoveEventHandledButDontNeedMoreEvents;
    headless::press(*frame, CPoint(5, 5));
    headless::move(*frame, CPoint(90, 5));
    headless::move(*frame, CPoint(91, 5));
    headless::release(*frame, CPoint(91, 5));
    EXPECT_EQ(logged(), "view down 5, view move");
}

TEST_F(Views, AreToldWhenADragWillSeeNoRelease) {
    Probe* const view = probe(CRect(0, 0, 50, 50), "view");
    view->answer = kMouseEventHandled;
    headless::press(*frame, CPoint(5, 5));
    frame->input().pointerLost();
    EXPECT_EQ(logged(), "view down 5, view cancel");
    headless::press(*frame, CPoint(5, 5));
    headless::move(*frame, CPoint(6, 5), 0);
    EXPECT_EQ(logged(), "view down 5, view cancel, view move") << "moved without the button";
}

TEST_F(Views, AreAskedAfterTheirListenersTheLatestFirst) {
    struct Listener : IViewEventListener {
        Listener(std::string name, std::vector<std::string>& log) : name(name), log(log) {}
        void viewOnEvent(CView*, Event& event) override {
            if (event.type != EventType::MouseDown) return;
            log.push_back(name);
            if (!castMouseDownEvent(event).buttonState.isRight()) return;
            event.consumed = true;
            castMouseDownEvent(event).ignoreFollowUpMoveAndUpEvents(true);
        }
        std::string name;
        std::vector<std::string>& log;
    };
    Listener first("first", log), second("second", log);
    Probe* const view = probe(CRect(0, 0, 50, 50), "view");
    view->registerViewEventListener(&first);
    view->registerViewEventListener(&second);
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "second, first, view down 5");
    headless::click(*frame, CPoint(5, 5), kRButton);
    EXPECT_EQ(logged(), "second");
    view->unregisterViewEventListener(&second);
    view->unregisterViewEventListener(&first);
    headless::click(*frame, CPoint(5, 5), kRButton);
    EXPECT_EQ(logged(), "view down 5");
}

TEST_F(Views, TakeTheFocusByAPressAndThenGetTheKeys) {
    Probe* const one = probe(CRect(0, 0, 50, 50), "one");
    Probe* const two = probe(CRect(50, 0, 100, 50), "two");
    one->answer = two->answer = kMouseEventHandled;
    one->setWantsFocus(true);
    EXPECT_FALSE(headless::key(*frame, VirtualKey::Up));
    headless::click(*frame, CPoint(5, 5));
    headless::click(*frame, CPoint(60, 5));
    EXPECT_EQ(frame->getFocusView(), one) << "the other does not want it";
    EXPECT_TRUE(headless::key(*frame, VirtualKey::Up));
    EXPECT_EQ(logged(), "one down 5, one takes focus, one up, two down 60, two up, one key");
    frame->setFocusView(nullptr);
    EXPECT_EQ(logged(), "one looses focus");
}

TEST_F(Views, MayBeRemovedOrCloseTheFrameInTheirOwnPress) {
    Probe* view = probe(CRect(0, 0, 50, 50), "view");
    view->answer = kMouseEventHandled;
    view->setWantsFocus(true);
    view->onPress = [&] { frame->removeView(view); };
    headless::press(*frame, CPoint(5, 5));
    headless::move(*frame, CPoint(6, 5));
    headless::release(*frame, CPoint(6, 5));
    EXPECT_EQ(logged(), "view down 5, view gone");
    EXPECT_EQ(frame->getFocusView(), nullptr);

    view = probe(CRect(0, 0, 50, 50), "view");
    view->answer = kMouseEventHandled;
    view->onPress = [&] { std::exchange(frame, nullptr)->close(); };
    headless::press(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "view down 5, view gone");
}

TEST_F(Views, IdleThirtyTimesASecondWhileAttached) {
    Probe* const view = probe(CRect(0, 0, 50, 50), "view");
    view->setWantsIdle(true);
    clock.run(*frame, 1000);
    EXPECT_NEAR(log.size(), 30, 2);
    log.clear();
    view->remember();
    frame->removeView(view);
    clock.run(*frame, 200);
    EXPECT_EQ(logged(), "");
    view->forget();
}

struct Watcher : IMouseObserver {
    explicit Watcher(std::vector<std::string>& log) : log(log) {}
    void onMouseEntered(CView* view, CFrame*) override {
        log.push_back("in " + shortNumber(view->getViewSize().left));
    }
    void onMouseExited(CView* view, CFrame*) override {
        log.push_back("out " + shortNumber(view->getViewSize().left));
    }
    void onMouseEvent(MouseEvent& event, CFrame*) override { event.consumed = swallows; }
    std::vector<std::string>& log;
    bool swallows = false;
};

TEST_F(Views, AreReportedToObserversAsThePointerComesAndGoes) {
    Watcher watcher(log);
    Probe* const one = probe(CRect(0, 0, 50, 50), "one");
    Probe* const two = probe(CRect(50, 0, 100, 50), "two");
    one->answer = kMouseEventHandled;
    one->moveAnswer = kMouseEventNotHandled;
    frame->registerMouseObserver(&watcher);
    headless::move(*frame, CPoint(10, 10), 0);
    headless::move(*frame, CPoint(60, 10), 0);
    EXPECT_EQ(logged(), "in 0, one move, out 0, in 50, two move");
    headless::leave(*frame);
    EXPECT_EQ(logged(), "out 50");
    headless::press(*frame, CPoint(10, 10));
    headless::move(*frame, CPoint(60, 10));
    EXPECT_EQ(logged(), "in 0, one down 10, one move") << "a dragged view stays the current one";
    CPoint where;
    EXPECT_TRUE(frame->getCurrentMouseLocation(where));
    EXPECT_EQ(frame->getViewAt(where), two);
    headless::release(*frame, CPoint(60, 10));
    EXPECT_EQ(logged(), "one up, out 0, in 50");
    frame->removeView(two);
    EXPECT_EQ(logged(), "out 50, two gone");
    watcher.swallows = true;
    headless::press(*frame, CPoint(10, 10));
    EXPECT_EQ(logged(), "in 0") << "an observer may keep an event to itself";
    frame->unregisterMouseObserver(&watcher);
}

TEST_F(Views, GetEverythingWhileTheyAreModal) {
    Probe* const below = probe(CRect(0, 0, 50, 50), "below");
    below->answer = kMouseEventHandled;
    below->setWantsFocus(true);
    headless::click(*frame, CPoint(5, 5));
    auto* const modal = new Probe(CRect(200, 200, 220, 220), "modal", log);
    headless::press(*frame, CPoint(5, 5));
    log.clear();
    const auto session = frame->beginModalViewSession(modal);
    ASSERT_TRUE(session);
    EXPECT_EQ(logged(), "below cancel") << "a drag ends where a session begins";
    EXPECT_EQ(frame->getModalView(), modal);
    EXPECT_EQ(frame->beginModalViewSession(modal), std::nullopt) << "attached already";
    frame->idle();
    log.clear();
    headless::press(*frame, CPoint(5, 5));
    headless::move(*frame, CPoint(6, 5));
    headless::release(*frame, CPoint(6, 5));
    headless::key(*frame, VirtualKey::Escape);
    EXPECT_EQ(logged(), "modal down 5, modal move, modal up, modal key");
    EXPECT_TRUE(frame->endModalViewSession(*session));
    EXPECT_FALSE(frame->endModalViewSession(*session));
    EXPECT_EQ(logged(), "modal gone");
    headless::key(*frame, VirtualKey::Escape);
    EXPECT_EQ(logged(), "below key");
}

TEST_F(Views, PutWorkOffUntilTheEventIsDone) {
    Probe* const view = probe(CRect(0, 0, 50, 50), "view");
    view->answer = kMouseEventHandled;
    view->onPress = [&] {
        EXPECT_TRUE(frame->doAfterEventProcessing([&] { log.push_back("afterwards"); }));
        log.push_back("in the press");
    };
    headless::press(*frame, CPoint(5, 5));
    EXPECT_EQ(logged(), "view down 5, in the press, afterwards");
    EXPECT_FALSE(frame->doAfterEventProcessing([] {})) << "outside an event";
}

}  // namespace
}  // namespace VSTGUI
