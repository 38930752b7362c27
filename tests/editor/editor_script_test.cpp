// Plays the scripts of the editor: a skin, what the user and the instrument do, what comes of it.
#include <cxxabi.h>

#include <cstdlib>
#include <memory>

#include "editor/views/text_display.h"
#include "editor/views/tool_tip.h"
#include "state/data_folder.h"
#include "tests/editor/editor_rig.h"
#include "tests/gui/player.h"

namespace {

using namespace VSTGUI;

std::string typeName(const CView& view) {
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(view).name(), nullptr, nullptr, nullptr), std::free);
    const std::string full = name.get();
    return full.substr(full.rfind(':') + 1);
}

std::string text(double value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

std::string hex(const CColor& color) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%02x%02x%02x", color.red, color.green, color.blue);
    return digits;
}

class EditorScripts : public EditorTest, public testing::WithParamInterface<script::Case> {
  protected:
    EditorScripts() {
        addOpening();
        addInstrument();
        addViews();
    }

    using Words = std::istream&;
    void on(const char* name, const std::function<void(Words)>& act) {
        player.commands[name] = act;
    }
    void tells(const char* name, const std::function<std::string(Words)>& answer) {
        player.commands[name] = [this, answer](Words words) { player.say(answer(words)); };
    }
    static int index(Words words) { return static_cast<int>(script::number(words)); }
    static float value(Words words) { return static_cast<float>(script::number(words)); }
    CView& viewOf(Words words) { return *view(static_cast<unsigned>(index(words))); }

    void addOpening() {
        player.markup = [this](const std::string& line) { skin += line; };
        on("open", [this](Words) { ASSERT_TRUE(open(skin)); });  // after a background
        on("open-as-written", [this](Words) {
            writeSkin(skin);
            ASSERT_TRUE(openAsWritten());
        });
        on("save", [this](Words) { writeSkin(skin); });
        on("skin", [this](Words) { skin.clear(); });
        // Another folder with this skin, or exactly this text in that folder.
        on("folder", [this](Words words) {
            const std::string name = script::word(words);
            addSkin(name);
            writeSkin(skin, name);
        });
        on("document",
           [this](Words words) { module.write(script::word(words) + "/skin.xml", skin); });
        on("delete", [this](Words words) {
            std::filesystem::remove_all(module.path() + script::word(words));
        });
        on("directory", [this](Words words) {
            std::filesystem::create_directories(module.path() + script::word(words));
        });
        on("present", [](Words) { editor::setSkinMissing(false); });
        tells("missing", [](Words) { return editor::isSkinMissing() ? "yes" : "no"; });
        tells("screen", [this](Words) { return edit.showsSkin() ? "skin" : "data folder"; });
        on("reopen", [this](Words) { openAsWritten(); });
        on("close", [this](Words) { edit.close(); });
        on("grant-sizes", [this](Words) { instrument.grantsSizes = true; });
        on("idle", [this](Words) { idle(); });
        on("picture", [this](Words words) {
            const std::string file = script::word(words);
            const int width = index(words);
            const int height = index(words);
            const auto color = std::stoul(script::word(words), nullptr, 16);
            editor::writePng(
                module.path() + "skin/" + file,
                plainPicture(width, height,
                             CColor(color >> 16 & 255, color >> 8 & 255, color & 255)));
        });
        on("gradient", [this](Words words) {
            PixelBuffer ground(400, 300);
            for (int y = 0; y < 300; ++y)
                for (int x = 0; x < 400; ++x)
                    ground.row(y)[x] = premultiplied(CColor(x & 255, y & 255, 0));
            editor::writePng(module.path() + "skin/" + script::word(words), ground);
        });
        on("zoom", [this](Words words) { edit.showAt(script::number(words)); });
        on("write", [this](Words words) {
            const std::string name = script::word(words);
            state::settings().write(name, script::word(words));
        });
        tells("setting", [](Words words) {
            return state::settings().read(script::word(words)).value_or("none");
        });
        tells("size", [this](Words) {
            const auto rect = edit.getRect();
            return std::to_string(rect.right) + "x" + std::to_string(rect.bottom);
        });
        tells("messages", [this](Words) {
            std::ostringstream out;
            for (const RecordedMessage& message : messages.all) out << message << '\n';
            messages.all.clear();
            return out.str();
        });
    }

    void addInstrument() {
        on("param", [this](Words words) {
            const int parameter = index(words);
            instrument.setParameter(parameter, value(words));
            instrument.calls();
            idle();
        });
        on("display", [this](Words words) {  // width, height and scale
            const int width = index(words);
            const int height = index(words);
            display.emplace(platform::Display{width, height, script::number(words)});
        });
        on("hold", [this](Words words) {
            instrument.keys.flip(static_cast<unsigned>(index(words)));
            clock.run(frame(), 100);
        });
        on("knobmode", [this](Words words) {
            edit.setKnobMode(script::word(words) == "linear" ? kLinearMode : kCircularMode);
        });
        on("held", [this](Words words) {
            instrument.held = index(words);
            instrument.key = index(words);
            clock.run(frame(), 100);
        });
        on("taps", [this](Words words) {
            for (float& tap : instrument.taps)
                tap = std::strtof(script::word(words).c_str(), nullptr);
            clock.run(frame(), 100);
        });
        on("level", [this](Words words) {
            const float left = value(words);
            instrument.peaks = {left, value(words)};
            idle();
        });
        on("program", [this](Words words) { instrument.current = index(words); });
        on("named", [this](Words words) {
            const int program = index(words);
            instrument.names[static_cast<unsigned>(program)] = script::word(words);
        });
        tells("current", [this](Words) { return std::to_string(instrument.current); });
        tells("name",
              [this](Words words) { return '"' + instrument.programName(index(words)) + '"'; });
        on("bind", [](Words words) {
            const int parameter = index(words);
            state::controllerMap().bind(parameter, index(words));
        });
        tells("bound", [](Words words) {
            return std::to_string(state::controllerMap().controller(index(words)));
        });
        tells("learning", [this](Words) { return std::to_string(instrument.slot.take()); });
    }

    void addViews() {
        on("line", [this](Words words) { chooseLine(index(words)); });
        // Those of the skin.
        tells("views", [this](Words) {
            return std::to_string(frame().getNbViews() - (edit.showsSkin() ? kViewsAbove : 0));
        });
        tells("checks", [this](Words words) {
            const auto& menu = dynamic_cast<COptionMenu&>(viewOf(words));
            std::string line;
            for (int i = 0; i < menu.getNbEntries(); ++i)
                if (menu.getEntry(i)->isChecked()) line += menu.getEntry(i)->getTitle().getString();
            return line;
        });
        const auto shownTip = [this] {
            const editor::CToolTip* tip = nullptr;
            frame().forEachChild([&tip](CView* child) {
                const auto* const found = dynamic_cast<const editor::CToolTip*>(child);
                if (found && found->isVisible()) tip = found;
            });
            return tip;
        };
        tells("tip", [shownTip](Words) {
            std::string text;
            if (!shownTip()) return std::string("none");
            for (const std::string& line : shownTip()->lines())
                text += (text.empty() ? "" : "|") + line;
            return text;
        });
        tells("tipat", [shownTip](Words) { return described(*shownTip()); });
        tells("view", [this](Words words) { return described(viewOf(words)); });
        tells("value", [this](Words words) {
            return text(dynamic_cast<CControl&>(viewOf(words)).getValue());
        });
        tells("text", [this](Words words) {
            return '"' + dynamic_cast<editor::CDisplay&>(viewOf(words)).text() + '"';
        });
        tells("labels", [this](Words) {
            std::string lines;
            frame().forEachChild([&lines](CView* child) {
                const std::string line = dynamic_cast<CTextLabel&>(*child).getText().getString();
                const bool variable = line.rfind("for example ", 0) == 0;
                lines += (variable ? "for example" : line) + '\n';
            });
            return lines;
        });
        tells("entries", [this](Words words) {
            const auto& menu = dynamic_cast<COptionMenu&>(viewOf(words));
            std::string line;
            for (int i = 0; i < menu.getNbEntries(); ++i)
                line += (i ? "," : "") + menu.getEntry(i)->getTitle().getString();
            return line;
        });
        tells("paint", [this](Words words) { return painted(viewOf(words)); });
    }

    static std::string described(const CView& view) {
        const CRect& area = view.getViewSize();
        std::string line = typeName(view) + ' ' + text(area.left) + ',' + text(area.top) + ',' +
                           text(area.right) + ',' + text(area.bottom);
        if (const auto* const control = dynamic_cast<const CControl*>(&view))
            line += " tag " + std::to_string(control->getTag()) + " value " +
                    text(control->getValue()) + " default " + text(control->getDefaultValue());
        return line;
    }
    std::string painted(CView& view) {
        auto& display = dynamic_cast<CParamDisplay&>(view);
        std::string line = "style " + std::to_string(display.getStyle()) + " font " +
                           text(display.getFont()->getSize()) + " face " +
                           std::to_string(display.getFont()->getStyle()) + " align " +
                           std::to_string(display.getHoriAlign());
        for (const CColor& color : {display.getFontColor(), display.getBackColor(),
                                    display.getFrameColor(), display.getShadowColor()})
            line += ' ' + hex(color);
        return line +
               (display.getBackground() == frame().getBackground() ? " over the ground" : "");
    }

    std::string skin;
    script::Player player{[this] { return edit.getFrame(); }, [this] { return instrument.calls(); },
                          clock};
};

TEST_P(EditorScripts, Hold) {
    player.play(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, EditorScripts,
                         testing::ValuesIn(script::casesOf(QUARZEL_EDITOR_SCRIPTS "editor.txt")),
                         script::nameOf);
INSTANTIATE_TEST_SUITE_P(Face, EditorScripts,
                         testing::ValuesIn(script::casesOf(QUARZEL_EDITOR_SCRIPTS "face.txt")),
                         script::nameOf);

}  // namespace
