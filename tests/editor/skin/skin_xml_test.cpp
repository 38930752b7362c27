// The XML dialect of skins: what is read, what is rejected, and hostile documents.
#include "editor/skin/skin_xml.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/random_mutation.h"

namespace {

using editor::parseXml;
using editor::SkinAttributes;
using editor::XmlAttribute;
using editor::XmlNode;

constexpr const char* kDocument =
    " <GUI a=\"1\" b = \"2 < 3\">\n <CONSTANTS>A = 1,\n B</CONSTANTS>\r\n"
    "\t<knob x=\"A\" y=\"\"/><slider drop z=\"&amp;\" / >\n"
    " <list><entry>one</entry><entry>two </ ENTRY ></list> tail </gui>";

// The whole tree in one line: name[attribute=value;...]"text"(children).
std::string printed(const XmlNode& node) {
    std::string text = node.name;
    if (!node.attributes.empty()) text += '[';
    for (const XmlAttribute& attribute : node.attributes) {
        text += attribute.name + '=' + attribute.value + ';';
    }
    if (!node.attributes.empty()) text += ']';
    if (!node.text.empty()) text += '"' + node.text + '"';
    if (!node.children.empty()) text += '(';
    for (const XmlNode& child : node.children) text += printed(child);
    if (!node.children.empty()) text += ')';
    return text;
}

// How the document reads, or "-1".
std::string treeOf(std::string_view document) {
    XmlNode node;
    return parseXml(document, 0, node) < 0 ? "-1" : printed(node);
}

std::string repeated(std::string_view part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

TEST(SkinXml, ReadsElementsAttributesAndText) {
    struct Case {
        const char* document;
        const char* tree;
    };
    const Case cases[] = {
        {"<a/>", "a"},
        {" \t\r\n<a />", "a"},
        {"<a / >", "a"},
        {"<a></a>", "a"},
        {"<a_1>x</a_1>", R"(a_1"x")"},
        {"<knob></KNOB>", "knob"},
        {"<a></ \n a \t>", "a"},
        {R"(<a x="10" X="11"/>)", "a[x=10;X=11;]"},
        {"<a x\n=\t\"1\"y=\"2\"_z=\"3\">", "-1"},
        {"<a x\n=\t\"1\"y=\"2\"_z=\"3\"/>", "a[x=1;y=2;_z=3;]"},
        {R"(<a x=""/>)", "a[x=;]"},
        {R"(<a x y="1" z/>)", "a[y=1;]"},
        {"<a x=\"<b/> '>\n\"/>", "a[x=<b/> '>\n;]"},
        {R"(<a x="&lt;&#65;">&amp;</a>)", R"(a[x=&lt;&#65;;]"&amp;")"},
        {"<a>one<b/>two</a>", R"(a"two"(b))"},
        {"<a>one<b/> \n</a>", R"(a"one"(b))"},
        {"<a> \n x y \n</a>", "a\"x y \n\""},
        {"<a><b><c/></b><d>t</d></a>", R"(a(b(c)d"t"))"},
        {"<a/>anything <! after", "a"},
        {kDocument,
         "GUI[a=1;b=2 < 3;]\"tail \"(CONSTANTS\"A = 1,\n B\"knob[x=A;y=;]slider[z=&amp;;]"
         R"(list(entry"one"entry"two ")))"},
    };
    for (const auto& [document, tree] : cases) {
        SCOPED_TRACE(document);
        EXPECT_EQ(treeOf(document), tree);
    }
}

TEST(SkinXml, RefusesWhatItDoesNotKnow) {
    const char* const documents[] = {
        "",
        " ",
        "text",
        "<",
        "< a/>",
        "<1/>",
        "<_a/>",
        "<>",
        R"(<?xml version="1.0"?><a/>)",
        "<!-- c --><a/>",
        "<!DOCTYPE a><a/>",
        "<a><!-- c --></a>",
        "<a><![CDATA[x]]></a>",
        "<a><?p?></a>",
        "<a>1 < 2</a>",
        "<a x='1'/>",
        "<a x=1/>",
        "<a x=/>",
        R"(<a "x"/>)",
        R"(<a x "1"/>)",
        R"(<a x="1/>)",
        R"(<a x-y="1"/>)",
        "<a/ x>",
        "<a/",
        "<a",
        "<a>",
        "<a>text",
        "<a></",
        "<a></a",
        "<a></a x>",
        "<a></b>",
        "<a></>",
        "<ab></a>",
        "<a></ab>",
        "<a><b></a></b>",
        "<a><b></a>",
    };
    for (const char* document : documents) EXPECT_EQ(treeOf(document), "-1") << document;
}

TEST(SkinXml, ReturnsThePositionAfterTheElement) {
    const std::string text = "<a/> <b>x</b >\n<c/>";
    const std::ptrdiff_t ends[] = {4, 14, 19, -1};
    std::ptrdiff_t position = 0;
    for (const std::ptrdiff_t end : ends) {
        XmlNode node;
        position = parseXml(text, position, node);
        EXPECT_EQ(position, end);
    }
    XmlNode node;
    for (const std::ptrdiff_t outside : {std::ptrdiff_t{-1}, std::ptrdiff_t{20}}) {
        EXPECT_EQ(parseXml(text, outside, node), -1);
    }
}

TEST(SkinXml, EndsAtAZeroByte) {
    EXPECT_EQ(treeOf(std::string_view("<a>\0</a>", 8)), "-1");
    EXPECT_EQ(treeOf(std::string_view("<a x=\"\0\"/>", 10)), "-1");
    EXPECT_EQ(treeOf(std::string_view("<a/>\0<", 6)), "a");
}

TEST(SkinAttributes, FindTheFirstOfANameWithoutRegardToCase) {
    XmlNode node;
    ASSERT_GT(parseXml(R"(<a x="1" X="2" empty="">text</a>)", 0, node), 0);
    const SkinAttributes attributes(node);
    EXPECT_EQ(*attributes.find("X"), "1");
    EXPECT_EQ(*attributes.find("EMPTY"), "");
    EXPECT_EQ(attributes.find("y"), nullptr);
    EXPECT_EQ(*attributes.find(""), "text");
    EXPECT_EQ(&attributes.node(), &node);

    const XmlNode bare;
    EXPECT_EQ(SkinAttributes(bare).find(""), nullptr);
}

TEST(SkinAttributes, RejectWhatIsTooLong) {
    const std::string name63(63, 'n');
    const std::string value127(127, '1');
    XmlNode node;
    node.attributes = {{name63, value127}, {name63 + 'n', "1"}, {"x", value127 + '1'}, {"x", "2"}};
    const SkinAttributes attributes(node);
    EXPECT_EQ(*attributes.find(name63), value127);
    EXPECT_EQ(attributes.find(name63 + 'n'), nullptr);
    EXPECT_EQ(*attributes.find("x"), "2");
}

TEST(SkinXmlHostile, EveryPrefixFails) {
    const std::string document = kDocument;
    for (std::size_t length = 0; length < document.size(); ++length) {
        EXPECT_EQ(treeOf(document.substr(0, length)), "-1") << length;
    }
}

TEST(SkinXmlHostile, NestingAndNumberAreBounded) {
    const int limit = editor::kMaxXmlDepth;
    EXPECT_NE(treeOf(repeated("<a>", limit) + repeated("</a>", limit)), "-1");
    EXPECT_EQ(treeOf(repeated("<a>", limit + 1) + repeated("</a>", limit + 1)), "-1");
    EXPECT_EQ(treeOf(repeated("<a>", 1000000)), "-1");

    XmlNode node;
    const int most = editor::kMaxXmlItems / 2;  // pairs, with the root as one more item
    const std::string pair = R"(<b x="1"/>)";
    ASSERT_GT(parseXml("<a>" + repeated(pair, most - 1) + "</a>", 0, node), 0);
    EXPECT_EQ(node.children.size(), most - 1u);
    EXPECT_EQ(parseXml("<a>" + repeated(pair, most) + "</a>", 0, node), -1);
}

TEST(SkinXmlHostile, HugeNamesDoNotHarm) {
    const std::string name(1000000, 'n');
    EXPECT_EQ(treeOf('<' + name + "/>"), name);
    const std::string name255(255, 'n');
    EXPECT_EQ(treeOf('<' + name255 + "></" + name255 + '>'), name255);
    EXPECT_EQ(treeOf('<' + name255 + "n></" + name255 + "n>"), "-1");
}

TEST(SkinXmlHostile, RandomMutationsNeverReachOutside) {
    for (std::uint32_t seed = 0; seed < 5000; ++seed) {
        const std::string document = randomlyMutated(kDocument, "<>/\"= aZ_!?\n", seed);
        XmlNode node;
        const std::ptrdiff_t end = parseXml(document, 0, node);
        ASSERT_LE(end, static_cast<std::ptrdiff_t>(document.size())) << "seed " << seed;
        ASSERT_TRUE(end == -1 || document.at(static_cast<std::size_t>(end) - 1) == '>')
            << "seed " << seed;
    }
}

}  // namespace
