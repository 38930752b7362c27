// Which elements a skin may have, and which attributes each of them reads.
#pragma once

#include <string_view>
#include <vector>

namespace editor {

enum class SkinAttributeKind {
    kNumber,   // an expression
    kPicture,  // the name of a file in the skin folder
    kYesNo,    // yes when the value begins with y, Y or 1
    kColour,   // a hexadecimal number 0xRRGGBB
};

// An attribute is of the same kind in every element.
SkinAttributeKind skinAttributeKind(std::string_view attribute);

// One element. Attributes stand in the order in which they are read, separated by blanks.
struct SkinElementRule {
    std::string_view name;
    std::string_view required;
    std::string_view optional;
    std::string_view finishing;  // optional too, applied once the control is made
    const char* noPictureTitle = "Bitmap not found";  // for a picture that cannot be loaded
};

// The rule of an element, found without regard to case; null for an unknown element and for
// CONSTANTS, which has no attributes.
const SkinElementRule* findSkinElementRule(std::string_view element);

// The names in a list separated by blanks.
std::vector<std::string_view> skinAttributeNames(std::string_view list);

}  // namespace editor
