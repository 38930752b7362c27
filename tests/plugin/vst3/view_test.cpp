// The editor in a VST 3 host's window.
#include <gtest/gtest.h>

#include "tests/plugin/editor_kit.h"
#include "tests/plugin/vst3/driver.h"
#include "tests/support/recorded_messages.h"

namespace {

using namespace driver;

constexpr FIDString kHere = kOnWindows ? kPlatformTypeHwnd : kPlatformTypeX11;
constexpr FIDString kElsewhere = kOnWindows ? kPlatformTypeX11 : kPlatformTypeHwnd;

class Frame final : public Local<IPlugFrame> {
  public:
    tresult VST3_CALL queryInterface(const TUID iid, void** object) override {
        if (loop && isSame(iid, IRunLoop::kIid)) return loop->queryInterface(iid, object);
        return Local::queryInterface(iid, object);
    }
    tresult VST3_CALL resizeView(IPlugView* view, ViewRect* size) override {
        asked = *size;
        if (!grants) return kResultFalse;
        return view->onSize(size);
    }

    RunLoop* loop = nullptr;
    bool grants = true;
    ViewRect asked{};
};

class Vst3View : public WindowTest {
  protected:
    Vst3View() : WindowTest(400, 200) {
        instance_->controller->setComponentHandler(&handler_);
        frame_.loop = &loop_;
    }
    void idle() override { loop_.run(); }
    Ref<IPlugView> makeView() {
        Ref<IPlugView> view(instance_->controller->createView("editor"));
        view->setFrame(&frame_);
        return view;
    }
    tresult attach(IPlugView& view) { return view.attached(window_.parent(), kHere); }
    ViewRect sizeOf(IPlugView& view) {
        ViewRect size{};
        EXPECT_EQ(view.getSize(&size), kResultTrue);
        return size;
    }

    RecordedMessages messages_;  // the bank is missing
    InstalledSkin skin_;
    RunLoop loop_;
    Frame frame_;
    Handler handler_;
    Ref<IPluginFactory> factory_{factory()};
    std::unique_ptr<Instance> instance_ = std::make_unique<Instance>(factory_.get());
};

TEST_F(Vst3View, ShowsTheEditorAndTellsOfItsGestures) {
    const auto view = makeView();
    EXPECT_EQ(sizeOf(*view.get()).right, 200);
    ASSERT_EQ(attach(*view.get()), kResultOk);
    loop_.run();
    handler_.take();
    window_.drag(20, 4, 35, 20);
    std::string told;
    EXPECT_TRUE(waitFor([&] {
        told += handler_.take();
        return told.find("end 1") != std::string::npos;
    }));
    EXPECT_EQ(told.rfind("begin 1; edit 1", 0), 0u) << told;
    EXPECT_EQ(handler_.last, instance_->value(1));
    view->removed();
    EXPECT_TRUE(loop_.timers.empty());
}

TEST_F(Vst3View, SurvivesEveryOrderOfItsLife) {
    makeView();  // and goes unseen
    auto first = makeView();
    auto second = makeView();
    EXPECT_EQ(first->removed(), kResultOk);
    EXPECT_NE(first->attached(window_.parent(), kElsewhere), kResultOk);
    EXPECT_NE(first->attached(nullptr, kHere), kResultOk);
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(attach(*first.get()), kResultOk);
        EXPECT_NE(attach(*first.get()), kResultOk);
        EXPECT_NE(attach(*second.get()), kResultOk);  // one editor at a time
        if (i % 2) instance_->start();
        if (i % 3) instance_->render(64);
        loop_.run();
        if (i % 5) instance_->component->setActive(0);
        instance_->load(instance_->saved());
        first->removed();
        first->removed();
    }
    ASSERT_EQ(attach(*second.get()), kResultOk);
    first.reset();
    loop_.run();
    instance_.reset();  // the view keeps the rest alive
    loop_.run();
    second.reset();  // attached still
    EXPECT_TRUE(loop_.timers.empty());
}

TEST_F(Vst3View, TakesTheSizeOfTheDisplaysScale) {
    const auto view = makeView();
    const auto scale = query<IPlugViewContentScaleSupport>(view.get());
    ASSERT_TRUE(scale);
    EXPECT_EQ(scale->setContentScaleFactor(1.5f), kResultOk);
    EXPECT_EQ(sizeOf(*view.get()).right, 300);
    ASSERT_EQ(attach(*view.get()), kResultOk);
    const struct {
        float factor;
        bool grants;
        int width;
    } rows[] = {{2.0f, true, 400},  {1.0f, false, 200},    {3.0f, false, 600}, {9.0f, true, 600},
                {0.25f, true, 200}, {INFINITY, true, 600}, {1.0f, true, 200},  {0.0f, true, 200},
                {-1.0f, true, 200}, {NAN, true, 200}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.factor);
        frame_.grants = row.grants;
        scale->setContentScaleFactor(row.factor);
        EXPECT_EQ(frame_.asked.right, row.width);
        EXPECT_EQ(sizeOf(*view.get()).bottom, row.width / 2);
        loop_.run();
    }
    ViewRect wish{10, 10, 500, 500};
    EXPECT_EQ(view->checkSizeConstraint(&wish), kResultTrue);
    EXPECT_EQ(wish.right, 210);
    EXPECT_EQ(view->canResize(), kResultFalse);
}

// Windows has timers of its own.
TEST_F(Vst3View, WantsTheHostsEventLoopOnLinux) {
    const auto view = makeView();
    frame_.loop = nullptr;
    EXPECT_EQ(attach(*view.get()) == kResultOk, kOnWindows);
    view->setFrame(nullptr);
    view->removed();
    EXPECT_EQ(attach(*view.get()) == kResultOk, kOnWindows);
    view->removed();
    view->setFrame(&frame_);
    frame_.loop = &loop_;
    EXPECT_EQ(attach(*view.get()), kResultOk);
}

}  // namespace
