// Option menus: entries, choosing by pointer and keys, placement, scrolling, pop-ups at a point.
#include "gui/controls/menu_view.h"
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

constexpr int kRow = 20;  // the standard font's 12 and 8

class Menus : public GuiTest {
  protected:
    Menus() {
        menu = add(new COptionMenu(CRect(100, 50, 180, 70), &recorder, 3,
                                   plain(80, 20, kBlueCColor), plain(80, 20, kGreenCColor)));
        for (const char* title : {"alpha", "beta", "-", "gamma", "delta"}) menu->addEntry(title);
        menu->addEntry("closed", -1, CMenuItem::kDisabled);
        frame->idle();
    }
    ~Menus() override {
        if (frame) frame->close();
        frame = nullptr;
    }
    CRect opened() const {
        return frame->getModalView() ? frame->getModalView()->getViewSize() : CRect();
    }
    // The middle of an entry's row in a menu that is not scrolled.
    CPoint row(int index) const {
        return opened().getTopLeft() + CPoint(30, 1 + kRow * index + kRow / 2);
    }
    void addMany() {
        for (int i = 0; i < 60; ++i) menu->addEntry(("entry " + std::to_string(i)).c_str());
    }
    COptionMenu* menu;
    const CPoint control{140, 60};
};

TEST_F(Menus, KeepTheirEntriesAndTheCurrentOne) {
    EXPECT_EQ(menu->getNbEntries(), 6);
    EXPECT_TRUE(menu->getEntry(2)->isSeparator());
    EXPECT_EQ(menu->getEntry(6), nullptr);
    EXPECT_EQ(menu->getEntry(-1), nullptr);
    EXPECT_EQ(menu->getCurrentIndex(), -1);
    EXPECT_EQ(menu->getValue(), 0);
    EXPECT_EQ(menu->getMax(), 5);
    menu->setValue(3.4f);
    EXPECT_EQ(menu->getCurrentIndex(), 3);
    EXPECT_EQ(menu->getValueNormalized(), 3 / 5.f);
    menu->setValue(17);
    menu->setValue(-1);
    EXPECT_EQ(menu->getValue(), 3) << "out of range changes nothing";
    menu->setMax(1);
    EXPECT_EQ(menu->getMax(), 5);
    menu->checkEntryAlone(1);
    menu->checkEntryAlone(4);
    EXPECT_FALSE(menu->getEntry(1)->isChecked());
    EXPECT_TRUE(menu->getEntry(4)->isChecked());
    menu->addEntry("first", 0);
    EXPECT_TRUE(menu->getEntry(0)->getTitle() == "first");
    menu->removeAllEntry();
    EXPECT_EQ(menu->getCurrentIndex(), -1);
    EXPECT_EQ(menu->getMax(), 0);
    headless::click(*frame, control);
    EXPECT_EQ(frame->getModalView(), nullptr) << "nothing to show";
}

TEST_F(Menus, OpenBelowTheControlAndChooseByTwoClicks) {
    headless::click(*frame, control);
    EXPECT_EQ(opened().getTopLeft(), CPoint(100, 70));
    EXPECT_EQ(opened().getHeight(), 6 * kRow + 2);
    EXPECT_GE(opened().getWidth(), 80);
    EXPECT_EQ(pixel(102, 52), kGreenCColor) << "the picture of the open menu";
    headless::click(*frame, row(3));
    EXPECT_EQ(reports(), "begin 3 end");
    EXPECT_EQ(frame->getModalView(), nullptr);
    EXPECT_EQ(pixel(102, 52), kBlueCColor);
    EXPECT_EQ(menu->getLastResult(), 3);
    headless::click(*frame, control, kRButton);
    headless::click(*frame, row(3));
    EXPECT_EQ(reports(), "begin 3 end") << "also when it is the current entry";
}

TEST_F(Menus, ChooseByPressDragRelease) {
    headless::press(*frame, control);
    headless::move(*frame, row(0));
    headless::move(*frame, row(1));
    headless::release(*frame, row(1));
    EXPECT_EQ(reports(), "begin 1 end");
}

TEST_F(Menus, AreCancelledByAClickOutsideAndEscape) {
    headless::click(*frame, control);
    headless::click(*frame, CPoint(5, 5));
    EXPECT_EQ(frame->getModalView(), nullptr);
    headless::click(*frame, control);
    headless::key(*frame, VirtualKey::Escape);
    EXPECT_EQ(frame->getModalView(), nullptr);
    EXPECT_EQ(reports(), "");
    EXPECT_EQ(menu->getLastResult(), -1);
    headless::click(*frame, control);
    for (const int unusable : {2, 5}) headless::click(*frame, row(unusable));
    EXPECT_NE(frame->getModalView(), nullptr) << "stays open over separators and disabled entries";
    EXPECT_EQ(reports(), "");
}

TEST_F(Menus, HighlightTheEntryUnderThePointer) {
    headless::click(*frame, control);
    const uint64_t plain = headless::hashOf(headless::picture(*frame));
    const CPoint place = row(1);
    const auto at = [&] {
        return pixel(static_cast<int>(place.x) + 40, static_cast<int>(place.y) - 9);
    };
    const CColor usual = at();
    headless::move(*frame, place, 0);
    EXPECT_NE(at(), usual);
    headless::move(*frame, row(2), 0);
    EXPECT_EQ(at(), usual);
    EXPECT_EQ(headless::hashOf(headless::picture(*frame)), plain);
}

TEST_F(Menus, ChooseByKeys) {
    headless::click(*frame, control);
    headless::key(*frame, VirtualKey::Down);
    headless::key(*frame, VirtualKey::Down);
    headless::key(*frame, VirtualKey::Down);
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(reports(), "begin 3 end") << "over the separator";
    headless::key(*frame, VirtualKey::Return);
    EXPECT_NE(frame->getModalView(), nullptr) << "Return opens";
    headless::type(*frame, "B");
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(reports(), "begin 1 end") << "the letter jumps, whatever its case";
    headless::key(*frame, VirtualKey::Down);
    headless::key(*frame, VirtualKey::Up);
    EXPECT_EQ(reports(), "begin 3 end begin 1 end") << "closed, the keys choose at once";
    headless::key(*frame, VirtualKey::Up);
    headless::key(*frame, VirtualKey::Up);
    EXPECT_EQ(reports(), "begin 0 end");
}

TEST_F(Menus, StayInsideTheFrameAndOverTheCurrentEntryWhenAsked) {
    menu->setViewSize(CRect(380, 280, 400, 300));
    headless::click(*frame, CPoint(390, 290));
    EXPECT_EQ(opened().right, 400);
    EXPECT_EQ(opened().bottom, 300);
    headless::key(*frame, VirtualKey::Escape);
    menu->setViewSize(CRect(100, 100, 180, 120));
    menu->setStyle(COptionMenu::kPopupStyle);
    menu->setCurrent(3);
    headless::click(*frame, CPoint(140, 110));
    EXPECT_EQ(opened().top, 100 - 3 * kRow - 1);
}

TEST_F(Menus, ScrollWhenTheyAreLongerThanTheFrame) {
    addMany();
    headless::click(*frame, control);
    EXPECT_EQ(opened().top, 300 - 14 * kRow - 2) << "as many whole rows as fit";
    headless::wheel(*frame, row(5), -3);
    headless::wheel(*frame, row(5), -1);
    headless::click(*frame, row(6));
    EXPECT_EQ(reports(), "begin 8 end") << "one row a report of the wheel";
    headless::click(*frame, control);
    headless::key(*frame, VirtualKey::End);
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(reports(), "begin 65 end");
    headless::click(*frame, control);
    headless::type(*frame, "g");
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(reports(), "begin 3 end");
    headless::click(*frame, control);
    headless::type(*frame, "ee");
    headless::key(*frame, VirtualKey::Return);
    EXPECT_EQ(reports(), "begin 7 end") << "the second that begins so";
}

TEST_F(Menus, ScrollWhileThePointerRestsAtTheirEnd) {
    addMany();
    headless::press(*frame, control);
    const CPoint edge(opened().left + 30, opened().bottom - 3);
    headless::move(*frame, edge);
    clock.run(*frame, 1000);
    headless::release(*frame, edge);
    EXPECT_GT(menu->getCurrentIndex(), 30);
}

TEST_F(Menus, MarkEntries) {
    menu->setStyle(COptionMenu::kMultipleCheckStyle);
    headless::click(*frame, control);
    headless::click(*frame, row(1));
    EXPECT_TRUE(menu->getEntry(1)->isChecked());
    headless::click(*frame, control);
    headless::click(*frame, row(1));
    EXPECT_FALSE(menu->getEntry(1)->isChecked());
    menu->setStyle(COptionMenu::kCheckStyle);
    headless::click(*frame, control);
    const uint64_t marked = headless::hashOf(headless::picture(*frame));
    headless::key(*frame, VirtualKey::Escape);
    menu->setStyle(0);
    headless::click(*frame, control);
    EXPECT_NE(headless::hashOf(headless::picture(*frame)), marked);
}

TEST_F(Menus, PopUpLooseAtAPoint) {
    const auto loose = makeOwned<COptionMenu>();
    loose->addEntry("learn");
    loose->addEntry("forget");
    std::vector<int32_t> results;
    const auto note = [&](COptionMenu* closed) { results.push_back(closed->getLastResult()); };
    EXPECT_TRUE(loose->popup(frame, CPoint(30, 40), note));
    EXPECT_FALSE(loose->popup(frame, CPoint(30, 40), note)) << "open already";
    EXPECT_EQ(opened().getTopLeft(), CPoint(30, 40));
    EXPECT_EQ(results, std::vector<int32_t>{}) << "returns at once";
    headless::click(*frame, row(1));
    loose->popup(frame, CPoint(30, 40), note);
    headless::click(*frame, CPoint(390, 290));
    loose->popup(frame, CPoint(30, 40), note);
    std::exchange(frame, nullptr)->close();
    EXPECT_EQ(results, (std::vector<int32_t>{1, -1, -1})) << "the last by closing the frame";
    EXPECT_EQ(loose->getNbReference(), 1);
}

TEST_F(Menus, CloseWithTheirControl) {
    headless::click(*frame, control);
    frame->removeView(menu);
    EXPECT_EQ(frame->getModalView(), nullptr);
}

}  // namespace
}  // namespace VSTGUI
