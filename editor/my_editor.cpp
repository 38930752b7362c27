// The elements, menus and preset switches of this instrument.
#include "editor/my_editor.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "editor/views/envelope_view.h"
#include "editor/views/keyboard_view.h"
#include "editor/views/note_display.h"
#include "editor/views/presets_display.h"
#include "editor/skin_shapes.h"
#include "editor/skin/skin_text.h"
#include "editor/views/tap_view.h"
#include "editor/views/tone_view.h"
#include "state/parameters.h"

namespace editor {

using namespace VSTGUI;

namespace {

// One row per value sent: switch, position, parameter, value. The switches and their positions:
//   0  upper sections  strings, winds, all
//   1  bass sections   off, on
//   2  ensemble        off, on
//   3  effects         none, reverb, phaser, both
constexpr SwitchPreset kSwitchPresets[] = {
    {0, 0, state::kViola2, 1.0f}, {0, 0, state::kViolin2, 1.0f},
    {0, 0, state::kBrass2, 0.0f}, {0, 0, state::kHorn2, 0.0f},
    {0, 1, state::kViola2, 0.0f}, {0, 1, state::kViolin2, 0.0f},
    {0, 1, state::kBrass2, 1.0f}, {0, 1, state::kHorn2, 1.0f},
    {0, 2, state::kViola2, 1.0f}, {0, 2, state::kViolin2, 1.0f},
    {0, 2, state::kBrass2, 1.0f}, {0, 2, state::kHorn2, 1.0f},
    {1, 0, state::kCello2, 0.0f}, {1, 0, state::kContrabass2, 0.0f},
    {1, 1, state::kCello2, 1.0f}, {1, 1, state::kContrabass2, 1.0f},
    {2, 0, state::kChorus, 0.0f}, {2, 1, state::kChorus, 1.0f},
    {3, 0, state::kReverb, 0.0f}, {3, 0, state::kPhaser, 0.0f},
    {3, 1, state::kReverb, 1.0f}, {3, 1, state::kPhaser, 0.0f},
    {3, 2, state::kReverb, 0.0f}, {3, 2, state::kPhaser, 1.0f},
    {3, 3, state::kReverb, 1.0f}, {3, 3, state::kPhaser, 1.0f},
};

bool isSwitched(int parameter) {
    return (parameter >= state::kViola2 && parameter <= state::kCello2) ||
           parameter == state::kConfigs || parameter == state::kChorus ||
           parameter == state::kPhaser || parameter == state::kReverb;
}

template <class View>
void setColors(View& view, const SkinValues& values) {
    if (const auto rgb = values.colour("fontcolor")) view.setFontColor(colorOf(*rgb));
    if (const auto rgb = values.colour("backcolor")) view.setBackColor(colorOf(*rgb));
}

MeterSide sideOf(const SkinValues& values) {
    const int side = integerOf(values, "side");
    return side == 1 ? MeterSide::kLeft : side == 2 ? MeterSide::kRight : MeterSide::kBoth;
}

}  // namespace

myEditor::myEditor(EditorHost& host) : xmlGuiEditor(host) {
    switchPresets_.assign(std::begin(kSwitchPresets), std::end(kSwitchPresets));
}

bool myEditor::open(void* parentWindow) {
    host_.takeOutputPeaks();  // from before it was open
    return xmlGuiEditor::open(parentWindow);
}

void myEditor::close() {
    xmlGuiEditor::close();
    if (isOpen()) return;
    meters_.clear();
    peakMeters_.clear();
    lamps_.clear();
}

void myEditor::idle() {
    const OutputPeaks peaks = host_.takeOutputPeaks();
    for (CVuMeter* const meter : meters_) meter->setValue(peakOf(peaks, MeterSide::kBoth));
    for (CPeakMeter* const meter : peakMeters_) meter->feed(peaks);
    for (CClipLamp* const lamp : lamps_) lamp->feed(peaks);
    xmlGuiEditor::idle();
}

bool myEditor::buildElement(const std::string& element, const SkinAttributes& attributes) {
    struct Row {
        std::string_view element;
        bool (myEditor::*add)(const SkinValues& values);
    };
    constexpr Row kRows[] = {{"NoteDisplay", &myEditor::addNoteDisplay},
                             {"PresetsDisplay", &myEditor::addPresetsDisplay},
                             {"ViewTaps", &myEditor::addDrawing<CTapView>},
                             {"ViewEnvelope", &myEditor::addDrawing<CEnvelopeView>},
                             {"ViewTone", &myEditor::addDrawing<CToneView>},
                             {"ViewKeyboard", &myEditor::addKeyboard},
                             {"cliplamp", &myEditor::addClipLamp}};
    if (equalIgnoringCase(element, "vumeter") && attributes.find("from")) {
        const auto values = readValues(element, attributes);
        return values && addPeakMeter(*values);
    }
    for (const Row& row : kRows) {
        if (!equalIgnoringCase(element, row.element)) continue;
        const auto values = readValues(element, attributes);
        return values && (this->*row.add)(*values);
    }
    return xmlGuiEditor::buildElement(element, attributes);
}

bool myEditor::addNoteDisplay(const SkinValues& values) {
    auto* const display = new CNoteDisplay(rectangleOf(values), host_);
    setColors(*display, values);
    addView(display);
    return true;
}

bool myEditor::addPresetsDisplay(const SkinValues& values) {
    auto* const display =
        new CPresetsDisplay(rectangleOf(values), host_, [this] { return openBrowser(); });
    setColors(*display, values);
    browserColors_ = display->browserColors();
    if (const auto rgb = values.colour("accentcolor")) browserColors_.accent = colorOf(*rgb);
    CTextEdit* const nameField = display->nameField();
    addView(display);
    nameField->remember();
    addView(nameField);
    return true;
}

template <class Drawing>
bool myEditor::addDrawing(const SkinValues& values) {
    auto* const view = new Drawing(rectangleOf(values), host_);
    setColors(*view, values);
    addView(view);
    return true;
}

bool myEditor::addKeyboard(const SkinValues& values) {
    constexpr double kFirst = 36, kLast = 96;  // five octaves
    auto* const view = new CKeyboardView(rectangleOf(values), host_,
                                         truncateToInt32(values.number("first").value_or(kFirst)),
                                         truncateToInt32(values.number("last").value_or(kLast)));
    setColors(*view, values);
    if (const auto rgb = values.colour("keycolor")) view->setKeyColor(colorOf(*rgb));
    if (const auto rgb = values.colour("sharpcolor")) view->setSharpColor(colorOf(*rgb));
    if (const auto rgb = values.colour("framecolor")) view->setFrameColor(colorOf(*rgb));
    addView(view);
    return true;
}

// With `from`, a meter shows decibels.
bool myEditor::addPeakMeter(const SkinValues& values) {
    CBitmap* const lit = pictureOf(values, "bitmap_on");
    const double from = values.number("from").value_or(-60);
    const double to = std::max(values.number("to").value_or(0), from + 1);
    const int lamps = std::max(integerOf(values, "leds"), 1);
    const bool horizontal = (integerOf(values, "style") & CVuMeter::kHorizontal) != 0;
    auto* const meter = new CPeakMeter(CRect(cornerOf(values), lit->getSize()), host_, lit,
                                       pictureOf(values, "bitmap_off"),
                                       {from, to, lamps, horizontal}, sideOf(values));
    meter->setClicked([this] { resetLamps(); });
    peakMeters_.push_back(meter);
    addView(meter);
    return true;
}

bool myEditor::addClipLamp(const SkinValues& values) {
    CBitmap* const states = pictureOf(values, "bitmap_handle");
    const CPoint size(states->getWidth(), std::trunc(states->getHeight() / 2));
    auto* const lamp = new CClipLamp(CRect(cornerOf(values), size), states, sideOf(values));
    lamp->setClicked([this] { resetLamps(); });
    lamps_.push_back(lamp);
    addView(lamp);
    return true;
}

void myEditor::resetLamps() {
    for (CClipLamp* const lamp : lamps_) lamp->reset();
}

std::vector<std::string> myEditor::describe(CView& view) const {
    if (dynamic_cast<CPresetsDisplay*>(&view)) {
        return {"Sound",
                "Click: all sounds (Ctrl+F). Double click: rename. Arrows and wheel: next."};
    }
    if (dynamic_cast<CNoteDisplay*>(&view)) return {"Note", "The key that is held."};
    if (dynamic_cast<CTapView*>(&view)) return {"Taps", "The delays of the ensemble as they move."};
    if (dynamic_cast<CKeyboardView*>(&view)) {
        return {"Keyboard", "Click and drag to play, lower for louder.",
                "The basses play up to the mark."};
    }
    if (dynamic_cast<CEnvelopeView*>(&view)) {
        return {"Envelope", "The level of a note, from the key's press to the end of its release."};
    }
    if (dynamic_cast<CToneView*>(&view)) {
        return {"Tone", "What high-pass and brightness do, from 20 Hz to 20 kHz."};
    }
    if (dynamic_cast<CPeakMeter*>(&view) || dynamic_cast<CVuMeter*>(&view)) {
        return {"Level", "The peaks of the output."};
    }
    if (dynamic_cast<CClipLamp*>(&view)) {
        return {"Clipping", "Lights when the output reaches full scale. Click to reset."};
    }
    return xmlGuiEditor::describe(view);
}

void myEditor::fillMenu(COptionMenu& menu, int tag) {
    if (isSwitched(tag)) {
        menu.addEntry("Off");
        menu.addEntry("On");
    } else if (tag == state::kWaveform) {
        for (const char* const name : {"Strings", "Bowed", "Hollow"}) menu.addEntry(name);
    }
}

void myEditor::meterMade(CVuMeter* meter, int) {
    meters_.push_back(meter);
}

}  // namespace editor
