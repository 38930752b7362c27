// Shows the peaks of the output on a scale in decibels, and a lamp that remembers clipping.
#pragma once

#include <functional>

#include "editor/editor_host.h"
#include "editor/views/seldom.h"
#include "vstgui/lib/events.h"
#include "vstgui/vstgui.h"

namespace editor {

// What a meter or lamp listens to.
enum class MeterSide { kBoth, kLeft, kRight };
float peakOf(const OutputPeaks& peaks, MeterSide side);

// Rises at once, falls steadily, and keeps its highest lamp lit for a while. Like the toolkit's
// meter, it shows whole lamps of two pictures of the same size.
class CPeakMeter : public VSTGUI::CView {
  public:
    struct Scale {
        double from;  // dB where no lamp is lit
        double to;    // dB where all are
        int lamps;
        bool horizontal;
    };

    CPeakMeter(const VSTGUI::CRect& size, const EditorHost& host, VSTGUI::CBitmap* lit,
               VSTGUI::CBitmap* dark, const Scale& scale, MeterSide side);

    void feed(const OutputPeaks& peaks);
    // A click calls this.
    void setClicked(std::function<void()> clicked) { clicked_ = std::move(clicked); }

    void draw(VSTGUI::CDrawContext* context) override;
    void onIdle() override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;

  private:
    int lampsAt(double decibels) const;
    VSTGUI::CRect lampArea(int first, int last) const;
    void invalidateLamps(int first, int last);

    const EditorHost& host_;
    VSTGUI::SharedPointer<VSTGUI::CBitmap> lit_;
    VSTGUI::SharedPointer<VSTGUI::CBitmap> dark_;
    Scale scale_;
    MeterSide side_;
    std::function<void()> clicked_;
    Seldom rest_{kTurnsAtRest};
    int turns_ = 0;      // of onIdle since the meter was last moved
    float newest_ = 0;   // highest peak since then
    double level_;       // dB
    double held_;        // dB
    int holdTicks_ = 0;  // left until the held lamp falls
    int shown_ = 0;      // lamps; never changes while drawing
    int shownHeld_ = 0;
};

// Lights when the output reaches full scale, and stays lit until a click. The picture shows the
// dark lamp above the lit one.
class CClipLamp : public VSTGUI::CView {
  public:
    CClipLamp(const VSTGUI::CRect& size, VSTGUI::CBitmap* states, MeterSide side);

    void feed(const OutputPeaks& peaks);
    void reset();
    bool isLit() const { return lit_; }
    void setClicked(std::function<void()> clicked) { clicked_ = std::move(clicked); }

    void draw(VSTGUI::CDrawContext* context) override;
    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override;
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event) override;  // Return clicks

  private:
    VSTGUI::SharedPointer<VSTGUI::CBitmap> states_;
    MeterSide side_;
    std::function<void()> clicked_;
    bool lit_ = false;
};

}  // namespace editor
