// The table of skin elements.
#include "editor/skin/skin_schema.h"

#include <algorithm>
#include <iterator>

#include "editor/skin/skin_text.h"

namespace editor {
namespace {

constexpr std::string_view kText =
    "font halign txtface transparent fontcolor backcolor framecolor shadowcolor";
constexpr std::string_view kColours = "fontcolor backcolor";
constexpr std::string_view kKeyColours = "keycolor sharpcolor fontcolor backcolor framecolor";
// Intentional: three elements use this title. Skin authors know both.
constexpr const char* kQxNoPicture = "QXSKIN: Bitmap not found";

// clang-format off
constexpr SkinElementRule kRules[] = {
    // name             required                            optional, finishing, title
    {"background",      "filename",                         "", ""},
    {"update",          "src dst",                          "", ""},
    {"slider",          "x y len id style bitmap_handle",   "xoff yoff bitmap_bk", "default"},
    {"knob",            "x y w h id",
                        "stackbmp xoff yoff bitmap_bk bitmap_handle transparent", "default"},
    {"onoff",           "x y id bitmap_handle",             "", "default", kQxNoPicture},
    {"kick",            "x y id bitmap_handle",             "transparent", "", kQxNoPicture},
    {"vswitch",         "x y id entries bitmap_handle",     "", "default"},
    {"hswitch",         "x y id entries bitmap_handle",     "", "default"},
    {"display",         "x y w h id style",                 "bitmap_bk units", kText},
    {"autodisp",        "x y w h id style link",            "bitmap_bk units", kText},
    {"anydisp",         "x y w h style",                    "bitmap_bk units", kText},
    {"optionmenu",      "x y w h id style",                 "bitmap_bk bitmap_bk_active", kText},
    {"skinselector",    "x y w h style",                    "bitmap_bk bitmap_bk_active", kText},
    {"vumeter",         "x y id leds style bitmap_off bitmap_on", "from to side", ""},
    {"cliplamp",        "x y bitmap_handle",                "side", ""},
    {"about",           "x y w h bitmap_pop",               "", "", kQxNoPicture},
    {"NoteDisplay",     "x y w h id",                       "", kColours},
    {"PresetsDisplay",  "x y w h id",                       "accentcolor", kColours},
    {"ViewEnvelope",    "x y w h",                          "", kColours},
    {"ViewTone",        "x y w h",                          "", kColours},
    {"ViewTaps",        "x y w h",                          "", kColours},
    {"ViewKeyboard",    "x y w h",                          "first last", kKeyColours},
    {"sizegrip",        "x y w h",                          "", "fontcolor"},
};
// clang-format on

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

}  // namespace

SkinAttributeKind skinAttributeKind(std::string_view attribute) {
    if (attribute == "filename" || attribute.substr(0, 7) == "bitmap_") {
        return SkinAttributeKind::kPicture;
    }
    if (attribute == "stackbmp" || attribute == "transparent" || attribute == "units")
        return SkinAttributeKind::kYesNo;
    if (endsWith(attribute, "color")) return SkinAttributeKind::kColour;
    return SkinAttributeKind::kNumber;
}

const SkinElementRule* findSkinElementRule(std::string_view element) {
    const auto found = std::find_if(
        std::begin(kRules), std::end(kRules),
        [element](const SkinElementRule& rule) { return equalIgnoringCase(rule.name, element); });
    return found == std::end(kRules) ? nullptr : found;
}

std::vector<std::string_view> skinAttributeNames(std::string_view list) {
    std::vector<std::string_view> names;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(' '), list.size());
        names.push_back(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return names;
}

}  // namespace editor
