// Plays the scripts of the controls: one control of each kind, what gestures report and show.
#include "tests/gui/gui_fixture.h"
#include "tests/gui/player.h"

#include <cmath>

namespace VSTGUI {
namespace {

using script::number;
using script::rectangle;
using script::word;

// The flags of "one|two", from names and bits.
int32_t flags(std::istream& words, const std::map<std::string, int32_t>& names) {
    std::istringstream parts(word(words));
    int32_t bits = 0;
    for (std::string name; std::getline(parts, name, '|');) bits |= names.at(name);
    return bits;
}

// A picture of "WxH", or null.
SharedPointer<CBitmap> picture(std::istream& words, CColor color) {
    int width = 0;
    int height = 0;
    const bool given = std::sscanf(word(words).c_str(), "%dx%d", &width, &height) == 2;
    return given ? plain(width, height, color) : nullptr;
}

// Frames, one above the other. The red of a frame counts from 1.
SharedPointer<CBitmap> strip(const CRect& frame, int frames) {
    const int width = static_cast<int>(frame.getWidth());
    const int height = static_cast<int>(frame.getHeight());
    PixelBuffer pixels(width, height * frames);
    for (int i = 0; i < frames; ++i)
        fillArea(pixels, {0, i * height, width, (i + 1) * height},
                 premultiplied(CColor(static_cast<uint8_t>(i + 1), 0, 0)));
    return makeOwned<CBitmap>(makeOwned<IPlatformBitmap>(std::move(pixels)));
}

class Plain : public CControl {
  public:
    using CControl::CControl;
    void draw(CDrawContext*) override { setDirty(false); }
};

// Reports its text, too, and whether Return ended the entry.
class Field : public CTextEdit {
  public:
    Field(const CRect& size, Recorder& recorder, const std::string& text)
        : CTextEdit(size, &recorder, 4, text.c_str()), recorder_(recorder) {}
    void valueChanged() override {
        recorder_.log.push_back('"' + getText().getString() + '"' +
                                (bWasReturnPressed ? " by Return" : ""));
    }

  private:
    Recorder& recorder_;
};

// Says what it would draw, cut to its length if that is long.
class Display : public CParamDisplay {
  public:
    using CParamDisplay::CParamDisplay;
    void drawPlatformText(CDrawContext* context, const UTF8String& text) override {
        shown = text.getString();
        CParamDisplay::drawPlatformText(context, text);
    }
    std::string shown;
};

class Controls : public GuiTest, public testing::WithParamInterface<script::Case> {
  protected:
    Controls() {
        addKinds();
        addTexts();
        addSettings();
        addQuestions();
    }
    ~Controls() override {
        if (frame) std::exchange(frame, nullptr)->close();
    }

    using Words = std::istream&;
    void kind(const char* name, std::function<CControl*(Words, const CRect&)> make) {
        player.commands[name] = [this, make](Words words) {
            const CRect area = rectangle(words);
            it = add(make(words, area));
        };
    }
    template <class Control>
    void setting(const char* name, std::function<void(Control&, Words)> change) {
        player.commands[name] = [this, change](Words words) {
            change(dynamic_cast<Control&>(*it), words);
            frame->idle();
        };
    }
    void question(const char* name, std::function<std::string()> answer) {
        player.commands[name] = [this, answer](Words) { player.say(answer()); };
    }
    COptionMenu& menu() { return dynamic_cast<COptionMenu&>(*it); }

    void addKinds() {
        using S = CSlider;
        kind("plain", [this](Words, const CRect& area) { return new Plain(area, &recorder, 7); });
        kind("knob", [this](Words words, const CRect& area) {
            return new CKnob(area, &recorder, 1, gradient(200, 200), picture(words, kWhiteCColor),
                             area.getTopLeft());
        });
        kind("animknob", [this](Words words, const CRect& area) {
            return new CAnimKnob(area, &recorder, 1, 99, area.getHeight(),
                                 strip(area, static_cast<int>(number(words))));
        });
        kind("slider", [this](Words words, const CRect& area) {
            const int first = static_cast<int>(number(words));
            const int last = static_cast<int>(number(words));
            const auto handle = picture(words, kRedCColor);
            const int32_t style = flags(words, {{"-", 0},
                                                {"vertical", S::kVertical},
                                                {"horizontal", S::kHorizontal},
                                                {"left", S::kLeft},
                                                {"right", S::kRight},
                                                {"top", S::kTop},
                                                {"bottom", S::kBottom}});
            return new S(area, &recorder, 1, first, last, handle, gradient(200, 200, 7),
                         area.getTopLeft(), style);
        });
        kind("onoff", [this](Words, const CRect& area) {
            return new COnOffButton(area, &recorder, 1, strip(area, 2));
        });
        kind("kick", [this](Words, const CRect& area) {
            return new CKickButton(area, &recorder, 1, strip(area, 2));
        });
        kind("vswitch", [this](Words words, const CRect& area) {
            const int n = static_cast<int>(number(words));
            return new CVerticalSwitch(area, &recorder, 1, n, area.getHeight(), n, strip(area, n));
        });
        kind("hswitch", [this](Words words, const CRect& area) {
            const int n = static_cast<int>(number(words));
            return new CHorizontalSwitch(area, &recorder, 1, n, area.getHeight(), n,
                                         strip(area, n));
        });
        kind("meter", [](Words words, const CRect& area) {
            const int width = static_cast<int>(area.getWidth());
            const int height = static_cast<int>(area.getHeight());
            const int leds = static_cast<int>(number(words));
            return new CVuMeter(area, plain(width, height, kGreenCColor),
                                plain(width, height, kRedCColor), leds,
                                width > height ? CVuMeter::kHorizontal : CVuMeter::kVertical);
        });
        kind("splash", [this](Words, const CRect& area) {
            return new CSplashScreen(area, &recorder, 1, gradient(200, 200),
                                     CRect(100, 100, 150, 150), CPoint(30, 40));
        });
    }

    void addTexts() {
        using D = CParamDisplay;
        kind("menu", [this](Words words, const CRect& area) {
            auto* const made = new COptionMenu(area, &recorder, 3, plain(80, 20, kBlueCColor),
                                               plain(80, 20, kGreenCColor));
            for (std::string title = word(words); !title.empty(); title = word(words))
                made->addEntry(title.c_str());
            return made;
        });
        kind("display", [](Words, const CRect& area) { return new Display(area); });
        kind("label", [](Words words, const CRect& area) {
            return new CTextLabel(area, word(words).c_str());
        });
        kind("field", [this](Words words, const CRect& area) {
            return new Field(area, recorder, word(words));
        });
        setting<D>("style", [](D& display, Words words) {
            display.setStyle(flags(words, {{"framed", 0},
                                           {"noframe", D::kNoFrame},
                                           {"3Din", D::k3DIn},
                                           {"3Dout", D::k3DOut},
                                           {"round", D::kRoundRectStyle},
                                           {"nodraw", D::kNoDrawStyle},
                                           {"notext", D::kNoTextStyle},
                                           {"shadow", D::kShadowText},
                                           {"over", COptionMenu::kPopupStyle},
                                           {"check", COptionMenu::kCheckStyle},
                                           {"checks", COptionMenu::kMultipleCheckStyle}}));
        });
        setting<D>("colors", [](D& display, Words) {
            display.setBackColor(kBlueCColor);
            display.setFrameColor(kGreenCColor);
            display.setShadowColor(kRedCColor);
        });
        setting<D>("align", [](D& display, Words words) {
            display.setHoriAlign(static_cast<CHoriTxtAlign>(flags(
                words, {{"left", kLeftText}, {"center", kCenterText}, {"right", kRightText}})));
        });
        setting<D>("inset",
                   [](D& display, Words words) { display.setTextInset(CPoint(number(words), 0)); });
        setting<D>("background", [](D& display, Words words) {
            display.setBackground(word(words) == "-" ? nullptr : gradient(200, 200).get());
            display.copyBackOffset();
        });
        setting<D>("precision", [](D& display, Words words) {
            display.setPrecision(static_cast<uint8_t>(number(words)));
        });
        setting<D>("writer", [](D& display, Words) {
            display.setValueToStringFunction([](float value, char text[256], CParamDisplay*) {
                std::fill(text, text + 256, 'x');
                return value > 1;
            });
        });
        setting<CTextLabel>("text", [](CTextLabel& label, Words words) {
            label.setDirty(false);
            label.setText(word(words).c_str());
        });
        setting<CTextEdit>("placeholder", [](CTextEdit& edit, Words words) {
            edit.setPlaceholderString(word(words).c_str());
        });
        setting<CTextEdit>("immediate",
                           [](CTextEdit& edit, Words) { edit.setImmediateTextChange(true); });
        setting<COptionMenu>("entries", [](COptionMenu& menu, Words words) {
            for (int i = 0, last = static_cast<int>(number(words)); i < last; ++i)
                menu.addEntry(("entry " + std::to_string(i)).c_str());
        });
        setting<COptionMenu>("disabled", [](COptionMenu& menu, Words words) {
            menu.addEntry(word(words).c_str(), -1, CMenuItem::kDisabled);
        });
    }

    void addSettings() {
        setting<CControl>("set", [](CControl& c, Words words) {
            c.setValue(static_cast<float>(std::strtod(word(words).c_str(), nullptr)));
        });
        setting<CControl>("just-below", [](CControl& c, Words words) {
            c.setValue(std::nextafter(static_cast<float>(number(words)), 0.f));
        });
        setting<CControl>("share", [](CControl& c, Words words) {
            c.setValueNormalized(static_cast<float>(number(words)));
        });
        setting<CControl>("min",
                          [](CControl& c, Words w) { c.setMin(static_cast<float>(number(w))); });
        setting<CControl>("max",
                          [](CControl& c, Words w) { c.setMax(static_cast<float>(number(w))); });
        setting<CControl>("area",
                          [](CControl& c, Words words) { c.setViewSize(rectangle(words)); });
        setting<CControl>("transparent", [](CControl& c, Words) { c.setTransparency(true); });
        setting<CControl>("begin", [](CControl& c, Words) { c.beginEdit(); });
        setting<CControl>("end", [](CControl& c, Words) { c.endEdit(); });
        setting<CControl>("nopicture", [](CControl& c, Words) { c.setBackground(nullptr); });
        setting<CAnimKnob>("inverse", [](CAnimKnob& knob, Words) { knob.setInverseBitmap(true); });
        setting<CKnob>("angles", [](CKnob& knob, Words words) {
            constexpr float kDegree = 3.14159265f / 180;
            knob.setStartAngle(static_cast<float>(number(words)) * kDegree);
            knob.setRangeAngle(static_cast<float>(number(words)) * kDegree);
        });
        setting<CKnob>("lines", [](CKnob& knob, Words) {
            knob.setColorHandle(kGreenCColor);
            knob.setColorShadowHandle(kRedCColor);
            knob.setHandleLineWidth(3);
        });
        setting<CVuMeter>("falls", [](CVuMeter& meter, Words words) {
            meter.setDecreaseStepValue(static_cast<float>(number(words)));
        });
        setting<CSlider>("mode", [](CSlider& slider, Words words) {
            const std::map<std::string, CSliderMode> modes = {
                {"touch", CSliderMode::Touch},
                {"relative", CSliderMode::RelativeTouch},
                {"ramp", CSliderMode::Ramp}};
            slider.setSliderMode(modes.at(word(words)));
        });
        player.commands["knobmode"] = [this](Words words) {
            recorder.knobMode = flags(words, {{"linear", kLinearMode},
                                              {"circular", kCircularMode},
                                              {"relative", kRelativCircularMode}});
        };
        player.commands["swallow"] = [this](Words) { recorder.modifierAnswer = 1; };
        player.commands["grip"] = [this](Words) { frame->setFocusView(it); };
        player.commands["loose"] = [this](Words) { frame->setFocusView(nullptr); };
        player.commands["pointerlost"] = [this](Words) { frame->input().pointerLost(); };
        player.commands["keyboardlost"] = [this](Words) { frame->input().keyboardLost(); };
        player.commands["remove"] = [this](Words) {
            frame->removeView(std::exchange(it, nullptr));
        };
        player.commands["close"] = [this](Words) { std::exchange(frame, nullptr)->close(); };
        player.commands["unsplash"] = [this](Words) {
            dynamic_cast<CSplashScreen&>(*it).unSplash();
        };
    }

    void addQuestions() {
        question("value", [this] { return shortNumber(it->getValue()); });
        question("normalized", [this] { return shortNumber(it->getValueNormalized()); });
        question("default", [this] { return shortNumber(it->getDefaultValue()); });
        question("drawn", [this] { return shortNumber(it->getOldValue()); });
        question("highest", [this] { return shortNumber(it->getMax()); });
        question("dirty", [this] { return it->isDirty() ? "yes" : "no"; });
        question("shown", [this] {
            const std::string& text = dynamic_cast<Display&>(*it).shown;
            return text.size() < 20 ? text : std::to_string(text.size()) + " characters";
        });
        question("written",
                 [this] { return dynamic_cast<CTextLabel&>(*it).getText().getString(); });
        question("current", [this] { return std::to_string(menu().getCurrentIndex()); });
        question("result", [this] { return std::to_string(menu().getLastResult()); });
        question("checked", [this] {
            std::string line;
            for (int i = 0; i < menu().getNbEntries(); ++i)
                line += menu().getEntry(i)->isChecked() ? 'x' : '-';
            return line;
        });
        // How many pixels of a line down the middle are green.
        question("lit", [this] {
            const PixelBuffer& seen = headless::picture(*frame);
            int rows = 0;
            for (int y = 0; y < 100; ++y) rows += seen.at(5, y) == 0xFF00FF00;
            return std::to_string(rows);
        });
        // The columns from the first to the last that is not black.
        question("inked", [this] {
            const PixelBuffer& seen = headless::picture(*frame);
            CRect box(1000, 1000, 0, 0);
            for (int y = 0; y < seen.height(); ++y)
                for (int x = 0; x < seen.width(); ++x)
                    if (seen.at(x, y) != 0xFF000000) box.unite(CRect(x, y, x + 1, y + 1));
            return shortNumber(box.left) + "-" + shortNumber(box.right);
        });
    }

    script::Player player{[this] { return frame; }, [this] { return reports(); }, clock};
    CControl* it = nullptr;  // the last one made
};

TEST_P(Controls, KeepTheirScript) {
    player.play(GetParam());
}

std::vector<script::Case> cases() {
    return script::casesOf(QUARZEL_GUI_SCRIPTS "controls.txt");
}

INSTANTIATE_TEST_SUITE_P(All, Controls, testing::ValuesIn(cases()), script::nameOf);

}  // namespace
}  // namespace VSTGUI
