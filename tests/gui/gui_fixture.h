// Shared by the tests of the toolkit layer: an open frame, a recording listener and pictures.
#pragma once

#include "gui/headless.h"
#include "vstgui/lib/vstguiinit.h"
#include "vstgui/vstgui.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace VSTGUI {

inline std::string shortNumber(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", value);
    return text;
}

// Records every call as one word. Values are rounded to four digits.
class Recorder : public IControlListener, public VSTGUIEditorInterface {
  public:
    void valueChanged(CControl* control) override {
        log.push_back(shortNumber(control->getValue()));
    }
    void controlBeginEdit(CControl*) override { log.push_back("begin"); }
    void controlEndEdit(CControl*) override { log.push_back("end"); }
    int32_t controlModifierClicked(CControl*, CButtonState) override { return modifierAnswer; }
    void beginEdit(int32_t tag) override { log.push_back("editor begins " + std::to_string(tag)); }
    void endEdit(int32_t tag) override { log.push_back("editor ends " + std::to_string(tag)); }
    int32_t getKnobMode() const override { return knobMode; }

    // The calls since the last time, in one line, without those to the editor.
    std::string reports() {
        std::string line;
        for (const std::string& word : log)
            if (word.compare(0, 6, "editor") != 0) line += (line.empty() ? "" : " ") + word;
        log.clear();
        return line;
    }

    std::vector<std::string> log;
    int32_t modifierAnswer = 0;
    int32_t knobMode = kLinearMode;
};

// A picture in which every pixel gives its position: red is x, green is y.
inline SharedPointer<CBitmap> gradient(int width, int height, uint8_t blue = 0) {
    PixelBuffer pixels(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.row(y)[x] =
                premultiplied(CColor(static_cast<uint8_t>(x), static_cast<uint8_t>(y), blue));
    return makeOwned<CBitmap>(makeOwned<IPlatformBitmap>(std::move(pixels)));
}

inline SharedPointer<CBitmap> plain(int width, int height, CColor color) {
    PixelBuffer pixels(width, height);
    fillArea(pixels, pixels.bounds(), premultiplied(color));
    return makeOwned<CBitmap>(makeOwned<IPlatformBitmap>(std::move(pixels)));
}

// Provides an open frame of 400 by 300 pixels without a window.
class GuiTest : public ::testing::Test {
  protected:
    GuiTest() {
        init(nullptr);
        frame = new CFrame(CRect(0, 0, 400, 300), &recorder);
        headless::open(*frame);
        frame->idle();
    }
    ~GuiTest() override {
        if (frame) frame->close();
        exit();
    }

    // Adds a control, makes it report to the recorder and draws it once.
    template <class Control>
    Control* add(Control* control) {
        frame->addView(control);
        control->setListener(&recorder);
        frame->idle();
        return control;
    }

    CColor pixel(int x, int y) {
        const uint32_t word = headless::picture(*frame).at(x, y);
        return CColor(word >> 16 & 255, word >> 8 & 255, word & 255, word >> 24);
    }
    std::string reports() { return recorder.reports(); }

    headless::HeldClock clock;
    Recorder recorder;
    CFrame* frame = nullptr;
};

inline void PrintTo(const CColor& color, std::ostream* out) {
    *out << "(" << +color.red << "," << +color.green << "," << +color.blue << "," << +color.alpha
         << ")";
}

inline void PrintTo(const CRect& rect, std::ostream* out) {
    *out << "[" << rect.left << " " << rect.top << " " << rect.right << " " << rect.bottom << "]";
}

inline void PrintTo(const CPoint& point, std::ostream* out) {
    *out << "(" << point.x << "," << point.y << ")";
}

}  // namespace VSTGUI
