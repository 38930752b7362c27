// One function for each kind of control, and a table to look them up.
#include "editor/control_factory.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "editor/views/about_view.h"
#include "editor/views/param_display_link.h"
#include "editor/skin_shapes.h"
#include "editor/skin/skin_text.h"
#include "editor/tags.h"
#include "editor/views/text_display.h"

namespace editor {

using namespace VSTGUI;

namespace {

int integer(const ControlPlan& plan, std::string_view name) {
    return integerOf(plan.values, name);
}

CBitmap* picture(const ControlPlan& plan, std::string_view name, CBitmap* instead = nullptr) {
    const auto fileName = plan.values.picture(name);
    return fileName ? plan.pictures.find(*fileName) : instead;
}

// The part of the background to show. The default is the part under the control.
CPoint backgroundOffset(const ControlPlan& plan) {
    return {CCoord(truncateToInt32(plan.values.number("xoff").value_or(cornerOf(plan.values).x))),
            CCoord(truncateToInt32(plan.values.number("yoff").value_or(cornerOf(plan.values).y)))};
}

int32_t pixel(CCoord coordinate) {
    return truncateToInt32(coordinate);
}

CControl* makeSlider(const ControlPlan& plan) {
    CBitmap* const handle = picture(plan, "bitmap_handle");
    const int length = integer(plan, "len");
    const CPoint at = cornerOf(plan.values);
    int32_t style = integer(plan, "style");
    const bool vertical = (style & CSlider::kVertical) != 0;
    // A slider has exactly one direction; vertical wins.
    style = vertical ? style & ~CSlider::kHorizontal : style | CSlider::kHorizontal;
    const CRect area(
        at, vertical ? CPoint(handle->getWidth(), length) : CPoint(length, handle->getHeight()));
    const CCoord first = vertical ? area.top : area.left;
    const CCoord last =
        vertical ? area.bottom - handle->getHeight() : area.right - handle->getWidth();
    auto* const slider =
        new CSlider(area, plan.listener, integer(plan, "id"), pixel(first), pixel(last), handle,
                    picture(plan, "bitmap_bk", plan.background), backgroundOffset(plan), style);
    slider->setTransparency(true);
    return slider;
}

CControl* makeKnob(const ControlPlan& plan) {
    const CRect area = rectangleOf(plan.values);
    const int tag = integer(plan, "id");
    CBitmap* const handle = picture(plan, "bitmap_handle");
    constexpr float kFine = 10;  // with Shift, as on a slider
    CControl* knob = nullptr;
    if (plan.values.flag("stackbmp").value_or(false)) {
        const CCoord frameHeight = std::max(area.getHeight(), 1.0);
        const auto frames = handle ? pixel(handle->getHeight() / frameHeight) : 0;
        auto* const strip = new CAnimKnob(area, plan.listener, tag, frames, frameHeight, handle);
        strip->setZoomFactor(kFine);
        knob = strip;
    } else {
        auto* const dial =
            new CKnob(area, plan.listener, tag, picture(plan, "bitmap_bk", plan.background), handle,
                      backgroundOffset(plan));
        dial->setZoomFactor(kFine);
        knob = dial;
    }
    if (const auto transparent = plan.values.flag("transparent")) {
        knob->setTransparency(*transparent);
    }
    return knob;
}

// The button's picture shows both states, one above the other.
CRect buttonArea(const ControlPlan& plan, const CBitmap& states) {
    return {cornerOf(plan.values), CPoint(states.getWidth(), std::trunc(states.getHeight() / 2))};
}

CControl* makeOnOff(const ControlPlan& plan) {
    CBitmap* const states = picture(plan, "bitmap_handle");
    return new COnOffButton(buttonArea(plan, *states), plan.listener, integer(plan, "id"), states);
}

CControl* makeKick(const ControlPlan& plan) {
    CBitmap* const states = picture(plan, "bitmap_handle");
    auto* const kick =
        new CKickButton(buttonArea(plan, *states), plan.listener, integer(plan, "id"), states);
    if (const auto transparent = plan.values.flag("transparent")) {
        kick->setTransparency(*transparent);
    }
    return kick;
}

template <class Switch>
CControl* makeSwitch(const ControlPlan& plan) {
    CBitmap* const strip = picture(plan, "bitmap_handle");
    const int32_t positions = std::max(integer(plan, "entries"), 1);
    const CCoord height = std::trunc(strip->getHeight() / positions);
    const CRect area(cornerOf(plan.values), CPoint(strip->getWidth(), height));
    return new Switch(area, plan.listener, integer(plan, "id"), positions, height, 0, strip);
}

void applyTextAttributes(const ControlPlan& plan, CParamDisplay& display) {
    const SkinValues& values = plan.values;
    if (values.number("font")) display.setFont(kNormalFontSmall);
    if (const auto align = values.number("halign")) {
        const int number = std::clamp(truncateToInt32(*align), int{kLeftText}, int{kRightText});
        display.setHoriAlign(static_cast<CHoriTxtAlign>(number));
    }
    if (const auto face = values.number("txtface")) {
        const auto font = makeOwned<CFontDesc>(*display.getFont());
        // Skins use 1 for bold, 2 for italic and 4 for underline. The library's bits are one
        // place higher.
        constexpr int32_t kFaces = kBoldFace | kItalicFace | kUnderlineFace;
        font->setStyle(static_cast<int32_t>(static_cast<uint32_t>(truncateToInt32(*face)) << 1) &
                       kFaces);
        display.setFont(font);
    }
    if (values.flag("transparent")) {
        display.setBackground(plan.background);
        display.copyBackOffset();
    }
    if (const auto rgb = values.colour("fontcolor")) display.setFontColor(colorOf(*rgb));
    if (const auto rgb = values.colour("backcolor")) display.setBackColor(colorOf(*rgb));
    if (const auto rgb = values.colour("framecolor")) display.setFrameColor(colorOf(*rgb));
    if (const auto rgb = values.colour("shadowcolor")) display.setShadowColor(colorOf(*rgb));
}

CControl* finishDisplay(const ControlPlan& plan, CParamDisplay* display, int tag) {
    display->setListener(plan.listener);
    display->setTag(tag);
    applyTextAttributes(plan, *display);
    return display;
}

CDisplay* newDisplay(const ControlPlan& plan) {
    auto* const display =
        new CDisplay(rectangleOf(plan.values), picture(plan, "bitmap_bk"), integer(plan, "style"));
    display->setShowsUnits(plan.values.flag("units").value_or(false));
    return display;
}

CControl* makeDisplay(const ControlPlan& plan) {
    return finishDisplay(plan, newDisplay(plan), integer(plan, "id"));
}

CControl* makeReadOut(const ControlPlan& plan) {
    return finishDisplay(plan, newDisplay(plan), kNoTag);
}

CControl* makeLinkedDisplay(const ControlPlan& plan) {
    const int link = integer(plan, "link");
    // Intentional: existing skins depend on the index one past the last parameter being accepted.
    if (link < 0 || link > plan.host.parameterCount()) {
        plan.report("Skin Error", "Error attempting to link a display to an invalid parameter id",
                    platform::MessageIcon::kNone);
        return nullptr;
    }
    auto* const display =
        new CParamDisplayLink(rectangleOf(plan.values), picture(plan, "bitmap_bk"),
                              integer(plan, "style"), plan.host, link);
    display->setShowsUnits(plan.values.flag("units").value_or(false));
    return finishDisplay(plan, display, integer(plan, "id"));
}

COptionMenu* newMenu(const ControlPlan& plan, int tag) {
    auto* const menu =
        new COptionMenu(rectangleOf(plan.values), plan.listener, tag, picture(plan, "bitmap_bk"),
                        picture(plan, "bitmap_bk_active"), integer(plan, "style"));
    applyTextAttributes(plan, *menu);
    return menu;
}

CControl* makeOptionMenu(const ControlPlan& plan) {
    const auto& children = plan.attributes.node().children;
    // Only the first child is checked.
    if (!children.empty() && !equalIgnoringCase(children.front().name, "list")) return nullptr;

    COptionMenu* const menu = newMenu(plan, integer(plan, "id"));
    if (children.empty()) return menu;
    for (const XmlNode& entry : children.front().children) {
        if (equalIgnoringCase(entry.name, "entry")) {
            menu->addEntry(new CMenuItem(UTF8String(entry.text)));
        }
    }
    return menu;
}

CControl* makeSkinSelector(const ControlPlan& plan) {
    return newMenu(plan, kSkinSelectorTag);
}

CControl* makeAbout(const ControlPlan& plan) {
    CBitmap* const shown = picture(plan, "bitmap_pop");
    // Centred on the background.
    CRect area(CPoint(), shown->getSize());
    if (plan.background) {
        area.centerInside(CRect(CPoint(), plan.background->getSize())).makeIntegral();
    }
    auto* const about = new CAbout(area, shown);
    auto* const screen = new CSplashScreen(rectangleOf(plan.values), plan.listener, kNoTag, about);
    about->setListener(screen);
    screen->setWantsFocus(true);
    return screen;
}

CControl* makeMeter(const ControlPlan& plan) {
    CBitmap* const on = picture(plan, "bitmap_on");
    const CRect area(cornerOf(plan.values), on->getSize());
    auto* const meter = new CVuMeter(area, on, picture(plan, "bitmap_off"),
                                     std::max(integer(plan, "leds"), 1), integer(plan, "style"));
    meter->setTag(kNoTag);  // a meter's id does not name a parameter
    return meter;
}

constexpr ControlRule kRules[] = {
    {"slider", makeSlider, true},
    {"knob", makeKnob, true},
    {"onoff", makeOnOff, true},
    {"kick", makeKick, false},
    {"vswitch", makeSwitch<CVerticalSwitch>, true},
    {"hswitch", makeSwitch<CHorizontalSwitch>, true},
    {"display", makeDisplay, false},
    {"anydisp", makeReadOut, false},
    {"autodisp", makeLinkedDisplay, false},
    {"optionmenu", makeOptionMenu, false},
    {"skinselector", makeSkinSelector, false},
    {"about", makeAbout, false},
    {"vumeter", makeMeter, false},
};

}  // namespace

const ControlRule* findControlRule(std::string_view element) {
    const auto found = std::find_if(
        std::begin(kRules), std::end(kRules),
        [element](const ControlRule& rule) { return equalIgnoringCase(rule.element, element); });
    return found == std::end(kRules) ? nullptr : found;
}

}  // namespace editor
