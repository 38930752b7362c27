// What the sound browser lists, and how one walks through it.
#include <filesystem>

#include "editor/browser/browser_view.h"
#include "editor/browser/sound_browser.h"
#include "editor/browser/sound_files.h"
#include "state/factory_sounds.h"
#include "tests/editor/editor_rig.h"

namespace {

using namespace editor;
using namespace VSTGUI;

TEST(SoundList, IsSearchedByWordsInAnyCaseAndOrder) {
    BrowserItem item;
    item.program = 7;
    item.name = "Second Encore";
    item.family = "Ensembles";
    item.character = "Slow to bow";
    for (const char* const found : {"", " ", "encore SEC", "007", "slow ens"})
        EXPECT_TRUE(matches(item, found)) << found;
    for (const char* const missing : {"encored", "slow brass", "008"})
        EXPECT_FALSE(matches(item, missing)) << missing;
}

// Families of 9, 2 and 1: the columns begin at 0, 8, 9 and 11.
TEST(SoundList, IsWalkedByColumnsAndFamilies) {
    std::vector<BrowserItem> items(12);
    for (int i = 0; i < 12; ++i) items[i].family = i < 9 ? "a" : i < 11 ? "b" : "c";
    const auto columns = columnsOf(items);
    ASSERT_EQ(columns.size(), 4u);
    EXPECT_TRUE(columns[1].continues);
    const struct {
        int from;
        Walk step;
        int to;
    } kRows[] = {
        {-1, Walk::kUp, 0},
        {99, Walk::kDown, 0},
        {0, Walk::kUp, 0},
        {7, Walk::kDown, 8},
        {11, Walk::kDown, 11},
        {5, Walk::kRight, 8},
        {8, Walk::kRight, 9},
        {10, Walk::kRight, 11},
        {11, Walk::kRight, 11},
        {10, Walk::kLeft, 8},
        {8, Walk::kLeft, 0},
        {3, Walk::kNextFamily, 9},
        {8, Walk::kNextFamily, 9},
        {11, Walk::kNextFamily, 11},
        {10, Walk::kPreviousFamily, 9},
        {9, Walk::kPreviousFamily, 0},
        {3, Walk::kPreviousFamily, 0},
        {4, Walk::kLast, 11},
        {4, Walk::kFirst, 0},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(walked(columns, row.from, row.step), row.to)
            << row.from << " step " << static_cast<int>(row.step);
    EXPECT_EQ(walked({}, 3, Walk::kDown), -1);
}

class SoundBrowserTest : public EditorTest {
  protected:
    SoundBrowserTest() {
        instrument.names.fill("Init");
        browser.refresh();
    }
    std::string listed() {
        std::string names;
        for (const BrowserItem& item : browser.items())
            names += programNumber(item.program) + item.family + '/' + item.name +
                     (item.favourite ? "+" : "") + (item.edited ? "* " : " ");
        return names;
    }
    void type(const std::string& text) {
        for (const char letter : text) browser.type(static_cast<char32_t>(letter));
    }

    EditHistory history{instrument};
    SoundBrowser browser{instrument, history};
};

TEST_F(SoundBrowserTest, ListsFamiliesThenOwnSoundsAndHidesWhatIsEmpty) {
    instrument.names[9] = "Plain Viola";
    instrument.names[11] = "Louder";
    instrument.names[3] = "Mine";
    instrument.current = 3;
    EXPECT_TRUE(browser.follow());
    EXPECT_EQ(listed(),
              "009The plain machine/Plain Viola 011The plain machine/Louder "
              "003Own sounds/Mine ");
    instrument.setParameter(5, 0.123f);
    EXPECT_TRUE(browser.follow());
    EXPECT_FALSE(browser.follow());
    EXPECT_EQ(listed().substr(listed().find("003")), "003Own sounds/Mine* ");
    browser.walk(Walk::kFirst);
    EXPECT_EQ(instrument.current, 9);
    browser.run(SoundBrowser::kShowInit);
    EXPECT_EQ(browser.items().size(), 128u);
    type("lou");
    EXPECT_EQ(listed(), "011The plain machine/Louder ");
    EXPECT_EQ(browser.selected(), -1);
    EXPECT_TRUE(browser.finishTyping());
    EXPECT_EQ(instrument.current, 11);
}

TEST_F(SoundBrowserTest, CutsNoFactoryNameInTheNarrowestSkin) {
    open("");  // makes the fonts
    PixelBuffer pixels(1, 1);
    CDrawContext context(pixels, pixels.bounds());
    const BrowserLayout layout(CPoint(1000, 612), browser);
    EXPECT_EQ(layout.column(layout.columnsAcross - 1, 0).right, layout.detail.right);
    const CRect row = layout.row(0, 0, 0);
    BrowserItem item;
    item.edited = true;
    for (int i = 0; i < instrument.programCount(); ++i) {
        item.name = state::factorySound(i).name;
        const CRect room = BrowserLayout::nameIn(row, item, true);
        EXPECT_TRUE(setFontToFit(context, item.name, room.getWidth())) << item.name;
    }
    EXPECT_FALSE(setFontToFit(context, std::string(40, 'w'), row.getWidth()));
}

TEST_F(SoundBrowserTest, KeepsFavouritesForAllInstances) {
    Favourites other;
    other.read();
    browser.run(SoundBrowser::kFavourite);
    EXPECT_EQ(listed(), "000Init/Init+ ");
    EXPECT_TRUE(other.toggle("Caf\u00e9"));  // which has not seen the first one
    EXPECT_TRUE(other.has("Init"));
    browser.refresh();
    browser.run(SoundBrowser::kFavourite);
    other.read();
    EXPECT_FALSE(other.has("Init"));
    EXPECT_TRUE(other.has("Caf\u00e9"));
    const platform::ScopedFolders nowhere{module.path(), ""};
    EXPECT_FALSE(other.toggle("Init"));
    EXPECT_FALSE(other.has("Init"));
}

TEST_F(SoundBrowserTest, SavesUnderTheNameTypedAndReplacesOnlyWhenAsked) {
    const std::string library = *libraryFolder();
    instrument.names[0] = "A/B: \"C\" .";
    browser.run(SoundBrowser::kSaveSound);
    EXPECT_EQ(browser.typed(), "A-B- -C-");
    EXPECT_FALSE(browser.finishTyping());
    const std::string path = library + "A-B- -C-.fxp";
    EXPECT_EQ(std::filesystem::file_size(path), 252u);
    std::filesystem::resize_file(path, 1);
    browser.run(SoundBrowser::kSaveSound);
    browser.run(SoundBrowser::kSave);
    EXPECT_TRUE(browser.isNaming());
    EXPECT_EQ(std::filesystem::file_size(path), 1u);
    browser.run(SoundBrowser::kSave);
    EXPECT_FALSE(browser.isNaming());
    EXPECT_EQ(std::filesystem::file_size(path), 252u);
    std::filesystem::create_directories(library + "Taken.fxp");
    browser.run(SoundBrowser::kSaveSound);
    type("Taken");  // instead of the suggestion
    browser.run(SoundBrowser::kSave);
    ASSERT_EQ(messages.all.size(), 1u);
    EXPECT_EQ(messages.all[0].text, library + "Taken.fxp cannot be written.");
}

}  // namespace
