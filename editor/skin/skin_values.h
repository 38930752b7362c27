// Reads the attributes of one skin element by its rule, and reports what is wrong with them.
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

// Loads a picture from the skin folder. Returns false if that fails.
using LoadPicture = std::function<bool(const std::string& fileName)>;

// The values of one element, under the attribute names of its rule.
struct SkinValues {
    template <typename Value>
    using Named = std::vector<std::pair<std::string_view, Value>>;

    Named<double> numbers;
    Named<std::string> pictures;   // file names that LoadPicture accepted
    Named<bool> flags;             // text elements only check whether "transparent" is present
    Named<std::uint32_t> colours;  // 0xRRGGBB

    // Each returns nothing if the attribute is absent or unusable.
    std::optional<double> number(std::string_view name) const;
    std::optional<std::string> picture(std::string_view name) const;
    std::optional<bool> flag(std::string_view name) const;
    std::optional<std::uint32_t> colour(std::string_view name) const;
};

// Reads the attributes in the order of the rule and reports every failure. Returns nothing if a
// required attribute is missing or fails, or if a picture cannot be loaded; skip the element then.
// An optional number that fails is left out. An attribute value may be an assignment, which changes
// `constants`.
std::optional<SkinValues> readSkinElement(const SkinElementRule& rule,
                                          const SkinAttributes& attributes,
                                          SkinConstantTable& constants,
                                          const LoadPicture& loadPicture,
                                          const platform::MessageHandler& report);

// Reads a hexadecimal number as scanf's %X does: blanks, a sign and "0x" may precede the digits,
// and anything may follow. Returns the low 24 bits, or nothing if there is no digit.
std::optional<std::uint32_t> parseSkinColour(std::string_view text);

}  // namespace editor
