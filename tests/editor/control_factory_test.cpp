// Every element makes its control. Every fault gets its message and loses only its own element.
#include <iterator>
#include <sstream>
#include <typeindex>

#include "editor/views/about_view.h"
#include "editor/views/note_display.h"
#include "editor/views/param_display_link.h"
#include "editor/views/presets_display.h"
#include "editor/views/tap_view.h"
#include "platform/file.h"
#include "tests/editor/editor_rig.h"

namespace {

using namespace VSTGUI;
using platform::MessageIcon;
constexpr std::size_t kMostMessages = 10;  // of one skin

TEST_F(EditorTest, EveryElementMakesItsControl) {
    const auto type = [](const std::type_info& info) { return std::type_index(info); };
    constexpr int kPan = 1;  // 0.5
    struct {
        const char* element;
        std::type_index type;
        CRect area;
        int tag;
        float value;
        float defaultValue;
    } const rows[] = {
        {R"(<slider x="5" y="6" len="100" id="1" style="1" bitmap_handle="10x10.png"/>)",
         type(typeid(CSlider)), CRect(5, 6, 105, 16), kPan, 0.5f, 0.5f},
        {R"(<slider x="5" y="6" len="100" id="1" style="2|8" bitmap_handle="10x10.png" default="1"/>)",
         type(typeid(CSlider)), CRect(5, 6, 15, 106), kPan, 0.5f, 1.0f},
        {R"(<KNOB X="5.9" y="6" w="30" h="40" id="0" default="0.25"/>)", type(typeid(CKnob)),
         CRect(5, 6, 35, 46), 0, 0.3f, 0.25f},
        {R"(<knob x="5" y="6" w="32" h="32" id="1" stackbmp="Yes" bitmap_handle="32x3200.png"/>)",
         type(typeid(CAnimKnob)), CRect(5, 6, 37, 38), kPan, 0.5f, 0.5f},
        {R"(<knob x="5" y="6" w="32" h="32" id="1" stackbmp="no" bitmap_handle="10x10.png"/>)",
         type(typeid(CKnob)), CRect(5, 6, 37, 38), kPan, 0.5f, 0.5f},
        {R"(<onoff x="5" y="6" id="17" bitmap_handle="20x40.png"/>)", type(typeid(COnOffButton)),
         CRect(5, 6, 25, 26), 17, 1.0f, 1.0f},
        {R"(<kick x="5" y="6" id="17" bitmap_handle="20x40.png"/>)", type(typeid(CKickButton)),
         CRect(5, 6, 25, 26), 17, 1.0f, 0.5f},
        {R"(<vswitch x="5" y="6" id="1" entries="3" bitmap_handle="20x40.png" default="1"/>)",
         type(typeid(CVerticalSwitch)), CRect(5, 6, 25, 19), kPan, 0.5f, 1.0f},
        {R"(<hswitch x="5" y="6" id="1" entries="4" bitmap_handle="20x40.png"/>)",
         type(typeid(CHorizontalSwitch)), CRect(5, 6, 25, 16), kPan, 0.5f, 0.5f},
        {R"(<display x="5" y="6" w="70" h="20" id="1" style="0"/>)", type(typeid(editor::CDisplay)),
         CRect(5, 6, 75, 26), kPan, 0.5f, 0.5f},
        {R"(<anydisp x="5" y="6" w="70" h="20" style="0"/>)", type(typeid(editor::CDisplay)),
         CRect(5, 6, 75, 26), -1, 0.0f, 0.5f},
        {R"(<autodisp x="5" y="6" w="70" h="20" id="1" link="42" style="0"/>)",
         type(typeid(editor::CParamDisplayLink)), CRect(5, 6, 75, 26), kPan, 0.5f, 0.5f},
        {R"(<optionmenu x="5" y="6" w="70" h="20" id="1" style="0"><list><entry>a</entry>
             <other/><Entry>b</Entry><entry>c</entry></list></optionmenu>)",
         type(typeid(COptionMenu)), CRect(5, 6, 75, 26), kPan, 1.0f, 0.5f},
        {R"(<optionmenu x="5" y="6" w="70" h="20" id="26" style="0"/>)", type(typeid(COptionMenu)),
         CRect(5, 6, 75, 26), 26, 1.0f, 0.5f},
        {R"(<skinselector x="5" y="6" w="70" h="20" style="0"/>)", type(typeid(COptionMenu)),
         CRect(5, 6, 75, 26), 999, 0.0f, 0.5f},
        {R"(<about x="5" y="6" w="70" h="20" bitmap_pop="20x40.png"/>)",
         type(typeid(CSplashScreen)), CRect(5, 6, 75, 26), -1, 0.0f, 0.5f},
        {R"(<vumeter x="5" y="6" id="0" leds="8" style="2" bitmap_off="10x10.png" bitmap_on="20x40.png"/>)",
         type(typeid(CVuMeter)), CRect(5, 6, 25, 46), -1, 0.0f, 0.5f},
        // An id that is no parameter leaves the control without a value.
        {R"(<knob x="5" y="6" w="30" h="40" id="42"/>)", type(typeid(CKnob)), CRect(5, 6, 35, 46),
         42, 0.0f, 0.0f},
        {R"(<knob x="5" y="6" w="30" h="40" id="-1"/>)", type(typeid(CKnob)), CRect(5, 6, 35, 46),
         -1, 0.0f, 0.0f},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.element);
        ASSERT_TRUE(open(row.element));
        auto* const control = viewAs<CControl>(0);
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(std::type_index(typeid(*control)), row.type);
        EXPECT_EQ(control->getViewSize(), row.area);
        EXPECT_EQ(control->getTag(), row.tag);
        EXPECT_FLOAT_EQ(control->getValue(), row.value);
        EXPECT_FLOAT_EQ(control->getDefaultValue(), row.defaultValue);
    }
    EXPECT_TRUE(messages.all.empty());
}

TEST_F(EditorTest, MakesTheViewsOfThisInstrument) {
    const std::string place = R"( x="5" y="6" w="70" h="20" id="0" fontcolor="FF0000"/>)";
    ASSERT_TRUE(open("<notedisplay" + place + "<PresetsDisplay" + place + "<ViewTaps" + place));
    ASSERT_EQ(frame().getNbViews(), 4u);
    EXPECT_NE(viewAs<editor::CNoteDisplay>(0), nullptr);
    EXPECT_NE(viewAs<editor::CPresetsDisplay>(1), nullptr);
    EXPECT_NE(viewAs<CTextEdit>(2), nullptr);
    EXPECT_NE(viewAs<editor::CTapView>(3), nullptr);
    EXPECT_EQ(view(0)->getViewSize(), CRect(5, 6, 75, 26));
}

TEST_F(EditorTest, LargerViewsShowADoublePictureThatIsSoundAndOfTwiceTheSize) {
    const char* const kElement = R"(<onoff x="50" y="60" id="42" bitmap_handle="10x10.png"/>)";
    struct {
        const char* file;
        int width, height;
        bool shown;
    } const rows[] = {{"10x10#2.0x.png", 20, 20, true},
                      {"10x10#2.0x.png", 20, 21, false},
                      {"10x10#2.0x.png", 10, 10, false},
                      {"10x10#3.0x.png", 20, 20, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.file + std::to_string(row.height));
        module.write("skin/10x10#2.0x.png", "no picture");
        editor::writePng(module.path() + "skin/" + row.file,
                         plainPicture(row.width, row.height, kBlueCColor));
        ASSERT_TRUE(open(kElement));
        EXPECT_EQ(view(0)->getViewSize(), CRect(50, 60, 60, 65));
        EXPECT_EQ(pixel(55, 62), kRedCColor);
        edit.showAt(2);
        EXPECT_EQ(pixel(100, 120), row.shown ? kBlueCColor : kRedCColor);
        EXPECT_EQ(pixel(119, 129), row.shown ? kBlueCColor : kRedCColor);
    }
    EXPECT_TRUE(messages.all.empty());
}

std::vector<std::string> wordsOf(const std::string& list) {
    std::istringstream words(list);
    return {std::istream_iterator<std::string>(words), {}};
}

TEST_F(EditorTest, EveryAttributeGetsItsMessageWhenItIsMissingOrWrong) {
    constexpr const char* kPlain = "Bitmap not found";
    constexpr const char* kOther = "QXSKIN: Bitmap not found";
    struct {
        const char* element;
        const char* numbers;
        const char* optionalNumbers;
        const char* pictures;
        const char* optionalPictures;
        const char* noPicture;
    } const rows[] = {
        {"background", "", "", "filename", "", kPlain},
        {"update", "src dst", "", "", "", kPlain},
        {"slider", "x y len id style", "xoff yoff default", "bitmap_handle", "bitmap_bk", kPlain},
        {"knob", "x y w h id", "xoff yoff default", "", "bitmap_bk bitmap_handle", kPlain},
        {"onoff", "x y id", "default", "bitmap_handle", "", kOther},
        {"kick", "x y id", "", "bitmap_handle", "", kOther},
        {"vswitch", "x y id entries", "default", "bitmap_handle", "", kPlain},
        {"hswitch", "x y id entries", "default", "bitmap_handle", "", kPlain},
        {"display", "x y w h id style", "font halign txtface", "", "bitmap_bk", kPlain},
        {"autodisp", "x y w h id style link", "font halign txtface", "", "bitmap_bk", kPlain},
        {"anydisp", "x y w h style", "font halign txtface", "", "bitmap_bk", kPlain},
        {"optionmenu", "x y w h id style", "font halign txtface", "", "bitmap_bk bitmap_bk_active",
         kPlain},
        {"skinselector", "x y w h style", "font halign txtface", "", "bitmap_bk bitmap_bk_active",
         kPlain},
        {"vumeter", "x y id leds style", "", "bitmap_off bitmap_on", "", kPlain},
        {"about", "x y w h", "", "bitmap_pop", "", kOther},
        {"NoteDisplay", "x y w h id", "", "", "", kPlain},
        {"PresetsDisplay", "x y w h id", "", "", "", kPlain},
        {"ViewTaps", "x y w h", "", "", "", kPlain},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.element);
        const std::string object = std::string(" for object ") + row.element;
        const auto numbers = wordsOf(row.numbers);
        const auto optionalNumbers = wordsOf(row.optionalNumbers);
        const auto pictures = wordsOf(row.pictures);
        // The correct element except for one attribute: replaced by `instead`, or left out if null.
        const auto spoilt = [&](const std::string& attribute, const char* instead) {
            std::string element = std::string("<") + row.element;
            const auto add = [&](const std::string& name, const char* value) {
                if (name == attribute) value = instead;
                if (value) element += ' ' + name + "=\"" + value + '"';
            };
            for (const std::string& name : numbers) add(name, "1");
            for (const std::string& name : pictures) add(name, "10x10.png");
            for (const char* const list : {row.optionalNumbers, row.optionalPictures})
                for (const std::string& name : wordsOf(list)) add(name, nullptr);
            return element + "/>";
        };
        std::vector<std::pair<std::string, RecordedMessage>> faults;
        for (const auto* const names : {&numbers, &pictures}) {
            for (const std::string& name : *names) {
                faults.push_back(
                    {spoilt(name, nullptr),
                     {"Skin Error", "Missing tag " + name + object, MessageIcon::kError}});
            }
        }
        for (const auto* const names : {&numbers, &optionalNumbers}) {
            for (const std::string& name : *names) {
                faults.push_back({spoilt(name, "nope"),
                                  {"Skin Error", "Error calculating value of tag " + name + object,
                                   MessageIcon::kError}});
            }
        }
        for (const char* const names : {row.pictures, row.optionalPictures}) {
            for (const std::string& name : wordsOf(names)) {
                for (const char* const file : {"gone.png", "broken.png"}) {
                    faults.push_back(
                        {spoilt(name, file), {row.noPicture, file, MessageIcon::kNone}});
                }
            }
        }
        unsigned views = 0;
        for (std::size_t next = 0; next < faults.size();) {
            std::string skin;
            std::vector<RecordedMessage> said;
            for (; next < faults.size() && said.size() < kMostMessages; ++next) {
                skin += faults[next].first;
                said.push_back(faults[next].second);
            }
            messages.all.clear();
            ASSERT_TRUE(open(skin));
            EXPECT_EQ(messages.all, said);
            views += frame().getNbViews();
        }
        // A faulty optional number does not stop the element.
        EXPECT_EQ(views, optionalNumbers.size());
    }
}

TEST_F(EditorTest, AFloodOfFaultsIsCounted) {
    const std::string faults[] = {
        "<CONSTANTS>A = nope</CONSTANTS>", "<knob/>",
        R"(<kick x="1" y="1" id="1" bitmap_handle="gone.png"/>)",
        R"(<autodisp x="1" y="2" w="2" h="3" id="1" style="0" link="43"/>)"};
    std::string skin;
    for (std::size_t i = 0; i < kMostMessages; ++i) skin += faults[i % std::size(faults)];
    ASSERT_TRUE(open(skin));
    EXPECT_EQ(messages.all.size(), kMostMessages);
    for (const char* const rest : {"1 more message", "2 more messages"}) {
        skin += faults[0];
        messages.all.clear();
        ASSERT_TRUE(open(skin));
        ASSERT_EQ(messages.all.size(), kMostMessages + 1);
        EXPECT_EQ(messages.all.back(), (RecordedMessage{"Skin Error", rest, MessageIcon::kError}));
    }
}

TEST_F(EditorTest, EverySpellingOfAPictureIsThatPicture) {
    const std::string kick = R"(<kick x="1" y="1" id="42" bitmap_handle=")";
    ASSERT_TRUE(open(kick + R"(20X40.PNG"/>)" + kick + R"(.//20x40.png"/>)" + kick +
                     R"(x/./../20x40.Png"/>)"));
    EXPECT_EQ(messages.all, std::vector<RecordedMessage>());
    ASSERT_EQ(frame().getNbViews(), 3u);
    EXPECT_EQ(view(0)->getBackground(), view(1)->getBackground());
    EXPECT_EQ(view(0)->getBackground(), view(2)->getBackground());
}

TEST_F(EditorTest, ThePicturesOfASkinShareOneBudget) {
    const std::string folder = module.path() + "skin" + platform::kSeparator;
    editor::writePng(folder + "10x10#2.0x.png", plainPicture(20, 20, kBlueCColor));
    for (const bool doubleFits : {false, true}) {
        editor::PictureCache pictures(folder, 10 * 10 + 20 * 40 + (doubleFits ? 20 * 20 : 399));
        CBitmap* const small = pictures.find("10x10.png");
        ASSERT_TRUE(small);
        EXPECT_FALSE(pictures.find("32x3200.png"));
        EXPECT_TRUE(pictures.find("20x40.png"));
        pictures.readDoubles();
        EXPECT_EQ(small->getBestPlatformBitmapForScaleFactor(2)->getSize().x, doubleFits ? 20 : 10);
    }
}

TEST_F(EditorTest, OtherFaultsCostOneElement) {
    struct {
        const char* elements;
        std::vector<RecordedMessage> said;
    } const rows[] = {
        {R"(<autodisp x="1" y="2" w="2" h="3" id="1" style="0" link="43"/>)",
         {{"Skin Error", "Error attempting to link a display to an invalid parameter id",
           MessageIcon::kNone}}},
        {R"(<autodisp x="1" y="2" w="2" h="3" id="1" style="0" link="-1"/>)",
         {{"Skin Error", "Error attempting to link a display to an invalid parameter id",
           MessageIcon::kNone}}},
        {"<CONSTANTS>A = 1, B = nope, C</CONSTANTS>",
         {{"B = nope", "Expression parser error", MessageIcon::kNone}}},
        {"<gadget/>", {}},
        // A menu's list must come first. Otherwise there is no menu and no message.
        {R"(<optionmenu x="1" y="2" w="2" h="3" id="1" style="0"><a/><list/></optionmenu>)", {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.elements);
        messages.all.clear();
        ASSERT_TRUE(open(std::string(row.elements) + R"(<kick x="1" y="1" id="5" )" +
                         R"(bitmap_handle="20x40.png"/>)"));
        EXPECT_EQ(messages.all, row.said);
        EXPECT_EQ(frame().getNbViews(), 1u);
    }
}

TEST_F(EditorTest, AFileWithoutGuiIsSaidAndMissing) {
    module.write("skin/skin.xml", "<OTHER></OTHER>");
    ASSERT_TRUE(openAsWritten());
    EXPECT_EQ(
        messages.all,
        (std::vector<RecordedMessage>{{"XML error", "<GUI> node missing", MessageIcon::kError}}));
    EXPECT_TRUE(editor::isSkinMissing());
}

TEST_F(EditorTest, ControlsShowThePieceOfTheBackgroundUnderThem) {
    PixelBuffer ground(400, 300);
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 400; ++x) {
            ground.row(y)[x] = premultiplied(CColor(x & 255, y & 255, 0));
        }
    }
    editor::writePng(module.path() + "skin/bg.png", ground);
    ASSERT_TRUE(open(R"(<slider x="30" y="40" len="100" id="1" style="1" bitmap_handle="10x10.png"/>
        <knob x="150" y="40" w="40" h="40" id="1" bitmap_handle="10x10.png"/>
        <knob x="200" y="40" w="40" h="40" id="1" xoff="0" yoff="1" bitmap_handle="10x10.png"/>
        <anydisp x="30" y="100" w="50" h="20" style="8" transparent="no"/>)"));
    EXPECT_EQ(pixel(31, 41), CColor(31, 41, 0));
    EXPECT_EQ(pixel(151, 42), CColor(151, 42, 0));
    EXPECT_EQ(pixel(200, 40), CColor(0, 1, 0));
    EXPECT_EQ(pixel(31, 102), CColor(31, 102, 0));
    EXPECT_TRUE(view(0)->getTransparency());
}

TEST_F(EditorTest, WhatStandsBeforeTheBackgroundGetsNoneOfIt) {
    writeSkin(R"(<knob x="0" y="0" w="40" h="40" id="1"/><background filename="bg.png"/>
                 <background filename="20x40.png"/>)");
    ASSERT_TRUE(openAsWritten());
    ASSERT_EQ(frame().getNbViews(), 1u);
    EXPECT_EQ(view(0)->getBackground(), nullptr);
    EXPECT_EQ(edit.getRect().right, 400);  // the first background counts
}

TEST_F(EditorTest, TextAttributesShapeTheDisplay) {
    ASSERT_TRUE(open(R"(<display x="0" y="0" w="50" h="20" id="1" style="1|32" font="0" halign="2"
        txtface="1|2" fontcolor="0x102030" backcolor="405060" framecolor="708090"
        shadowcolor="A0B0C0" transparent="no"/><display x="0" y="50" w="50" h="20" id="1"
        style="0"/>)"));
    auto* const display = viewAs<CParamDisplay>(0);
    EXPECT_EQ(display->getStyle(), CParamDisplay::kShadowText | CParamDisplay::kRoundRectStyle);
    EXPECT_EQ(display->getFont()->getSize(), 11);
    EXPECT_EQ(display->getFont()->getStyle(), kBoldFace | kItalicFace);
    EXPECT_EQ(display->getHoriAlign(), kRightText);
    EXPECT_EQ(display->getFontColor(), CColor(0x10, 0x20, 0x30));
    EXPECT_EQ(display->getBackColor(), CColor(0x40, 0x50, 0x60));
    EXPECT_EQ(display->getFrameColor(), CColor(0x70, 0x80, 0x90));
    EXPECT_EQ(display->getShadowColor(), CColor(0xA0, 0xB0, 0xC0));
    EXPECT_EQ(display->getBackground(), frame().getBackground());
    EXPECT_EQ(viewAs<CParamDisplay>(1)->getFont()->getStyle(), kNormalFace);
}

TEST_F(EditorTest, HostileNumbersMakeHarmlessControls) {
    std::string elements;
    for (const char* const number : {"0", "-5", "2147483647", "0-2147483647", "1/0", "0/0"}) {
        const std::string n = number;
        elements += "<knob x=\"" + n + "\" y=\"0\" w=\"" + n + "\" h=\"" + n + "\" id=\"" + n +
                    R"(" stackbmp="1" bitmap_handle="10x10.png" default=")" + n + "\"/>";
        elements += "<slider x=\"0\" y=\"" + n + "\" len=\"" + n + "\" id=\"1\" style=\"" + n +
                    R"(" bitmap_handle="10x10.png"/>)";
        elements +=
            "<vswitch x=\"9\" y=\"9\" id=\"2\" entries=\"" + n + R"(" bitmap_handle="20x40.png"/>)";
        elements += "<vumeter x=\"9\" y=\"9\" id=\"2\" style=\"" + n + "\" leds=\"" + n +
                    R"(" bitmap_on="20x40.png" bitmap_off="10x10.png"/>)";
        elements += "<optionmenu x=\"9\" y=\"9\" w=\"" + n + "\" h=\"" + n +
                    "\" id=\"3\" style=\"" + n + "\" halign=\"" + n + "\" txtface=\"" + n +
                    "\" font=\"" + n + "\"/>";
        elements += "<ViewTaps x=\"9\" y=\"9\" w=\"" + n + "\" h=\"" + n + "\"/>";
        elements += "<PresetsDisplay x=\"9\" y=\"9\" id=\"0\" w=\"" + n + "\" h=\"" + n + "\"/>";
        elements += "<update src=\"" + n + "\" dst=\"" + n + "\"/>";
    }
    ASSERT_TRUE(open(elements));
    for (int y = 0; y < 300; y += 20) {
        for (int x = 0; x < 400; x += 20) {
            headless::press(frame(), CPoint(x, y));
            headless::move(frame(), CPoint(x + 30, y - 7));
            headless::release(frame(), CPoint(x + 30, y - 7));
            press(VirtualKey::Escape);
            headless::wheel(frame(), CPoint(x, y), 1);
        }
        edit.idle();
    }
    for (const float value : instrument.values) EXPECT_TRUE(value >= 0.0f && value <= 1.0f);
}

TEST_F(EditorTest, TenThousandElementsAreBuilt) {
    std::string elements;
    for (int i = 0; i < 10000; ++i) {
        elements += R"(<knob x="1" y="1" w="9" h="9" id=")" + std::to_string(i % 42) + R"("/>)";
    }
    ASSERT_TRUE(open(elements));
    EXPECT_EQ(frame().getNbViews(), 10000u);
    for (int i = 0; i < state::kNumParams; ++i) instrument.setParameter(i, 0.75f);
    idle();
    EXPECT_EQ(viewAs<CControl>(9999)->getValue(), 0.75f);
}

}  // namespace
