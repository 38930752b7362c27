// Draws rectangles, lines, ellipses, text and pictures into a pixel buffer.
#pragma once

#include "gui/base/color.h"
#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/base/utf8_string.h"
#include "gui/graphics/font.h"
#include "gui/graphics/pixel_buffer.h"

#include <functional>
#include <vector>

namespace VSTGUI {

class CBitmap;

enum CDrawStyle : uint32_t { kDrawStroked = 0, kDrawFilled, kDrawFilledAndStroked };

enum CDrawModeFlags : uint32_t {
    kAliasing = 0,
    kAntiAliasing = 1,
    kNonIntegralMode = 0xF0000000,  // a bit beside the other two: coordinates are not pixels
};

class CDrawMode {
  public:
    CDrawMode(uint32_t mode = kAliasing) : mode_(mode) {}
    bool antialiasing() const { return (mode_ & kAntiAliasing) != 0; }
    bool integralMode() const { return (mode_ & kNonIntegralMode) == 0; }
    uint32_t operator()() const { return mode_; }

  private:
    uint32_t mode_;
};

// Ellipses that are drawn one after the other.
class CGraphicsPath : public AtomicReferenceCounted {
  public:
    void addEllipse(const CRect& rect) { ellipses_.push_back(rect); }
    const std::vector<CRect>& ellipses() const { return ellipses_; }

  private:
    std::vector<CRect> ellipses_;
};

enum CHoriTxtAlign { kLeftText = 0, kCenterText, kRightText };

// Coordinates are those of the parent of the view that is drawn; `zoom` pixels of the buffer go
// into one of theirs. Every stroke lies inside the edges.
class CDrawContext {
  public:
    // Draws within `area` of the buffer, which must outlive the context.
    CDrawContext(PixelBuffer& buffer, const IntRect& area, double zoom = 1);

    void setFillColor(const CColor& color) { state_.fill = color; }
    void setFrameColor(const CColor& color) { state_.frame = color; }
    void setFontColor(const CColor& color) { state_.text = color; }
    void setFont(const CFontRef font, CCoord size = 0, int32_t style = -1);
    void setLineWidth(CCoord width) { state_.lineWidth = width; }
    void setDrawMode(CDrawMode mode) { state_.mode = mode; }
    void setGlobalAlpha(float alpha);  // 0..1

    CColor getFillColor() const { return state_.fill; }
    CColor getFrameColor() const { return state_.frame; }
    CColor getFontColor() const { return state_.text; }
    CFontRef getFont() const { return state_.font; }
    CCoord getLineWidth() const { return state_.lineWidth; }
    CDrawMode getDrawMode() const { return state_.mode; }

    // A clip never reaches beyond the view that is drawn.
    void setClipRect(const CRect& clip);
    CRect& getClipRect(CRect& clip) const;
    void resetClipRect() { state_.clip = state_.limit; }
    void saveGlobalState() { saved_.push_back(state_); }
    void restoreGlobalState();

    void drawRect(const CRect& rect, CDrawStyle style = kDrawStroked);
    void drawEllipse(const CRect& rect, CDrawStyle style = kDrawStroked);
    enum PathDrawMode { kPathFilled };
    CGraphicsPath* createGraphicsPath() { return new CGraphicsPath; }  // the caller's
    void drawGraphicsPath(CGraphicsPath* path, PathDrawMode mode = kPathFilled);
    void drawLine(const CPoint& from, const CPoint& to);
    void drawBitmap(CBitmap* picture, const CRect& dest, const CPoint& offset = CPoint(),
                    float alpha = 1.f);

    // The baseline lies so that capitals stand in the middle of the rectangle's height.
    void drawString(UTF8StringPtr text, const CRect& rect, CHoriTxtAlign align = kCenterText,
                    bool antialias = true);
    // `point` is the left end of the baseline.
    void drawString(UTF8StringPtr text, const CPoint& point, bool antialias = true);
    CCoord getStringWidth(UTF8StringPtr text) const;

    // What follows is this layer's own; the toolkit has other means for it.
    void drawRoundRect(const CRect& rect, CCoord radius, CDrawStyle style);
    // Runs `draw` in a view's surroundings: from the initial state, limited to the view and faded
    // by its alpha. Afterwards all is as before, whatever was saved and restored. Nothing runs if
    // nothing of the view can be seen.
    void drawInside(const CRect& viewSize, float alpha, const std::function<void()>& draw);
    // Runs `draw` with coordinates that count from this point of the present ones.
    void drawFrom(const CPoint& origin, const std::function<void()>& draw);

  private:
    struct State {
        CColor fill = kBlackCColor;
        CColor frame = kWhiteCColor;
        CColor text = kWhiteCColor;
        SharedPointer<CFontDesc> font = kSystemFont;
        CCoord lineWidth = 1;
        CDrawMode mode;
        uint32_t alpha = 255;      // of setGlobalAlpha
        uint32_t viewAlpha = 255;  // of the views around
        CPoint origin;
        IntRect clip;  // this and the limit in pixels of the buffer
        IntRect limit;
    };

    // In pixels of the buffer.
    CPoint placed(const CPoint& point) const;
    CRect placed(const CRect& rect) const;
    CCoord strokeWidth() const { return state_.lineWidth * zoom_; }
    int ringWidth() const;
    uint32_t fadedByState(CColor color) const;
    template <typename Shape>
    void drawShape(const IntRect& bounds, const Shape& outer, const Shape& inner, CDrawStyle style);

    PixelBuffer& buffer_;
    double zoom_;
    State state_;
    std::vector<State> saved_;
    size_t savedAround_ = 0;  // how many of them belong to the views around
};

}  // namespace VSTGUI
