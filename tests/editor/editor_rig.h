// Shared by the editor's tests: a recording instrument, a skin on disk and an open editor.
#pragma once

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "editor/my_editor.h"
#include "editor/skin_missing.h"
#include "editor/skin_preview.h"
#include "gui/headless.h"
#include "platform/display.h"
#include "platform/folders.h"
#include "platform/settings_store.h"
#include "state/controller_map.h"
#include "tests/editor/fake_instrument.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

// The editor puts so many views above those of a skin.
constexpr unsigned kViewsAbove = 6;

// Provides a library folder that contains one skin.
class EditorTest : public testing::Test {
  protected:
    EditorTest() {
        editor::setSkinMissing(false);
        state::controllerMap().load();
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
        writeSkinPictures(folder);
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
    // Calls idle twice, because the second call draws what the first one marks.
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
    std::optional<platform::ScopedDisplay> display{std::in_place, std::nullopt};
    RecordedMessages messages;
    FakeInstrument instrument;
    editor::myEditor edit{instrument};
};
