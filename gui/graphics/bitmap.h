// Pictures that views share, and the factory that loads them from a file.
#pragma once

#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/base/utf8_string.h"
#include "gui/graphics/pixel_buffer.h"

#include <vector>

namespace VSTGUI {

class CDrawContext;

// The pixels of one picture; scaleFactor of them stand side by side in one pixel of a view.
class IPlatformBitmap : public AtomicReferenceCounted {
  public:
    explicit IPlatformBitmap(PixelBuffer pixels) : pixels_(std::move(pixels)) {}
    const PixelBuffer& pixels() const { return pixels_; }

    CPoint getSize() const { return CPoint(pixels_.width(), pixels_.height()); }
    void setScaleFactor(double factor) { scaleFactor_ = factor; }
    double getScaleFactor() const { return scaleFactor_; }

  private:
    PixelBuffer pixels_;
    double scaleFactor_ = 1;
};

using PlatformBitmapPtr = SharedPointer<IPlatformBitmap>;

// One picture in one or more sharpnesses.
class CBitmap : public AtomicReferenceCounted {
  public:
    explicit CBitmap(const PlatformBitmapPtr& picture);
    CBitmap(CCoord width, CCoord height);  // transparent

    CCoord getWidth() const { return getSize().x; }
    CCoord getHeight() const { return getSize().y; }
    CPoint getSize() const;  // in pixels of a view
    bool isLoaded() const { return !pictures_.empty(); }
    PlatformBitmapPtr getPlatformBitmap() const;

    // Refused unless it has this picture's size and a scale factor of its own.
    bool addBitmap(const PlatformBitmapPtr& picture);
    // The coarsest that still has a pixel for each one shown, or the finest there is.
    PlatformBitmapPtr getBestPlatformBitmapForScaleFactor(double scaleFactor) const;

    // The picture's point `offset` lands on the top-left corner of `dest`; nothing outside `dest`
    // is drawn.
    virtual void draw(CDrawContext* context, const CRect& dest, const CPoint& offset = CPoint(),
                      float alpha = 1.f);

  private:
    std::vector<PlatformBitmapPtr> pictures_;  // from coarse to fine
};

class IPlatformFactory {
  public:
    // Null if the file holds no PNG picture that can be read.
    PlatformBitmapPtr createBitmapFromPath(UTF8StringPtr absolutePath) const;
};

const IPlatformFactory& getPlatformFactory();

}  // namespace VSTGUI
