// A display that draws a text of its own choice.
#pragma once

#include <string>

#include "vstgui/vstgui.h"

namespace editor {

// The part of `text` (UTF-8) that fits into so many bytes without cutting a character.
std::string cutToFit(const std::string& text, std::size_t bytes);

class CTextDisplay : public VSTGUI::CParamDisplay {
  public:
    using CParamDisplay::CParamDisplay;
    void draw(VSTGUI::CDrawContext* context) override;

  protected:
    virtual std::string shownText() const = 0;
};

// Shows a text of up to kLongestText bytes in place of a value.
class CDisplay : public CTextDisplay {
  public:
    static constexpr std::size_t kLongestText = 255;

    using CTextDisplay::CTextDisplay;

    // The same text again changes nothing.
    void setText(const std::string& text);
    const std::string& text() const { return text_; }

  protected:
    std::string shownText() const override { return text_; }

  private:
    std::string text_ = "init";
};

}  // namespace editor
