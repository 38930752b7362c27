// Pictures that views share, and the factory that loads them from a file.
#pragma once

#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/base/utf8_string.h"
#include "gui/graphics/picture_rows.h"

#include <vector>

namespace VSTGUI {

class CDrawContext;

// The pixels of one picture. scaleFactor of them, side by side, fill one pixel of a view.
class IPlatformBitmap : public AtomicReferenceCounted {
  public:
    explicit IPlatformBitmap(PixelBuffer pixels) : rows_(std::move(pixels)) {}
    explicit IPlatformBitmap(PictureRows rows) : rows_(std::move(rows)) {}
    const PictureRows& pixels() const { return rows_; }

    CPoint getSize() const { return CPoint(rows_.width(), rows_.height()); }
    void setScaleFactor(double factor) { scaleFactor_ = factor; }
    double getScaleFactor() const { return scaleFactor_; }

  private:
    PictureRows rows_;
    double scaleFactor_ = 1;
};

using PlatformBitmapPtr = SharedPointer<IPlatformBitmap>;

// One picture in one or more resolutions.
class CBitmap : public AtomicReferenceCounted {
  public:
    explicit CBitmap(const PlatformBitmapPtr& picture);
    CBitmap(CCoord width, CCoord height);  // transparent

    CCoord getWidth() const { return getSize().x; }
    CCoord getHeight() const { return getSize().y; }
    CPoint getSize() const;  // in view pixels
    bool isLoaded() const { return !pictures_.empty(); }
    PlatformBitmapPtr getPlatformBitmap() const;

    // Adds a resolution. Returns false unless it has the same size in view pixels and a scale
    // factor that is not there yet.
    bool addBitmap(const PlatformBitmapPtr& picture);
    // Returns the coarsest resolution with at least `scaleFactor` pixels per view pixel, or the
    // finest one there is.
    PlatformBitmapPtr getBestPlatformBitmapForScaleFactor(double scaleFactor) const;

    // Draws only inside `dest`. The picture's point `offset` lands on its top-left corner.
    virtual void draw(CDrawContext* context, const CRect& dest, const CPoint& offset = CPoint(),
                      float alpha = 1.f);

  private:
    std::vector<PlatformBitmapPtr> pictures_;  // from coarse to fine
};

class IPlatformFactory {
  public:
    // Returns null if the file is not a readable PNG picture.
    PlatformBitmapPtr createBitmapFromPath(UTF8StringPtr absolutePath) const;
};

const IPlatformFactory& getPlatformFactory();

}  // namespace VSTGUI
