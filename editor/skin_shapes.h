// Converts skin values to numbers, rectangles and colours.
#pragma once

#include <cstdint>

#include "editor/skin/skin_values.h"
#include "vstgui/vstgui.h"

namespace editor {

// Returns the truncated number, or 0 if there is none.
inline int integerOf(const SkinValues& values, std::string_view name) {
    return truncateToInt32(values.number(name).value_or(0));
}

inline VSTGUI::CPoint cornerOf(const SkinValues& values) {
    return VSTGUI::CPoint(integerOf(values, "x"), integerOf(values, "y"));
}

inline VSTGUI::CRect rectangleOf(const SkinValues& values) {
    return {cornerOf(values), VSTGUI::CPoint(integerOf(values, "w"), integerOf(values, "h"))};
}

// Converts 0xRRGGBB to an opaque colour.
inline VSTGUI::CColor colorOf(std::uint32_t rgb) {
    return VSTGUI::CColor(static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                          static_cast<std::uint8_t>(rgb));
}

}  // namespace editor
