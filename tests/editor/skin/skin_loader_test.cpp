// Loading skin.xml from a skin folder.
#include "editor/skin/skin_loader.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace {

using editor::SkinElements;
using editor::SkinLoad;

struct Loaded {
    SkinLoad result;
    std::string elements;  // "name=x name=x ", with the value of attribute x
    std::vector<RecordedMessage> messages;
};

Loaded load(const TemporaryFolder& folder, SkinElements elements = SkinElements::kAll) {
    const RecordedMessages messages;
    Loaded loaded = {};
    loaded.result = editor::loadSkin(
        folder.path(), elements,
        [&loaded](const std::string& element, const editor::SkinAttributes& attributes) {
            const std::string* const x = attributes.find("x");
            loaded.elements += element + '=' + (x ? *x : "none") + ' ';
        });
    loaded.messages = messages.all;
    return loaded;
}

Loaded load(const std::string& document, SkinElements elements = SkinElements::kAll) {
    const TemporaryFolder folder;
    folder.write("skin.xml", document);
    return load(folder, elements);
}

TEST(SkinLoader, HandsOverTheChildrenOfGuiInOrder) {
    const std::string document =
        R"(<gui><Knob X="2"/><BackGround x="b"/><list><knob x="inner"/></list><knob/></gui>)";
    const Loaded all = load(document);
    EXPECT_EQ(all.result, SkinLoad::kBuilt);
    EXPECT_EQ(all.elements, "Knob=2 BackGround=b list=none knob=none ");

    const Loaded background = load(document, SkinElements::kBackgroundOnly);
    EXPECT_EQ(background.result, SkinLoad::kBuilt);
    EXPECT_EQ(background.elements, "BackGround=b ");
}

TEST(SkinLoader, FindsGuiAmongTheTopLevelElements) {
    EXPECT_EQ(load("<a/>\n<GUI><b/></GUI> <!-- ignored").elements, "b=none ");
    EXPECT_EQ(load("<GUI/>").result, SkinLoad::kBuilt);
    EXPECT_EQ(load(std::string(2u << 20, ' ') + "<GUI/>").result, SkinLoad::kBuilt);
}

TEST(SkinLoader, ReportsAMissingGui) {
    for (const char* document : {"<a/>", "<a><GUI/></a>", "<a/><b/>  ", "<a/><GUI>"}) {
        SCOPED_TRACE(document);
        const Loaded loaded = load(document);
        EXPECT_EQ(loaded.result, SkinLoad::kGuiMissing);
        const std::vector<RecordedMessage> expected = {
            {"XML error", "<GUI> node missing", platform::MessageIcon::kError}};
        EXPECT_EQ(loaded.messages, expected);
    }
}

TEST(SkinLoader, SaysNothingAboutAFileItCannotRead) {
    const std::string tooLong = "<GUI/>" + std::string(editor::kMaxSkinFileBytes, ' ');
    for (const std::string& document :
         {std::string(), std::string(R"(<?xml version="1.0"?><GUI/>)"), std::string("<GUI>"),
          tooLong}) {
        SCOPED_TRACE(document.substr(0, 40));
        const Loaded loaded = load(document);
        EXPECT_EQ(loaded.result, SkinLoad::kUnreadable);
        EXPECT_TRUE(loaded.messages.empty());
    }
    const Loaded missing = load(TemporaryFolder());
    EXPECT_EQ(missing.result, SkinLoad::kUnreadable);
    EXPECT_TRUE(missing.messages.empty());
}

}  // namespace
