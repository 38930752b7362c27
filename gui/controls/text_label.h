// A display that shows the text given to setText().
#pragma once

#include "gui/controls/param_display.h"

namespace VSTGUI {

class CTextLabel : public CParamDisplay {
  public:
    explicit CTextLabel(const CRect& size, UTF8StringPtr text = nullptr,
                        CBitmap* background = nullptr, int32_t style = 0);

    virtual void setText(const UTF8String& text);
    virtual const UTF8String& getText() const { return text_; }

    void draw(CDrawContext* context) override;

  private:
    UTF8String text_;
};

}  // namespace VSTGUI
