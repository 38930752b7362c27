// Displays, labels and text fields.
#include "gui/controls/text_line.h"
#include "gui/graphics/text.h"
#include "tests/gui/gui_fixture.h"

#include <cstring>

namespace VSTGUI {
namespace {

class Texts : public GuiTest {
  protected:
    // The hash of what the frame shows, to compare drawings.
    uint64_t look() { return headless::hashOf(headless::picture(*frame)); }
};

TEST_F(Texts, DisplaysDrawTheirBackInEveryStyle) {
    using D = CParamDisplay;
    auto* const display = add(new D(CRect(10, 10, 60, 40)));
    display->setBackColor(kBlueCColor);
    display->setFrameColor(kGreenCColor);
    struct Case {
        const char* name;
        int32_t style;
        CColor top, bottom, corner;
    };
    const Case cases[] = {
        {"framed", 0, kGreenCColor, kGreenCColor, kGreenCColor},
        {"no frame", D::kNoFrame, kBlueCColor, kBlueCColor, kBlueCColor},
        {"3D in", D::k3DIn, kBlueCColor, kGreenCColor, kBlueCColor},
        {"3D out", D::k3DOut, kGreenCColor, kBlueCColor, kGreenCColor},
        {"round", D::kRoundRectStyle, kGreenCColor, kGreenCColor, kBlackCColor},
        {"nothing", D::kNoDrawStyle, kBlackCColor, kBlackCColor, kBlackCColor},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        display->setStyle(row.style);
        EXPECT_EQ(pixel(35, 10), row.top);
        EXPECT_EQ(pixel(35, 39), row.bottom);
        EXPECT_EQ(pixel(10, 10), row.corner);
        EXPECT_EQ(pixel(13, 30), row.style == D::kNoDrawStyle ? kBlackCColor : kBlueCColor);
    }
    display->setStyle(0);
    display->setBackground(gradient(200, 200));
    display->copyBackOffset();
    EXPECT_EQ(pixel(12, 12), CColor(12, 12, 0)) << "looks through to the picture below";
    display->setBackground(nullptr);
    display->setTransparency(true);
    EXPECT_EQ(pixel(12, 12), kBlackCColor);
}

TEST_F(Texts, DisplaysShowTheValueOrWhatTheirFunctionWrites) {
    class Shown : public CParamDisplay {
      public:
        using CParamDisplay::CParamDisplay;
        void drawPlatformText(CDrawContext*, const UTF8String& text) override { shown = text; }
        UTF8String shown;
    };
    auto* const display = add(new Shown(CRect(10, 10, 60, 40)));
    display->setValue(0.125f);
    frame->idle();
    EXPECT_TRUE(display->shown == "0.12") << display->shown.data();
    display->setPrecision(0);
    display->setMax(3e38f);
    display->setValue(3e38f);
    frame->idle();
    EXPECT_EQ(display->shown.length(), 39u);
    display->setValueToStringFunction([](float value, char text[256], CParamDisplay*) {
        std::memset(text, 'x', 256);
        return value > 1;
    });
    frame->idle();
    EXPECT_EQ(display->shown.length(), 255u) << "cut where the buffer ends";
    display->setValue(1);
    frame->idle();
    EXPECT_TRUE(display->shown == "1") << "the function may decline";
}

TEST_F(Texts, DisplaysClipTheirTextAndStopPresses) {
    auto* const below = add(new COnOffButton(CRect(0, 0, 100, 100), &recorder, 1));
    auto* const label = add(new CTextLabel(CRect(10, 10, 60, 40), "MMMMMMMMMMMM"));
    label->setTextInset(CPoint(10, 0));
    label->setShadowColor(kRedCColor);
    label->setStyle(CParamDisplay::kShadowText);
    int inked = 0;
    for (int y = 10; y < 40; ++y)
        for (int x = 10; x < 60; ++x)
            if (pixel(x, y) != kBlackCColor) {
                ++inked;
                ASSERT_TRUE(x >= 20 && x < 50) << x << " " << y;
            }
    EXPECT_GT(inked, 100);
    headless::click(*frame, CPoint(30, 20));
    EXPECT_EQ(below->getValue(), 0);
    EXPECT_EQ(reports(), "");
    label->setDirty(false);
    label->setText("MMMMMMMMMMMM");
    EXPECT_FALSE(label->isDirty()) << "the same text: nothing";
    label->setText("x");
    EXPECT_TRUE(label->isDirty());
}

TEST_F(Texts, DisplaysStartWithTheStandardSettings) {
    const auto display = makeOwned<CParamDisplay>(CRect(0, 0, 10, 10));
    EXPECT_EQ(display->getTag(), -1);
    EXPECT_EQ(display->getListener(), nullptr);
    EXPECT_EQ(display->getFont(), kNormalFont);
    EXPECT_EQ(display->getFontColor(), kWhiteCColor);
    EXPECT_EQ(display->getBackColor(), kBlackCColor);
    EXPECT_EQ(display->getFrameColor(), kBlackCColor);
    EXPECT_EQ(display->getShadowColor(), kRedCColor);
    EXPECT_EQ(display->getHoriAlign(), kCenterText);
}

TEST(TextLine, EditsByCharacters) {
    TextLine line;
    line.setText("a\xC3\xA4z");
    line.moveLeft(false);
    line.removeBackward();
    EXPECT_EQ(line.text(), "az");
    line.insert(0x20AC);
    EXPECT_EQ(line.text(), "a\xE2\x82\xACz");
    line.moveTo(0, false);
    line.moveRight(true);
    line.moveRight(true);
    EXPECT_EQ(line.selectionEnd(), 4u);
    line.moveLeft(false);
    EXPECT_EQ(line.caret(), 0u) << "to the selection's end";
    line.removeForward();
    EXPECT_EQ(line.text(), "\xE2\x82\xACz");
    line.selectAll();
    line.insert('\t');
    EXPECT_EQ(line.text(), "\xE2\x82\xACz") << "no control characters";
    line.insert('q');
    EXPECT_EQ(line.text(), "q");
    line.removeForward();
    line.removeBackward();
    line.removeBackward();
    EXPECT_EQ(line.text(), "");
}

class Fields : public Texts {
  protected:
    Fields() {
        edit = add(new Edit(CRect(10, 10, 110, 30), &recorder, 4, "old"));
        other = add(new COnOffButton(CRect(200, 0, 220, 20), &recorder, 5));
    }
    // Records its text, and whether Return ended the entry.
    class Edit : public CTextEdit {
      public:
        using CTextEdit::CTextEdit;
        void valueChanged() override {
            words.push_back(getText().getString() + (bWasReturnPressed ? " by Return" : ""));
        }
        std::vector<std::string> words;
    };
    std::string entered() {
        std::string line;
        for (const auto& word : std::exchange(edit->words, {}))
            line += (line.empty() ? "" : ", ") + word;
        return line;
    }
    Edit* edit;
    CControl* other;
};

TEST_F(Fields, OpenWithEverythingSelectedAndCommitByReturn) {
    headless::click(*frame, CPoint(50, 20));
    EXPECT_EQ(frame->getFocusView(), edit);
    EXPECT_TRUE(headless::type(*frame, "n\xC3\xA4w"));
    EXPECT_TRUE(edit->getText() == "old") << "not before the commit";
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(entered(), "n\xC3\xA4w by Return");
    EXPECT_EQ(reports(), "begin end");
    EXPECT_EQ(frame->getFocusView(), nullptr);
    EXPECT_FALSE(headless::type(*frame, "x")) << "closed";
}

TEST_F(Fields, CommitWhereverTheFocusGoes) {
    struct Case {
        const char* name;
        std::function<void()> leave;
    };
    const Case cases[] = {
        {"a press on nothing", [&] { headless::click(*frame, CPoint(300, 200)); }},
        {"a press on another control", [&] { headless::click(*frame, CPoint(210, 10)); }},
        {"another window", [&] { frame->input().keyboardLost(); }},
        {"from code", [&] { frame->setFocusView(nullptr); }},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        headless::click(*frame, CPoint(50, 20));
        headless::type(*frame, row.name);
        row.leave();
        EXPECT_EQ(entered(), row.name);
        headless::click(*frame, CPoint(50, 20));
        row.leave();
        EXPECT_EQ(entered(), "") << "unchanged text reports nothing";
    }
}

TEST_F(Fields, CommitWhenTheFrameCloses) {
    headless::click(*frame, CPoint(50, 20));
    headless::type(*frame, "last words");
    const auto kept = shared(edit);
    std::exchange(frame, nullptr)->close();
    EXPECT_EQ(entered(), "last words");
}

TEST_F(Fields, RestoreTheOldTextByEscape) {
    headless::click(*frame, CPoint(50, 20));
    headless::type(*frame, "new");
    headless::key(*frame, VirtualKey::Escape);
    EXPECT_EQ(entered(), "");
    EXPECT_TRUE(edit->getText() == "old");
    EXPECT_EQ(reports(), "");
}

TEST_F(Fields, EditByKeysAndPointer) {
    headless::click(*frame, CPoint(50, 20));
    headless::type(*frame, "hello world");
    headless::key(*frame, VirtualKey::Home);
    headless::key(*frame, VirtualKey::Right, kShift);
    headless::type(*frame, "J");
    headless::key(*frame, VirtualKey::End);
    headless::key(*frame, VirtualKey::Left);
    headless::key(*frame, VirtualKey::Delete);
    headless::key(*frame, VirtualKey::Back);
    frame->setFocusView(nullptr);
    EXPECT_EQ(entered(), "Jello wor");

    headless::click(*frame, CPoint(50, 20));
    headless::type(*frame, "a", kControl);
    headless::type(*frame, "WWWW");
    edit->setHoriAlign(kLeftText);
    const double letter = textWidth(*kNormalFont, "W");
    headless::click(*frame, CPoint(10 + 2.4 * letter, 20));
    headless::type(*frame, "-");
    headless::press(*frame, CPoint(10, 20));
    headless::move(*frame, CPoint(10 + 0.9 * letter, 20));
    headless::release(*frame, CPoint(10 + 0.9 * letter, 20));
    headless::type(*frame, "+");
    frame->setFocusView(nullptr);
    EXPECT_EQ(entered(), "+W-WW");
}

TEST_F(Fields, ShowTheEntryTheSelectionAndTheCaret) {
    const uint64_t closed = look();
    headless::click(*frame, CPoint(50, 20));
    const uint64_t selected = look();
    EXPECT_NE(selected, closed);
    headless::key(*frame, VirtualKey::End);
    const uint64_t atEnd = look();
    EXPECT_NE(atEnd, selected);
    headless::key(*frame, VirtualKey::Home);
    EXPECT_NE(look(), atEnd);
    headless::type(*frame, std::string(60, 'm').c_str());
    const uint64_t scrolled = look();
    headless::type(*frame, "ii");
    EXPECT_NE(look(), scrolled) << "the caret stays in sight";
    headless::key(*frame, VirtualKey::Escape);
    EXPECT_EQ(look(), closed);
}

TEST_F(Fields, MayReportEveryChange) {
    edit->setImmediateTextChange(true);
    headless::click(*frame, CPoint(50, 20));
    headless::type(*frame, "ab");
    headless::key(*frame, VirtualKey::Escape);
    EXPECT_EQ(entered(), "a, ab, old");
}

TEST_F(Fields, ShowAPlaceholderWhileEmpty) {
    edit->setText("");
    const uint64_t empty = look();
    edit->setPlaceholderString("type here");
    EXPECT_NE(look(), empty);
}

}  // namespace
}  // namespace VSTGUI
