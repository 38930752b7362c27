// A small text box that explains the control under the pointer.
#include "editor/views/tool_tip.h"

#include <algorithm>
#include <cmath>

namespace editor {

using namespace VSTGUI;

namespace {

constexpr CCoord kLineHeight = 16;
constexpr CCoord kMarginX = 8;
constexpr CCoord kMarginY = 5;
constexpr CCoord kGap = 6;       // from the control
constexpr CCoord kEdgeRoom = 4;  // from the edges of the frame
constexpr CColor kBack(30, 30, 32);
constexpr CColor kEdge(110, 110, 116);
constexpr CColor kTitle(255, 255, 255);
constexpr CColor kText(205, 205, 208);

// Generous: there is no context to measure with before drawing, which then takes what it needs.
CCoord mostWidthOf(const std::string& line, bool bold) {
    constexpr CCoord kBoldWidth = 6.6;
    constexpr CCoord kPlainWidth = 5.75;
    return static_cast<CCoord>(line.size()) * (bold ? kBoldWidth : kPlainWidth);
}

// Below, or where there is room.
CPoint cornerBeside(const CRect& around, const CPoint& size, const CPoint& room) {
    const CPoint centre = around.getCenter();
    const CPoint last(room.x - size.x - kEdgeRoom, room.y - size.y - kEdgeRoom);
    const CCoord left = std::max(std::min(centre.x - size.x / 2, last.x), kEdgeRoom);
    const CCoord top = std::max(std::min(centre.y - size.y / 2, last.y), kEdgeRoom);
    if (around.bottom + kGap <= last.y) return {left, around.bottom + kGap};
    if (around.top - kGap - size.y >= kEdgeRoom) return {left, around.top - kGap - size.y};
    if (around.right + kGap <= last.x) return {around.right + kGap, top};
    return {std::max(around.left - kGap - size.x, kEdgeRoom), top};
}

}  // namespace

CToolTip::CToolTip() : CView(CRect()) {
    setMouseEnabled(false);
    setVisible(false);
}

void CToolTip::show(const std::vector<std::string>& lines, const CRect& around) {
    if (!getFrame() || lines.empty() || (isVisible() && lines == lines_)) return;
    hide();
    lines_ = lines;
    around_ = around;
    CCoord width = 0;
    for (std::size_t i = 0; i < lines.size(); ++i)
        width = std::max(width, mostWidthOf(lines[i], i == 0));
    const CPoint size(width + 2 * kMarginX,
                      static_cast<CCoord>(lines.size()) * kLineHeight + 2 * kMarginY);
    const CPoint corner = cornerBeside(around, size, getFrame()->getViewSize().getSize());
    setViewSize(CRect(corner, size).makeIntegral());
    setVisible(true);
    invalid();
}

void CToolTip::hide() {
    if (!isVisible()) return;
    invalid();
    setVisible(false);
}

void CToolTip::chooseFont(CDrawContext& context, bool isTitle) {
    context.setFont(kNormalFontSmall, 0, isTitle ? kBoldFace : kNormalFace);
    context.setFontColor(isTitle ? kTitle : kText);
}

// As wide as the words, within the view.
CRect CToolTip::box(CDrawContext& context) const {
    CCoord width = 0;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        chooseFont(context, i == 0);
        width = std::max(width, context.getStringWidth(lines_[i].c_str()));
    }
    CRect box = getViewSize();
    const CCoord spare = std::max(box.getWidth() - std::ceil(width + 2 * kMarginX), 0.0);
    const CPoint size(box.getWidth() - spare, box.getHeight());
    const CPoint corner = cornerBeside(around_, size, getFrame()->getViewSize().getSize());
    box.left += std::clamp(std::floor(corner.x) - box.left, 0.0, spare);
    box.setWidth(size.x);
    return box;
}

void CToolTip::draw(CDrawContext* context) {
    const CRect view = box(*context);
    context->setDrawMode(kAliasing);
    context->setFillColor(kBack);
    context->setFrameColor(kEdge);
    context->drawRect(view, kDrawFilledAndStroked);
    CRect row(view.left + kMarginX, view.top + kMarginY, view.right,
              view.top + kMarginY + kLineHeight);
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        chooseFont(*context, i == 0);
        context->drawString(lines_[i].c_str(), row, kLeftText);
        row.offset(0, kLineHeight);
    }
    setDirty(false);
}

}  // namespace editor
