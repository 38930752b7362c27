// The frame's life, its zoom, and timers.
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

int liveViews = 0;

class CountedView : public CView {
  public:
    explicit CountedView(const CRect& size) : CView(size) { ++liveViews; }
    ~CountedView() override { --liveViews; }
};

TEST(Frame, OpensAndClosesAHundredTimesAndLeavesNothingBehind) {
    liveViews = 0;
    const auto picture = [] { return plain(20, 20, kGreenCColor); };
    for (int i = 0; i < 100; ++i) {
        init(nullptr);
        Recorder recorder;
        auto* const frame = new CFrame(CRect(0, 0, 100, 80), &recorder);
        const auto shared = picture();
        auto* const box = new CViewContainer(CRect(0, 0, 50, 50));
        box->addView(new CountedView(CRect(0, 0, 10, 10)));
        frame->addView(box);
        frame->addView(new CKnob(CRect(0, 0, 40, 40), &recorder, 1, shared, shared));
        ASSERT_TRUE(headless::open(*frame));
        auto* const menu = new COptionMenu(CRect(50, 0, 90, 20), &recorder, 2);
        menu->addEntry("one");
        frame->addView(menu);
        frame->addView(new CTextEdit(CRect(50, 30, 90, 50), &recorder, 3, "text"));
        frame->idle();
        headless::press(*frame, CPoint(60, 40));
        headless::click(*frame, CPoint(60, 10));
        headless::wheel(*frame, CPoint(20, 20), 1);
        frame->idle();
        frame->close();
        ASSERT_EQ(shared->getNbReference(), 1);
        ASSERT_EQ(liveViews, 0);
        exit();
    }
    EXPECT_EQ(kNormalFont, nullptr);
}

TEST(Frame, OpensOnceAndOnlyWithAParent) {
    init(nullptr);
    headless::Scope noWindows;
    auto* const frame = new CFrame(CRect(0, 0, 30, 20), nullptr);
    auto* const view = new CView(CRect(0, 0, 10, 10));
    frame->addView(view);
    CRect size;
    EXPECT_FALSE(frame->getSize(size));
    EXPECT_FALSE(frame->open(nullptr));
    EXPECT_EQ(view->getFrame(), nullptr);
    EXPECT_TRUE(frame->open(&noWindows));
    EXPECT_FALSE(frame->open(&noWindows));
    EXPECT_EQ(view->getFrame(), frame);
    EXPECT_EQ(view->getParentView(), frame);
    EXPECT_TRUE(frame->getSize(size));
    EXPECT_EQ(size, CRect(0, 0, 30, 20));
    EXPECT_EQ(frame->getKnobMode(), kCircularMode) << "nobody says otherwise";
    frame->close();
    exit();
}

TEST_F(GuiTest, TheFrameShowsItsPictureOrColour) {
    EXPECT_EQ(pixel(3, 3), kBlackCColor);
    frame->setBackgroundColor(CColor(201, 201, 255));
    EXPECT_EQ(pixel(3, 3), CColor(201, 201, 255));
    frame->setBackground(gradient(200, 200));
    EXPECT_EQ(pixel(30, 70), CColor(30, 70, 0));
    EXPECT_EQ(pixel(250, 70), kBlackCColor) << "where the picture ends";
    frame->setBackground(plain(400, 300, CColor(255, 0, 0, 128)));
    EXPECT_EQ(pixel(3, 3), CColor(128, 0, 0));
    frame->invalid();
    EXPECT_EQ(pixel(3, 3), CColor(128, 0, 0)) << "also when drawn again";
}

TEST_F(GuiTest, TheZoomScalesThePictureAndThePointer) {
    auto* const view = new CView(CRect(100, 100, 120, 120));
    view->setBackground(plain(20, 20, kRedCColor));
    frame->addView(view);
    EXPECT_TRUE(frame->setZoom(1.5));
    CRect size;
    frame->getSize(size);
    EXPECT_EQ(size, CRect(0, 0, 600, 450));
    EXPECT_EQ(frame->getViewSize(), CRect(0, 0, 400, 300));
    const PixelBuffer& shown = headless::picture(*frame);
    EXPECT_EQ(shown.at(165, 165), 0xFFFF0000u);
    EXPECT_EQ(shown.at(148, 165), 0xFF000000u);
    headless::move(*frame, CPoint(165, 150), 0);
    CPoint where;
    frame->getCurrentMouseLocation(where);
    EXPECT_EQ(where, CPoint(110, 100));

    view->setBackground(plain(20, 20, kBlueCColor));
    EXPECT_EQ(headless::picture(*frame).at(165, 165), 0xFF0000FFu) << "redrawn in part";
    EXPECT_FALSE(frame->setZoom(7)) << "pulled in";
    EXPECT_EQ(frame->getZoom(), 3);
    EXPECT_TRUE(frame->setZoom(1));
    EXPECT_EQ(headless::picture(*frame).width(), 400);
    frame->getCurrentMouseLocation(where);
    EXPECT_EQ(where, CPoint(165, 150)) << "the pointer has not moved";
}

SharedPointer<IPlatformBitmap> opaque(int scale) {
    PixelBuffer pixels = gradient(400 * scale, 300 * scale)->getPlatformBitmap()->pixels().all();
    const auto picture = makeOwned<IPlatformBitmap>(PictureRows(std::move(pixels), true));
    picture->setScaleFactor(scale);
    return picture;
}

TEST_F(GuiTest, PartsThatAViewRedrawsWhileIdleHaveTheSameBackgroundAsTheWhole) {
    class Mover : public CView {
      public:
        using CView::CView;
        void onIdle() override { invalidRect(CRect(101, 51, 105 + turn_++, 70)); }

      private:
        int turn_ = 0;
    };
    const auto background = makeOwned<CBitmap>(opaque(1));
    frame->setBackground(background);
    frame->setZoom(1.3);
    auto* const mover = new Mover(CRect(100, 50, 180, 90));
    mover->setWantsIdle(true);
    frame->addView(mover);
    const auto expectTheSame = [&](const char* when) {
        frame->invalid();
        frame->redraw();
        const uint64_t whole = headless::hashOf(headless::picture(*frame));
        clock.run(*frame, 200);
        EXPECT_EQ(headless::hashOf(headless::picture(*frame)), whole) << when;
    };
    expectTheSame("at first");
    background->addBitmap(opaque(2));
    expectTheSame("with a finer picture");
    frame->setZoom(1.4);
    expectTheSame("at another zoom");
}

TEST_F(GuiTest, ViewsThatMoveWhileTheirContainerIsOutAreFoundWhenItIsBack) {
    auto* const box = new CViewContainer(CRect(0, 0, 100, 100));
    auto* const view = new CView(CRect(0, 0, 10, 10));
    view->setBackground(plain(10, 10, kRedCColor));
    box->addView(view);
    frame->addView(box);
    EXPECT_EQ(pixel(5, 5), kRedCColor);
    frame->removeView(box, false);
    view->setViewSize(CRect(50, 50, 60, 60));
    frame->addView(box);
    EXPECT_EQ(pixel(55, 55), kRedCColor);
    view->setBackground(plain(10, 10, kBlueCColor));
    EXPECT_EQ(pixel(55, 55), kBlueCColor);
    view->setViewSize(CRect(20, 20, 30, 30));
    EXPECT_EQ(pixel(25, 25), kBlueCColor);
    EXPECT_EQ(pixel(55, 55), kBlackCColor);
}

TEST_F(GuiTest, TimersRepeatUntilTheyAreStoppedOrReleased) {
    int calls = 0;
    auto timer = makeOwned<CVSTGUITimer>([&](CVSTGUITimer*) { ++calls; }, 50);
    clock.run(*frame, 245);
    EXPECT_EQ(calls, 4);
    timer->stop();
    clock.run(*frame, 200);
    EXPECT_EQ(calls, 4);
    timer->setFireTime(20);
    EXPECT_TRUE(timer->start());
    EXPECT_FALSE(timer->start());
    clock.run(*frame, 40);
    EXPECT_EQ(calls, 6);
    timer = nullptr;
    clock.run(*frame, 200);
    EXPECT_EQ(calls, 6);
}

TEST_F(GuiTest, TimersMayStopAndReleaseThemselvesAndOthers) {
    int calls = 0;
    SharedPointer<CVSTGUITimer> second;
    SharedPointer<CVSTGUITimer> first = makeOwned<CVSTGUITimer>(
        [&](CVSTGUITimer*) {
            ++calls;
            first = nullptr;
            second = nullptr;
        },
        10);
    second = makeOwned<CVSTGUITimer>([&](CVSTGUITimer*) { calls += 100; }, 10);
    clock.run(*frame, 100);
    EXPECT_EQ(calls, 1);

    const auto closer =
        makeOwned<CVSTGUITimer>([&](CVSTGUITimer*) { std::exchange(frame, nullptr)->close(); }, 10);
    clock.skip(20);
    frame->idle();
    EXPECT_EQ(frame, nullptr);
}

TEST_F(GuiTest, ATimerStartedWhileNoFrameIsOpenNeverFires) {
    frame->close();
    frame = nullptr;
    int calls = 0;
    const auto timer = makeOwned<CVSTGUITimer>([&](CVSTGUITimer*) { ++calls; }, 10);
    EXPECT_FALSE(timer->start());
    frame = new CFrame(CRect(0, 0, 10, 10), nullptr);
    headless::open(*frame);
    clock.run(*frame, 100);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(timer->start());
    clock.run(*frame, 100);
    EXPECT_GT(calls, 5);
}

TEST_F(GuiTest, OneEditorsCloseLeavesTheTimersOfAnother) {
    auto* const other = new CFrame(CRect(0, 0, 10, 10), nullptr);
    headless::open(*other);
    int calls = 0;
    // Start the timer outside any event, while the other frame is current.
    const auto timer = makeOwned<CVSTGUITimer>([&](CVSTGUITimer*) { ++calls; }, 10);
    other->close();
    clock.run(*frame, 100);
    EXPECT_GE(calls, 9);
}

}  // namespace
}  // namespace VSTGUI
