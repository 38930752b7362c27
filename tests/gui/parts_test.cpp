// What the scripts cannot say: lists of entries, menus without a control, lines of text.
#include "gui/controls/text_line.h"
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

using Menus = GuiTest;

TEST_F(Menus, KeepTheirEntries) {
    auto* const menu = add(new COptionMenu(CRect(100, 50, 180, 70), &recorder, 3));
    for (const char* title : {"alpha", "beta", "-", "gamma"}) menu->addEntry(title);
    EXPECT_EQ(menu->getNbEntries(), 4);
    EXPECT_TRUE(menu->getEntry(2)->isSeparator());
    EXPECT_EQ(menu->getEntry(4), nullptr);
    EXPECT_EQ(menu->getEntry(-1), nullptr);
    menu->checkEntryAlone(1);
    menu->checkEntryAlone(3);
    EXPECT_FALSE(menu->getEntry(1)->isChecked());
    EXPECT_TRUE(menu->getEntry(3)->isChecked());
    EXPECT_TRUE(menu->checkEntry(3, false));
    EXPECT_FALSE(menu->checkEntry(4, true));
    menu->addEntry("first", 0);
    EXPECT_TRUE(menu->getEntry(0)->getTitle() == "first");
    menu->setValue(3);
    menu->removeAllEntry();
    EXPECT_EQ(menu->getCurrentIndex(), -1);
    EXPECT_EQ(menu->getMax(), 0);
}

TEST_F(Menus, PopUpLooseAtAPoint) {
    const auto loose = makeOwned<COptionMenu>();
    loose->addEntry("learn");
    loose->addEntry("forget");
    std::vector<int32_t> results;
    const auto note = [&](COptionMenu* closed) { results.push_back(closed->getLastResult()); };
    EXPECT_TRUE(loose->popup(frame, CPoint(30, 40), note));
    EXPECT_FALSE(loose->popup(frame, CPoint(30, 40), note)) << "open already";
    EXPECT_EQ(frame->getModalView()->getViewSize().getTopLeft(), CPoint(30, 40));
    EXPECT_EQ(results, std::vector<int32_t>{}) << "returns at once";
    headless::click(*frame, CPoint(60, 71));
    loose->popup(frame, CPoint(30, 40), note);
    headless::click(*frame, CPoint(390, 290));
    loose->popup(frame, CPoint(30, 40), note);
    std::exchange(frame, nullptr)->close();
    EXPECT_EQ(results, (std::vector<int32_t>{1, -1, -1})) << "the last by closing the frame";
    EXPECT_EQ(loose->getNbReference(), 1);
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

}  // namespace
}  // namespace VSTGUI
