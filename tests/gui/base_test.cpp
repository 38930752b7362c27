// Rectangles, text and references.
#include "gui/base/utf8_string.h"
#include "tests/gui/gui_fixture.h"

namespace VSTGUI {
namespace {

TEST(Rectangle, KeepsLeftAndTopAndLeavesRightAndBottomOut) {
    const CRect rect(10, 20, 30, 40);
    EXPECT_TRUE(rect.pointInside(CPoint(10, 20)));
    EXPECT_TRUE(rect.pointInside(CPoint(29.9, 39.9)));
    EXPECT_FALSE(rect.pointInside(CPoint(30, 30)));
    EXPECT_FALSE(rect.pointInside(CPoint(20, 40)));
    EXPECT_TRUE(rect.rectOverlap(CRect(30, 40, 50, 60))) << "touching edges overlap";
    EXPECT_FALSE(rect.rectOverlap(CRect(31, 20, 50, 60)));
}

TEST(Rectangle, ChangesAsItsMethodsSay) {
    const CRect rect(10, 20, 30, 50);
    const auto changed = [&](auto change) {
        CRect copy = rect;
        change(copy);
        return copy;
    };
    EXPECT_EQ(changed([](CRect& r) { r.setWidth(5).setHeight(6); }), CRect(10, 20, 15, 26));
    EXPECT_EQ(changed([](CRect& r) { r.inset(2, 3); }), CRect(12, 23, 28, 47));
    EXPECT_EQ(changed([](CRect& r) { r.extend(2, 3); }), CRect(8, 17, 32, 53));
    EXPECT_EQ(changed([](CRect& r) { r.moveTo(1, 2); }), CRect(1, 2, 21, 32));
    EXPECT_EQ(changed([](CRect& r) { r.originize(); }), CRect(0, 0, 20, 30));
    EXPECT_EQ(changed([](CRect& r) { r.bound(CRect(0, 0, 15, 25)); }), CRect(10, 20, 15, 25));
    EXPECT_EQ(changed([](CRect& r) { r.unite(CRect(0, 30, 15, 90)); }), CRect(0, 20, 30, 90));
    EXPECT_EQ(changed([](CRect& r) { r.centerInside(CRect(0, 0, 100, 100)); }),
              CRect(40, 35, 60, 65));
    EXPECT_EQ(changed([](CRect& r) { r(9, 8, 7, 6); }), CRect(7, 6, 9, 8)) << "sorts";
    EXPECT_TRUE(changed([](CRect& r) { r.bound(CRect(90, 90, 95, 95)); }).isEmpty());
    EXPECT_EQ(CRect(CPoint(1, 2), CPoint(3, 4)), CRect(1, 2, 4, 6));
    EXPECT_EQ(CRect(0.5, 0.5, 1.2, 1.2).makeIntegral(), CRect(0, 0, 2, 2));
    EXPECT_EQ(rect.getCenter(), CPoint(20, 35));
}

TEST(Utf8, StepsByCharactersAndSurvivesBrokenBytes) {
    struct Case {
        std::string text;
        std::vector<char32_t> characters;
    };
    const Case cases[] = {
        {"aZ", {'a', 'Z'}},
        {"\xC3\xA4\xE2\x82\xAC\xF0\x9D\x84\x9E", {0xE4, 0x20AC, 0x1D11E}},
        {"\x80x", {0xFFFD, 'x'}},
        {"\xC3", {0xFFFD}},
        {"\xC0\xAF", {0xFFFD, 0xFFFD}},
        {"\xED\xA0\x80", {0xFFFD, 0xFFFD, 0xFFFD}},
        {"\xF5\x80", {0xFFFD, 0xFFFD}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(::testing::PrintToString(row.text));
        std::vector<char32_t> found;
        std::vector<size_t> starts;
        for (size_t position = 0; position < row.text.size();) {
            starts.push_back(position);
            found.push_back(utf8::next(row.text, position));
        }
        EXPECT_EQ(found, row.characters);
        size_t position = row.text.size();
        for (; !starts.empty(); starts.pop_back()) {
            position = utf8::before(row.text, position);
            EXPECT_EQ(position, starts.back());
        }
    }
    EXPECT_EQ(utf8::encode(0x1D11E), "\xF0\x9D\x84\x9E");
    EXPECT_EQ(utf8::encode(0xD800), "\xEF\xBF\xBD");
}

TEST(References, DeleteTheObjectWithTheLastOne) {
    struct Counted : CBaseObject {
        explicit Counted(int& alive) : alive(alive) { ++alive; }
        ~Counted() override { --alive; }
        int& alive;
    };
    int alive = 0;
    {
        const auto first = makeOwned<Counted>(alive);
        EXPECT_EQ(first->getNbReference(), 1);
        SharedPointer<Counted> second = first;
        EXPECT_EQ(first->getNbReference(), 2);
        second = nullptr;
        EXPECT_EQ(first->getNbReference(), 1);
        SharedPointer<CBaseObject> base = first;
        const auto third = shared(base.get());
        EXPECT_EQ(first->getNbReference(), 3);
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(Library, CountsItsUsers) {
    EXPECT_EQ(kNormalFont, nullptr);
    init(nullptr);
    init(nullptr);
    exit();
    ASSERT_NE(kNormalFont, nullptr) << "one user is left";
    EXPECT_EQ(kNormalFont->getSize(), 12);
    EXPECT_TRUE(kSymbolFont->getName() == "Symbol");
    exit();
    EXPECT_EQ(kNormalFont, nullptr);
    exit();  // one too many does no harm
    init(nullptr);
    EXPECT_NE(kNormalFont, nullptr);
    exit();
}

}  // namespace
}  // namespace VSTGUI
