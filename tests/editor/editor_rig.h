// What the editor's tests share: an instrument that writes down, a skin on disk, an open editor.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "editor/my_editor.h"
#include "editor/skin_missing.h"
#include "editor/skin_preview.h"
#include "gui/headless.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "state/bank.h"
#include "state/parameters.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

// An instrument without sound. Its parameters come back to the editor as an instance's do.
class FakeInstrument : public editor::EditorHost {
  public:
    int parameterCount() const override { return state::kNumParams; }
    float parameter(int index) const override { return values[index]; }
    void setParameter(int index, float value) override {
        values[index] = value;
        if (listener) listener->setParameter(index);
        note("set " + std::to_string(index) + ' ' + state::valueText(value));
    }
    void setParameterAutomated(int index, float value) override {
        values[index] = value;
        if (listener) listener->setParameter(index);
        note("automate " + std::to_string(index) + ' ' + state::valueText(value));
    }
    void beginEdit(int index) override { note("begin " + std::to_string(index)); }
    void endEdit(int index) override { note("end " + std::to_string(index)); }
    std::string parameterName(int index) const override { return state::parameter(index).name; }
    std::string parameterDisplay(int index) const override {
        return state::valueText(values[index]);
    }
    std::string parameterLabel(int) const override { return "x"; }

    int programCount() const override { return state::kNumPrograms; }
    int program() const override { return current; }
    void setProgram(int program) override { current = program; }
    std::string programName(int program) const override { return names[program]; }
    void renameProgram(const std::string& name) override { names[current] = name; }

    int heldNotes() const override { return held; }
    int lastKey() const override { return key; }
    float outputLevel() const override { return level; }
    int chorusTapCount() const override { return 3; }
    float chorusTap(int tap) const override { return taps[tap]; }

    state::LearnSlot& learnSlot() override { return slot; }
    void sizeWindow(int width, int height) override {
        note("size " + std::to_string(width) + ' ' + std::to_string(height));
    }

    // Everything since the last call, separated by semicolons.
    std::string calls() { return std::exchange(log_, std::string()); }

    std::array<float, state::kNumParams> values{};
    std::array<std::string, state::kNumPrograms> names;
    std::array<float, 3> taps{};
    int current = 0;
    int held = 0;
    int key = -1;
    float level = 0.0f;
    state::LearnSlot slot;
    editor::AEffGUIEditor* listener = nullptr;

  private:
    void note(const std::string& call) { log_ += (log_.empty() ? "" : "; ") + call; }
    std::string log_;
};

inline VSTGUI::PixelBuffer plainPicture(int width, int height, VSTGUI::CColor color) {
    VSTGUI::PixelBuffer picture(width, height);
    VSTGUI::fillArea(picture, picture.bounds(), VSTGUI::premultiplied(color));
    return picture;
}

// The folder of a library with one skin in it: bg.png is 400 x 300, each of the others is named
// after its size.
class EditorTest : public testing::Test {
  protected:
    EditorTest() {
        editor::setSkinMissing(false);
        state::controllerMap().load();
        instrument.listener = &edit;
        for (int i = 0; i < state::kNumParams; ++i) {
            instrument.values[i] = state::parameter(i).defaultValue;
        }
        addSkin("skin");
    }
    ~EditorTest() override {
        edit.close();
        editor::setSkinMissing(false);
    }

    void addSkin(const std::string& name) {
        const std::string folder = module.path() + name + '/';
        std::filesystem::create_directories(folder);
        const VSTGUI::CColor ground(40, 50, 60);
        editor::writePng(folder + "bg.png", plainPicture(400, 300, ground));
        editor::writePng(folder + "10x10.png", plainPicture(10, 10, VSTGUI::kRedCColor));
        editor::writePng(folder + "20x40.png", plainPicture(20, 40, VSTGUI::kGreenCColor));
        editor::writePng(folder + "32x3200.png", plainPicture(32, 3200, VSTGUI::kBlueCColor));
        module.write(name + "/broken.png", "no picture");
    }

    // Opens the skin with these elements on a background.
    bool open(const std::string& elements, const std::string& skin = "skin") {
        writeSkin(R"(<background filename="bg.png"/>)" + elements, skin);
        return openAsWritten();
    }
    void writeSkin(const std::string& elements, const std::string& skin = "skin") {
        module.write(skin + "/skin.xml", "<GUI>" + elements + "</GUI>");
    }
    bool openAsWritten() {
        edit.close();
        const bool opened = edit.open(&instrument);
        if (opened) idle();
        instrument.calls();
        return opened;
    }
    // Twice: what one call marks is drawn by the next.
    void idle() {
        edit.idle();
        edit.idle();
    }

    VSTGUI::CFrame& frame() { return *edit.getFrame(); }
    VSTGUI::CView* view(unsigned index) { return frame().getView(index); }
    template <class View>
    View* viewAs(unsigned index) {
        return dynamic_cast<View*>(view(index));
    }
    VSTGUI::CColor pixel(int x, int y) {
        const std::uint32_t word = VSTGUI::headless::picture(frame()).at(x, y);
        return VSTGUI::CColor(word >> 16 & 255, word >> 8 & 255, word & 255, word >> 24);
    }
    std::uint64_t look() { return VSTGUI::headless::hashOf(VSTGUI::headless::picture(frame())); }
    void click(double x, double y, VSTGUI::CButtonState button = VSTGUI::kLButton) {
        VSTGUI::headless::click(frame(), {x, y}, button);
    }
    // Chooses from the menu that is open.
    void chooseLine(int line) {
        using VSTGUI::VirtualKey;
        VSTGUI::headless::key(frame(), VirtualKey::Home);
        for (int i = 0; i < line; ++i) VSTGUI::headless::key(frame(), VirtualKey::Down);
        VSTGUI::headless::key(frame(), VirtualKey::Return);
    }
    void type(const char* text) { VSTGUI::headless::type(frame(), text); }
    void press(VSTGUI::VirtualKey key) { VSTGUI::headless::key(frame(), key); }

    VSTGUI::headless::Scope scope;
    VSTGUI::headless::HeldClock clock;
    TemporaryFolder module;
    TemporaryFolder applicationData;
    platform::ScopedFolders folders{module.path(), applicationData.path()};
    platform::ScopedSettings settings;
    RecordedMessages messages;
    FakeInstrument instrument;
    editor::myEditor edit{instrument};
};
