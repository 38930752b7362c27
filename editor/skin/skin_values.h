// Reads the attributes of one skin element by its rule, telling the user what is wrong with them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "editor/skin/skin_expression.h"
#include "editor/skin/skin_schema.h"
#include "editor/skin/skin_xml.h"
#include "platform/message_box.h"

namespace editor {

// Loads the picture of this file name in the skin folder; false when it cannot.
using LoadPicture = std::function<bool(const std::string& fileName)>;

// What one element says, attribute names being those of the rule.
struct SkinValues {
    template <typename Value>
    using Named = std::vector<std::pair<std::string_view, Value>>;

    Named<double> numbers;
    Named<std::string> pictures;   // file names that LoadPicture accepted
    Named<bool> flags;             // of a text, the presence of "transparent" alone counts
    Named<std::uint32_t> colours;  // 0xRRGGBB

    // The value, or nothing when the attribute is absent or unusable.
    std::optional<double> number(std::string_view name) const;
    std::optional<std::string> picture(std::string_view name) const;
    std::optional<bool> flag(std::string_view name) const;
    std::optional<std::uint32_t> colour(std::string_view name) const;
};

// Reads in the order of the rule. Returns nothing when a required attribute is missing or fails,
// or a picture cannot be loaded: the element is then abandoned. An optional number that fails is
// left out. Every failure is reported. The table takes part because an attribute value may be an
// assignment.
std::optional<SkinValues> readSkinElement(const SkinElementRule& rule,
                                          const SkinAttributes& attributes,
                                          SkinConstantTable& constants,
                                          const LoadPicture& loadPicture,
                                          const platform::MessageHandler& report);

// A hexadecimal number as scanf's %X reads it: blanks, a sign and "0x" may stand before the digits,
// anything may follow. The low 24 bits are kept. Nothing without a digit.
std::optional<std::uint32_t> parseSkinColour(std::string_view text);

}  // namespace editor
