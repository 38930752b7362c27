// Pictures that views share, and the factory that loads them from a file.
#pragma once

#include "gui/base/geometry.h"
#include "gui/base/reference.h"
#include "gui/base/utf8_string.h"
#include "gui/graphics/pixel_buffer.h"

namespace VSTGUI {

class CDrawContext;

// The pixels of one picture.
class IPlatformBitmap : public AtomicReferenceCounted {
  public:
    explicit IPlatformBitmap(PixelBuffer pixels) : pixels_(std::move(pixels)) {}
    const PixelBuffer& pixels() const { return pixels_; }

  private:
    PixelBuffer pixels_;
};

using PlatformBitmapPtr = SharedPointer<IPlatformBitmap>;

class CBitmap : public AtomicReferenceCounted {
  public:
    explicit CBitmap(const PlatformBitmapPtr& picture) : picture_(picture) {}
    CBitmap(CCoord width, CCoord height);  // transparent

    CCoord getWidth() const { return isLoaded() ? picture_->pixels().width() : 0; }
    CCoord getHeight() const { return isLoaded() ? picture_->pixels().height() : 0; }
    CPoint getSize() const { return {getWidth(), getHeight()}; }
    bool isLoaded() const { return picture_ != nullptr; }
    const PlatformBitmapPtr& getPlatformBitmap() const { return picture_; }

    // The picture's pixel `offset` lands on the top-left corner of `dest`; copied 1:1 within it.
    virtual void draw(CDrawContext* context, const CRect& dest, const CPoint& offset = CPoint(),
                      float alpha = 1.f);

  private:
    PlatformBitmapPtr picture_;
};

class IPlatformFactory {
  public:
    // Null if the file holds no PNG picture that can be read.
    PlatformBitmapPtr createBitmapFromPath(UTF8StringPtr absolutePath) const;
};

const IPlatformFactory& getPlatformFactory();

}  // namespace VSTGUI
