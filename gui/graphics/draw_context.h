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
    kNonIntegralMode = 0xF0000000,  // an extra bit: coordinates are not whole pixels
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

// A list of ellipses and of lines through points, drawn one after the other. Lines are only
// stroked, with round joints and ends.
class CGraphicsPath : public AtomicReferenceCounted {
  public:
    void addEllipse(const CRect& rect) { ellipses_.push_back(rect); }
    void beginSubpath(const CPoint& start) { lines_.push_back({start}); }
    void addLine(const CPoint& to) {  // from the last point, if there is one
        lines_.empty() ? beginSubpath(to) : lines_.back().push_back(to);
    }
    const std::vector<CRect>& ellipses() const { return ellipses_; }
    const std::vector<std::vector<CPoint>>& lines() const { return lines_; }

  private:
    std::vector<CRect> ellipses_;
    std::vector<std::vector<CPoint>> lines_;
};

enum CHoriTxtAlign { kLeftText = 0, kCenterText, kRightText };

// Coordinates are those of the view's parent. One unit is `zoom` pixels of the buffer. Strokes lie
// inside the edges of a shape.
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

    // The clip is always limited to the view that is drawn.
    void setClipRect(const CRect& clip);
    CRect& getClipRect(CRect& clip) const;
    void resetClipRect() { state_.clip = state_.limit; }
    void saveGlobalState() { saved_.push_back(state_); }
    void restoreGlobalState();

    void drawRect(const CRect& rect, CDrawStyle style = kDrawStroked);
    void drawEllipse(const CRect& rect, CDrawStyle style = kDrawStroked);
    enum PathDrawMode { kPathFilled, kPathStroked };
    CGraphicsPath* createGraphicsPath() { return new CGraphicsPath; }  // owned by the caller
    // A stroke lies on both sides of the path.
    void drawGraphicsPath(CGraphicsPath* path, PathDrawMode mode = kPathFilled);
    void drawLine(const CPoint& from, const CPoint& to);
    void drawBitmap(CBitmap* picture, const CRect& dest, const CPoint& offset = CPoint(),
                    float alpha = 1.f);

    // Centres capital letters in the rectangle's height.
    void drawString(UTF8StringPtr text, const CRect& rect, CHoriTxtAlign align = kCenterText,
                    bool antialias = true);
    // `point` is the left end of the baseline.
    void drawString(UTF8StringPtr text, const CPoint& point, bool antialias = true);
    CCoord getStringWidth(UTF8StringPtr text) const;

    // The rest is specific to this layer. The toolkit has other means for it.
    void drawRoundRect(const CRect& rect, CCoord radius, CDrawStyle style);
    // Runs `draw` for one view: with the initial state, clipped to the view and faded by its alpha.
    // Then restores the state, whatever `draw` saved or restored. Does nothing if no part of the
    // view is visible.
    void drawInside(const CRect& viewSize, float alpha, const std::function<void()>& draw);
    // Runs `draw` with its coordinates measured from `origin`.
    void drawFrom(const CPoint& origin, const std::function<void()>& draw);
    // The part of the buffer that the view may draw.
    const IntRect& area() const { return state_.limit; }
    // Draws pixels of the buffer's resolution with their corner there in the buffer.
    void drawPixels(const PixelBuffer& pixels, int x, int y) {
        blendPicture(buffer_, state_.clip, pixels, x, y, 255);
    }

  private:
    struct State {
        CColor fill = kBlackCColor;
        CColor frame = kWhiteCColor;
        CColor text = kWhiteCColor;
        SharedPointer<CFontDesc> font = kSystemFont;
        CCoord lineWidth = 1;
        CDrawMode mode;
        uint32_t alpha = 255;      // set by setGlobalAlpha
        uint32_t viewAlpha = 255;  // of the enclosing views
        CPoint origin;
        IntRect clip;  // clip and limit are in buffer pixels
        IntRect limit;
    };

    // Convert to buffer pixels.
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
    size_t savedAround_ = 0;  // number of saved states that belong to enclosing views
};

}  // namespace VSTGUI
