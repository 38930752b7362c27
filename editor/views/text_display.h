// Displays that draw a text of their own instead of a value.
#pragma once

#include <string>

#include "vstgui/vstgui.h"

namespace editor {

// Cuts `text` (UTF-8) to at most `bytes` bytes without splitting a character.
std::string cutToFit(const std::string& text, std::size_t bytes);

class CTextDisplay : public VSTGUI::CParamDisplay {
  public:
    using CParamDisplay::CParamDisplay;
    void draw(VSTGUI::CDrawContext* context) override;

  protected:
    virtual std::string shownText() const = 0;
    // Drawn where the first text is too long for the view, unless it is empty.
    virtual std::string shorterText() const { return {}; }

  private:
    std::string fittingText(VSTGUI::CDrawContext& context) const;
};

// Shows a text of up to kLongestText bytes.
class CDisplay : public CTextDisplay {
  public:
    static constexpr std::size_t kLongestText = 255;

    using CTextDisplay::CTextDisplay;

    // Marks the view dirty only if the text differs.
    void setText(const std::string& text, const std::string& shorter = {});
    const std::string& text() const { return text_; }
    // Whether the text is to have units and the names of the panel.
    void setShowsUnits(bool units) { showsUnits_ = units; }
    bool showsUnits() const { return showsUnits_; }

  protected:
    std::string shownText() const override { return text_; }
    std::string shorterText() const override { return shorter_; }

  private:
    std::string text_ = "init";
    std::string shorter_;
    bool showsUnits_ = false;
};

}  // namespace editor
