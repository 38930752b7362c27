// Plays the scripts of views and containers: drawing, dispatch of the mouse and the keys, focus.
#include "tests/gui/gui_fixture.h"
#include "tests/gui/player.h"

namespace VSTGUI {
namespace {

using script::rectangle;
using script::word;

// Reports what reaches it and returns the given answers.
class Probe : public CView {
  public:
    Probe(const CRect& size, std::string name, std::vector<std::string>& log)
        : CView(size), name_(std::move(name)), log_(log) {}
    ~Probe() override { note("gone"); }

    void draw(CDrawContext* context) override {
        CRect clip;
        context->getClipRect(clip);
        if (notesDraws) note("draws " + shortNumber(clip.getWidth()));
        context->setFillColor(color);
        context->drawRect(CRect(0, 0, 1000, 1000), kDrawFilled);
        setDirty(false);
    }
    CMouseEventResult onMouseDown(CPoint& where, const CButtonState&) override {
        note("down " + shortNumber(where.x));
        if (onPress) onPress();
        return answer;
    }
    CMouseEventResult onMouseMoved(CPoint&, const CButtonState&) override {
        note("move");
        return moveAnswer;
    }
    CMouseEventResult onMouseUp(CPoint&, const CButtonState& buttons) override {
        note(buttons.isLeftButton() ? "up" : "up of another button");
        return kMouseEventHandled;
    }
    CMouseEventResult onMouseCancel() override {
        note("cancel");
        return kMouseEventHandled;
    }
    void onKeyboardEvent(KeyboardEvent& event) override {
        note("key");
        event.consumed = true;
    }
    void takeFocus() override { note("takes focus"); }
    void looseFocus() override { note("looses focus"); }
    void onIdle() override { note("idle"); }

    CMouseEventResult answer = kMouseEventNotHandled;
    CMouseEventResult moveAnswer = kMouseEventHandled;
    std::function<void()> onPress;
    CColor color = kRedCColor;
    bool notesDraws = false;

  private:
    void note(const std::string& what) { log_.push_back(name_ + ' ' + what); }

    std::string name_;
    std::vector<std::string>& log_;
};

// Keeps right presses to itself.
class Listener : public IViewEventListener {
  public:
    Listener(std::string name, std::vector<std::string>& log) : name_(std::move(name)), log_(log) {}
    void viewOnEvent(CView*, Event& event) override {
        if (event.type != EventType::MouseDown) return;
        log_.push_back(name_);
        if (!castMouseDownEvent(event).buttonState.isRight()) return;
        event.consumed = true;
        castMouseDownEvent(event).ignoreFollowUpMoveAndUpEvents(true);
    }

  private:
    std::string name_;
    std::vector<std::string>& log_;
};

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

class Views : public GuiTest, public testing::WithParamInterface<script::Case> {
  protected:
    Views() {
        addMaking();
        addChanges();
        addSessions();
    }
    ~Views() override {
        if (frame) std::exchange(frame, nullptr)->close();
    }

    using Words = std::istream&;
    void on(const char* name, std::function<void(Words)> act) { player.commands[name] = act; }
    CMouseEventResult result(Words words) {
        const std::map<std::string, CMouseEventResult> answers = {
            {"handled", kMouseEventHandled},
            {"unhandled", kMouseEventNotHandled},
            {"alone", kMouseDownEventHandledButDontNeedMovedOrUpEvents},
            {"enough", kMouseMoveEventHandledButDontNeedMoreEvents}};
        return answers.at(word(words));
    }

    void addMaking() {
        on("probe", [this](Words words) {
            const std::string name = word(words);
            it = probes[name] = new Probe(rectangle(words), name, log);
            box ? box->addView(it) : frame->addView(it);
            frame->idle();
        });
        on("box", [this](Words words) {
            auto* const made = new CViewContainer(rectangle(words));
            made->setBackgroundColor(kGreenCColor);
            frame->addView(made);
            box = made;
        });
        on("to", [this](Words words) { it = probes.at(word(words)); });
        on("remove", [this](Words) { frame->removeView(it); });
        on("close", [this](Words) { std::exchange(frame, nullptr)->close(); });
    }

    void addChanges() {
        on("answer", [this](Words words) { it->answer = result(words); });
        on("moveanswer", [this](Words words) { it->moveAnswer = result(words); });
        on("blue", [this](Words) { it->color = kBlueCColor; });
        on("notedraws", [this](Words) { it->notesDraws = true; });
        on("hide", [this](Words) { it->setVisible(false); });
        on("show", [this](Words) { it->setVisible(true); });
        on("faint", [this](Words) { it->setAlphaValue(0.5f); });
        on("nomouse", [this](Words) { it->setMouseEnabled(false); });
        on("transparent", [this](Words) { it->setTransparency(true); });
        on("mouseable", [this](Words words) { it->setMouseableArea(rectangle(words)); });
        on("wantsfocus", [this](Words) { it->setWantsFocus(true); });
        on("wantsidle", [this](Words) { it->setWantsIdle(true); });
        on("dirty", [this](Words) { it->setDirty(); });
        on("isdirty", [this](Words) { player.say(it->isDirty() ? "yes" : "no"); });
        on("invalid", [this](Words words) { frame->invalidRect(rectangle(words)); });
        on("redraw", [this](Words) { frame->redraw(); });
        on("idle", [this](Words) { frame->idle(); });
        on("listen", [this](Words words) {
            listeners.push_back(std::make_unique<Listener>(word(words), log));
            it->registerViewEventListener(listeners.back().get());
        });
        on("unlisten", [this](Words) {
            it->unregisterViewEventListener(listeners.back().get());
            listeners.pop_back();
        });
        on("watch", [this](Words) { frame->registerMouseObserver(&watcher); });
        on("swallow", [this](Words) { watcher.swallows = true; });
        on("unwatch", [this](Words) { frame->unregisterMouseObserver(&watcher); });
    }

    void addSessions() {
        on("onpress", [this](Words words) {
            const std::string what = word(words);
            it->onPress = [this, what, view = it] {
                if (what == "remove") frame->removeView(view);
                if (what == "close") std::exchange(frame, nullptr)->close();
                if (what != "later") return;
                EXPECT_TRUE(frame->doAfterEventProcessing([this] { log.push_back("afterwards"); }));
                log.push_back("in the press");
            };
        });
        on("later", [this](Words) {
            player.say(frame->doAfterEventProcessing([] {}) ? "promised" : "refused");
        });
        on("session", [this](Words words) {
            auto* const view = new Probe(rectangle(words), "modal", log);
            session = frame->beginModalViewSession(view).value_or(0);
            EXPECT_EQ(frame->beginModalViewSession(view), std::nullopt) << "attached already";
        });
        on("endsession",
           [this](Words) { player.say(frame->endModalViewSession(session) ? "ended" : "none"); });
        on("loosefocus", [this](Words) { frame->setFocusView(nullptr); });
        on("pointerlost", [this](Words) { frame->input().pointerLost(); });
    }

    std::string logged() {
        std::string line;
        for (const auto& word : std::exchange(log, {})) line += (line.empty() ? "" : ", ") + word;
        return line;
    }

    std::vector<std::string> log;
    script::Player player{[this] { return frame; }, [this] { return logged(); }, clock};
    std::map<std::string, Probe*> probes;
    Probe* it = nullptr;  // the last one made or named
    CViewContainer* box = nullptr;
    std::vector<std::unique_ptr<Listener>> listeners;
    Watcher watcher{log};
    ModalViewSessionID session = 0;
};

TEST_P(Views, KeepTheirScript) {
    player.play(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, Views,
                         testing::ValuesIn(script::casesOf(QUARZEL_GUI_SCRIPTS "views.txt")),
                         script::nameOf);

class InContainers : public GuiTest {};

TEST_F(InContainers, PlacesAreConvertedAndViewsFound) {
    auto* const box = new CViewContainer(CRect(100, 50, 200, 150));
    auto* const inner = new CView(CRect(20, 20, 90, 130));
    box->addView(inner);
    frame->addView(box);
    CPoint point(0, 0);
    EXPECT_EQ(inner->localToFrame(point), CPoint(100, 50));
    EXPECT_EQ(inner->frameToLocal(point), CPoint(0, 0));
    EXPECT_EQ(frame->getViewAt(CPoint(130, 80)), nullptr);
    EXPECT_EQ(frame->getViewAt(CPoint(130, 80), GetViewOptions().deep()), inner);
    EXPECT_EQ(frame->getViewAt(CPoint(101, 51), GetViewOptions().includeViewContainer()), box);
    EXPECT_TRUE(frame->isChild(inner, true));
    EXPECT_FALSE(frame->isChild(inner));
}

}  // namespace
}  // namespace VSTGUI
