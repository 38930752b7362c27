// Whole skins, then actions of a user and a host on the open editor. An input that begins with '<'
// is skin.xml itself up to a zero byte. Any other input describes what to write there.
#include "editor/my_editor.h"
#include "editor/views/param_display_link.h"
#include "fuzz/support/input.h"
#include "fuzz/support/skin_folder.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"
#include "tests/editor/fake_instrument.h"

namespace {

namespace headless = VSTGUI::headless;
using VSTGUI::CPoint;
using VSTGUI::VirtualKey;

// Records forbidden calls of the editor, to be checked at the end.
class Instrument : public FakeInstrument {
  public:
    void setParameter(int index, float value) override {
        checkValue(index, value);
        FakeInstrument::setParameter(index, value);
    }
    void setParameterAutomated(int index, float value) override {
        checkValue(index, value);
        FakeInstrument::setParameterAutomated(index, value);
    }
    void beginEdit(int index) override { ++edits_[index]; }
    void endEdit(int index) override {
        if (--edits_[index] < 0) wrong_ = "a gesture ends once";
    }
    bool sizeWindow(int width, int height) override {
        if (width < 0 || height < 0) wrong_ = "a window has a size";
        return width % 2 == 0;
    }
    void setProgram(int program) override {
        if (!state::isProgram(program)) wrong_ = "a program is in range";
        FakeInstrument::setProgram(program);
    }

    void requireDone() const {
        fuzz::require(!wrong_, wrong_);
        for (const int edits : edits_) fuzz::require(edits == 0, "every gesture ends");
    }

  private:
    void checkValue(int index, float value) {
        if (!isParameter(index)) wrong_ = "a parameter is in range";
        if (!(value >= 0.0f && value <= 1.0f)) wrong_ = "a value is in range";
    }

    std::array<int, state::kNumParams> edits_{};
    const char* wrong_ = nullptr;
};

constexpr VirtualKey kKeys[] = {VirtualKey::Return, VirtualKey::Escape, VirtualKey::Up,
                                VirtualKey::Down,   VirtualKey::Left,   VirtualKey::Right,
                                VirtualKey::Home,   VirtualKey::End,    VirtualKey::Back,
                                VirtualKey::Delete, VirtualKey::Tab,    VirtualKey::PageUp};

constexpr int kNoticed = 200;  // milliseconds

class Session {
  public:
    Session(fuzz::World& world, Instrument& instrument)
        : world_(world), instrument_(instrument), edit_(instrument) {}

    bool open() { return edit_.open(&world_); }
    void close() { edit_.close(); }
    bool showsSkin() const { return edit_.showsSkin(); }

    // One action of the user or the host.
    void act(fuzz::Input& input) {
        const int action = input.below(16);
        if (action >= 10) return actOfHost(action, input);
        if (!edit_.isOpen()) return;
        VSTGUI::CFrame& frame = *edit_.getFrame();
        const CPoint where(input.byte(), input.byte());
        switch (action) {
            case 0:
                return headless::click(frame, where);
            case 1:
                return headless::click(frame, where, VSTGUI::kRButton);
            case 2:
                return headless::press(frame, where);
            case 3:
                return headless::move(frame, where);
            case 4:
                return headless::release(frame, where);
            case 5:
                return headless::wheel(frame, where, input.byte() % 9 - 4.0);
            case 6:
                headless::key(frame, kKeys[input.below(std::size(kKeys))]);
                return;
            case 7:
                headless::type(frame, std::string(input.takeUntil('\n')).c_str());
                return;
            case 8:
                return headless::leave(frame);
            default:
                return headless::click(frame, where, VSTGUI::kLButton | VSTGUI::kControl);
        }
    }

    // After all updates, the screen shows what a full redraw would show.
    void requirePicture() {
        for (int i = 0; i < 2; ++i) {
            world_.clock.skip(kNoticed);
            edit_.idle();
        }
        if (!edit_.isOpen()) return;
        VSTGUI::CFrame& frame = *edit_.getFrame();
        for (unsigned i = 0; i < frame.getNbViews(); ++i) {
            const VSTGUI::CView* const view = frame.getView(i);
            // This view shows the newest value in the part that is redrawn.
            if (dynamic_cast<const editor::CParamDisplayLink*>(view)) return;
            // The meter falls with each drawing.
            const auto* const meter = dynamic_cast<const VSTGUI::CVuMeter*>(view);
            if (meter && meter->getOldValue() != meter->getValue()) return;
        }
        const VSTGUI::PixelBuffer shown = headless::picture(frame);
        frame.invalid();
        const VSTGUI::PixelBuffer& anew = headless::picture(frame);
        for (int y = 0; y < shown.height(); ++y) {
            fuzz::require(std::equal(shown.row(y), shown.row(y) + shown.width(), anew.row(y)),
                          "what changed was drawn");
        }
    }

    void requireSize() {
        const editor::EditorRect rect = edit_.getRect();
        fuzz::require(rect.left == 0 && rect.top == 0 && rect.right > 0 && rect.bottom > 0,
                      "the editor has a size");
    }

  private:
    void actOfHost(int action, fuzz::Input& input) {
        switch (action) {
            case 10:
                return instrument_.setParameter(input.below(state::kNumParams), input.share());
            case 11:
                instrument_.held = input.below(4);
                instrument_.key = input.below(128);
                instrument_.peaks = {input.share() * 2.0f, input.share() * 2.0f};
                instrument_.taps[input.below(3)] = input.real();
                return;
            case 12:
                instrument_.current = input.below(state::kNumPrograms);
                return;
            case 13:
                edit_.close();
                edit_.open(&world_);
                return;
            case 14:
                edit_.setKnobMode(input.below(3));
                return;
            default:
                if (edit_.isOpen()) world_.clock.skip(input.byte() * 4);
                edit_.idle();
        }
    }

    fuzz::World& world_;
    Instrument& instrument_;
    editor::myEditor edit_;
};

void run(std::string_view bytes) {
    fuzz::World world;
    fuzz::Input input(bytes);
    const bool isText = bytes.substr(0, 1) == "<";
    fuzz::makeSkinFolder(world.module.path(),
                         isText ? std::string(input.takeUntil('\0')) : fuzz::writtenSkin(input));

    Instrument instrument;
    Session session(world, instrument);
    session.requireSize();
    fuzz::require(world.messages.all.empty(), "asking for the size is silent");
    fuzz::require(session.open(), "some screen opens");
    session.requireSize();
    for (int count = 0; count < 40 && !input.empty(); ++count) {
        if (count % 8 == 0 && session.showsSkin()) session.requirePicture();
        session.act(input);
    }
    session.requirePicture();
    session.close();
    instrument.requireDone();
}

const fuzz::Registered registered("skin", run);

}  // namespace
