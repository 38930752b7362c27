// The elements that a skin may have, and the attributes of each.
#pragma once

#include <string_view>
#include <vector>

namespace editor {

enum class SkinAttributeKind {
    kNumber,   // an expression
    kPicture,  // the name of a file in the skin folder
    kYesNo,    // yes if the value begins with y, Y or 1
    kColour,   // a hexadecimal number 0xRRGGBB
};

// An attribute has the same kind in every element.
SkinAttributeKind skinAttributeKind(std::string_view attribute);

// One element. Each list names attributes in reading order, separated by blanks.
struct SkinElementRule {
    std::string_view name;
    std::string_view required;
    std::string_view optional;
    std::string_view finishing;  // also optional; applied after the control is created
    const char* noPictureTitle = "Bitmap not found";  // message title if a picture fails to load
};

// Finds the rule of an element, ignoring case. Returns null for an unknown element and for
// CONSTANTS, which has no attributes.
const SkinElementRule* findSkinElementRule(std::string_view element);

// Splits a list of names at the blanks.
std::vector<std::string_view> skinAttributeNames(std::string_view list);

}  // namespace editor
