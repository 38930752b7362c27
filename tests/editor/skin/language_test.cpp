// Plays the scripts of the skin language: expressions, XML, elements and reports.
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "editor/skin/skin_loader.h"
#include "editor/skin/skin_report.h"
#include "editor/skin/skin_values.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/script.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace editor;

std::string decimal(double value) {
    char digits[32];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

// Text in which "\n", "\t", "\r", "\0" and "\s" stand for white space and the zero byte.
std::string unescaped(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string names = "ntr0s";
        const std::size_t which =
            text[i] == '\\' && i + 1 < text.size() ? names.find(text[i + 1]) : std::string::npos;
        plain += which == std::string::npos ? text[i] : "\n\t\r\0 "[which];
        if (which != std::string::npos) ++i;
    }
    return plain;
}

// The whole tree in one line: name[attribute=value;...]"text"(children).
std::string printed(const XmlNode& node) {
    std::string text = node.name;
    if (!node.attributes.empty()) text += '[';
    for (const XmlAttribute& attribute : node.attributes)
        text += attribute.name + '=' + attribute.value + ';';
    if (!node.attributes.empty()) text += ']';
    if (!node.text.empty()) text += '"' + node.text + '"';
    if (!node.children.empty()) text += '(';
    for (const XmlNode& child : node.children) text += printed(child);
    if (!node.children.empty()) text += ')';
    return text;
}

std::string treeOf(std::string_view document) {
    XmlNode node;
    return parseXml(document, 0, node) < 0 ? "refused" : printed(node);
}

struct CommaPunctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

class SkinLanguage : public testing::TestWithParam<script::Case> {
  protected:
    SkinLanguage() {
        on("value",
           [this](const std::string& text) { return shown(evaluateStatement(table, text)); });
        on("expression", [this](const std::string& text) {
            std::size_t position = 0;
            const std::size_t blank = text.find(' ');
            const auto value = evaluateExpression(table, text.substr(blank + 1), position,
                                                  std::stoi(text.substr(0, blank)));
            return shown(value) + " to " + std::to_string(position);
        });
        on("constants", [this](const std::string& text) { return constants(text); });
        on("tree", [](const std::string& text) {
            std::string tree = treeOf(text);
            for (std::size_t at; (at = tree.find('\n')) != std::string::npos;)
                tree.replace(at, 1, "\\n");
            return tree;
        });
        on("colour", [](const std::string& text) {
            const auto colour = parseSkinColour(text);
            if (!colour) return std::string("none");
            char digits[8];
            std::snprintf(digits, sizeof digits, "%06x", *colour);
            return std::string(digits);
        });
        on("file", [this](const std::string& name) {
            folder.write(name, "");
            return std::string();
        });
        // A kind of element with its attributes by commas: numbers, optional numbers, pictures,
        // optional pictures.
        runner.commands["attributes"] = [this](std::istream& words) {
            const std::string element = script::word(words);
            std::vector<std::string> lists[4];
            for (auto& list : lists) {
                std::istringstream names(script::word(words));
                for (std::string name; std::getline(names, name, ',');)
                    if (name != "-") list.push_back(name);
            }
            spoilEach(element, lists);
        };
        on("report", [this](const std::string&) { return report(); });
        runner.markup = [this](const std::string& line) { skin += line + '\n'; };
    }

    void on(const char* name, std::function<std::string(const std::string&)> answer) {
        runner.commands[name] = [this, answer](std::istream& words) {
            runner.say(answer(unescaped(script::restOf(words))));
            words.setstate(std::ios::eofbit);
        };
    }
    static std::string shown(std::optional<double> value) {
        return value ? decimal(*value) : "fails";
    }
    // What the text defines, and each statement that fails.
    static std::string constants(const std::string& text) {
        SkinConstantTable defined;
        RecordedMessages messages;
        evaluateConstants(defined, text, platform::showMessage);
        std::string line;
        for (const auto& [name, value] : defined.entries())
            line += (line.empty() ? "" : " ") + name + '=' + decimal(value);
        for (const RecordedMessage& message : messages.all) {
            EXPECT_EQ(message.text, "Expression parser error");
            line += " ! " + message.title;
        }
        return line;
    }
    std::string report() {
        folder.write("skin.xml", std::exchange(skin, {}));
        std::ostringstream out;
        out.imbue(std::locale(std::locale::classic(), new CommaPunctuation));
        const int complaints = reportSkin(folder.path(), out);
        std::string text = out.str();
        for (std::size_t at; (at = text.find(folder.path())) != std::string::npos;)
            text.replace(at, folder.path().size(), "");
        return text + std::to_string(complaints) + " complaints\n";
    }

    // Reports an element once for each way to spoil one attribute, and compares the messages.
    void spoilEach(const std::string& element, const std::vector<std::string> (&lists)[4]) {
        const auto& [numbers, optionalNumbers, pictures, optionalPictures] = lists;
        folder.write("a.png", "");
        std::string expected;
        // Adds the correct element except for one attribute: replaced, or left out if null.
        const auto add = [&](const std::string& spoilt, const char* instead) {
            skin += '<' + element;
            for (const auto& list : lists)
                for (const std::string& name : list) {
                    const bool isPicture = &list >= &pictures;
                    const char* const value = name == spoilt ? instead : isPicture ? "a.png" : "1";
                    if (value) skin += ' ' + name + "=\"" + value + '"';
                }
            skin += "/>";
        };
        const auto fault = [&](const char* what, const std::string& name) {
            expected += "! Skin Error: " + (what + (' ' + name)) + " for object " + element + '\n';
        };
        skin = "<GUI>";
        for (const auto* const list : {&numbers, &pictures})
            for (const std::string& name : *list) {
                add(name, nullptr);
                fault("Missing tag", name);
                expected += element + " is abandoned\n";
            }
        for (const auto* const list : {&numbers, &optionalNumbers})
            for (const std::string& name : *list) {
                add(name, "nope");
                fault("Error calculating value of tag", name);
                if (list == &numbers) expected += element + " is abandoned\n";
            }
        const bool otherTitle = element == "onoff" || element == "kick" || element == "about";
        for (const auto* const list : {&pictures, &optionalPictures})
            for (const std::string& name : *list) {
                add(name, "b.png");
                expected +=
                    (otherTitle ? "! QXSKIN: " : "! ") + std::string("Bitmap not found: b.png\n");
                expected += element + " is abandoned\n";
            }
        skin += "</GUI>";
        std::istringstream lines(report());
        std::string faults;
        for (std::string line; std::getline(lines, line);)
            if (line[0] == '!' || line.find(" is abandoned") != std::string::npos)
                faults += line + '\n';
        EXPECT_EQ(faults, expected);
    }

    const TemporaryFolder folder;
    std::string skin;
    SkinConstantTable table;
    script::Runner runner;
};

TEST_P(SkinLanguage, IsReadAsItsScriptSays) {
    runner.play(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, SkinLanguage,
                         testing::ValuesIn(script::casesOf(QUARZEL_SKIN_SCRIPTS "language.txt")),
                         script::nameOf);

std::string repeated(std::string_view part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

TEST(SkinLimits, LengthsAreCountedExactly) {
    SkinConstantTable table;
    const std::string name59(59, 'n');
    EXPECT_EQ(evaluateStatement(table, name59 + " = 2"), 2.0);
    EXPECT_EQ(evaluateStatement(table, name59), 2.0);
    for (const char* const before : {"", "1+", "-"})
        EXPECT_FALSE(evaluateStatement(table, before + name59 + "n")) << before;
    EXPECT_FALSE(evaluateStatement(table, name59 + "n = 2"));

    const std::string longest = "B = 3" + std::string(250, ' ');
    const RecordedMessages messages;
    evaluateConstants(table, longest + ',' + longest + " ," + name59 + "n,F",
                      platform::showMessage);
    EXPECT_EQ(messages.all,
              (std::vector<RecordedMessage>{{longest, "Expression parser error"},
                                            {name59 + "n = 4", "Expression parser error"}}));
    EXPECT_EQ(table.find("F"), 4.0);

    const std::string name63(63, 'n');
    const std::string value127(127, '1');
    XmlNode node;
    node.attributes = {{name63, value127}, {name63 + 'n', "1"}, {"x", value127 + '1'}, {"x", "2"}};
    const SkinAttributes attributes(node);
    EXPECT_EQ(*attributes.find(name63), value127);
    EXPECT_EQ(attributes.find(name63 + 'n'), nullptr);
    EXPECT_EQ(*attributes.find("x"), "2");

    const std::string name255(255, 'n');
    EXPECT_EQ(treeOf('<' + name255 + "></" + name255 + '>'), name255);
    EXPECT_EQ(treeOf('<' + name255 + "n></" + name255 + "n>"), "refused");
    EXPECT_EQ(treeOf('<' + std::string(1000000, 'n') + "/>"), std::string(1000000, 'n'));
}

TEST(SkinLimits, NestingAndNumbersAreBounded) {
    SkinConstantTable table;
    for (const char* const level : {"(", "-"}) {
        EXPECT_TRUE(evaluateStatement(table, repeated(level, kMaxSkinExpressionDepth - 1)))
            << level;
        EXPECT_FALSE(evaluateStatement(table, repeated(level, kMaxSkinExpressionDepth))) << level;
        EXPECT_FALSE(evaluateStatement(table, repeated(level, 1000000))) << level;
    }
    EXPECT_FALSE(evaluateStatement(table, std::string(1000000, 'n')));
    EXPECT_TRUE(std::isnan(*evaluateStatement(table, "0." + std::string(1000000, '9'))));
    EXPECT_TRUE(std::isnan(*evaluateStatement(table, "0/0")));

    EXPECT_NE(treeOf(repeated("<a>", kMaxXmlDepth) + repeated("</a>", kMaxXmlDepth)), "refused");
    EXPECT_EQ(treeOf(repeated("<a>", kMaxXmlDepth + 1) + repeated("</a>", kMaxXmlDepth + 1)),
              "refused");
    EXPECT_EQ(treeOf(repeated("<a>", 1000000)), "refused");
    XmlNode node;
    const int most = kMaxXmlItems / 2;  // pairs, with the root as one more item
    const std::string pair = R"(<b x="1"/>)";
    ASSERT_GT(parseXml("<a>" + repeated(pair, most - 1) + "</a>", 0, node), 0);
    EXPECT_EQ(node.children.size(), most - 1u);
    EXPECT_EQ(parseXml("<a>" + repeated(pair, most) + "</a>", 0, node), -1);
}

// These would take more than 2^30 steps if every level read its text again.
TEST(SkinLimits, NestedRereadingStaysCheap) {
    SkinConstantTable table;
    for (const char* group : {"(-1|", "(-(", "(-2*", "1&-1|-("}) {
        SCOPED_TRACE(group);
        std::string text;
        while (text.size() < kMaxSkinStatementLength - 8) text += group;
        EXPECT_TRUE(evaluateStatement(table, text + "-1+1"));
    }
}

TEST(SkinXml, ReturnsThePositionAfterTheElement) {
    const std::string text = "<a/> <b>x</b >\n<c/>";
    std::ptrdiff_t position = 0;
    for (const std::ptrdiff_t end : {4, 14, 19, -1}) {
        XmlNode node;
        position = parseXml(text, position, node);
        EXPECT_EQ(position, end);
    }
    XmlNode node;
    for (const std::ptrdiff_t outside : {-1, 20}) EXPECT_EQ(parseXml(text, outside, node), -1);
    std::size_t start = 4;
    SkinConstantTable table;
    EXPECT_EQ(evaluateStatement(table, "9+9 A = 4", start), 4.0);
    start = 1000;
    EXPECT_EQ(evaluateStatement(table, "1", start), 0.0);
}

TEST(SkinXml, EveryPrefixIsRefused) {
    const std::string document =
        " <GUI a=\"1\" b = \"2 < 3\">\n <CONSTANTS>A = 1,\n B</CONSTANTS>\r\n"
        "\t<knob x=\"A\" y=\"\"/><slider drop z=\"&amp;\" / >\n"
        " <list><entry>one</entry><entry>two </ ENTRY ></list> tail </gui>";
    EXPECT_EQ(treeOf(document),
              "GUI[a=1;b=2 < 3;]\"tail \"(CONSTANTS\"A = 1,\n B\"knob[x=A;y=;]slider[z=&amp;;]"
              R"(list(entry"one"entry"two ")))");
    for (std::size_t length = 0; length < document.size(); ++length)
        EXPECT_EQ(treeOf(document.substr(0, length)), "refused") << length;
}

TEST(SkinXml, AttributesAreTheFirstOfTheirNameAndTheTextHasNone) {
    XmlNode node;
    ASSERT_GT(parseXml(R"(<a x="1" X="2" empty="">text</a>)", 0, node), 0);
    const SkinAttributes attributes(node);
    EXPECT_EQ(*attributes.find("X"), "1");
    EXPECT_EQ(*attributes.find("EMPTY"), "");
    EXPECT_EQ(attributes.find("y"), nullptr);
    EXPECT_EQ(*attributes.find(""), "text");
    EXPECT_EQ(SkinAttributes(XmlNode()).find(""), nullptr);
}

TEST(SkinLoader, TellsWhyThereIsNothing) {
    const struct {
        std::string document;
        SkinLoad result;
        bool said;
    } rows[] = {
        {"<GUI/>", SkinLoad::kBuilt, false},
        {std::string(2u << 20, ' ') + "<GUI/>", SkinLoad::kBuilt, false},
        {"<a/>\n<GUI><b/></GUI> <!-- ignored", SkinLoad::kBuilt, false},
        {"<a/>", SkinLoad::kGuiMissing, true},
        {"<a><GUI/></a>", SkinLoad::kGuiMissing, true},
        {"<a/><b/>  ", SkinLoad::kGuiMissing, true},
        {"<a/><GUI>", SkinLoad::kGuiMissing, true},
        {"", SkinLoad::kUnreadable, false},
        {"<GUI>", SkinLoad::kUnreadable, false},
        {R"(<?xml version="1.0"?><GUI/>)", SkinLoad::kUnreadable, false},
        {"<GUI/>" + std::string(kMaxSkinFileBytes - 6, ' '), SkinLoad::kBuilt, false},
        {"<GUI/>" + std::string(kMaxSkinFileBytes - 5, ' '), SkinLoad::kUnreadable, false},
    };
    const TemporaryFolder folder;
    const auto ignore = [](const std::string&, const SkinAttributes&) {};
    EXPECT_EQ(loadSkin(folder.path(), SkinElements::kAll, ignore), SkinLoad::kUnreadable);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.document.substr(0, 40));
        const RecordedMessages messages;
        folder.write("skin.xml", row.document);
        EXPECT_EQ(loadSkin(folder.path(), SkinElements::kAll, ignore), row.result);
        std::vector<RecordedMessage> said;
        if (row.said) said = {{"XML error", "<GUI> node missing", platform::MessageIcon::kError}};
        EXPECT_EQ(messages.all, said);
    }
}

TEST(SkinLoader, HandsOverTheChildrenOfGuiInOrder) {
    const TemporaryFolder folder;
    folder.write("skin.xml",
                 "<gui><Knob/><BackGround/><list><knob/></list><knob/></gui><GUI><a/></GUI>");
    for (const auto& [wanted, names] : {std::pair(SkinElements::kAll, "Knob BackGround list knob "),
                                        {SkinElements::kBackgroundOnly, "BackGround "}}) {
        std::string found;
        const auto note = [&found](const std::string& name, const SkinAttributes&) {
            found += name + ' ';
        };
        EXPECT_EQ(loadSkin(folder.path(), wanted, note), SkinLoad::kBuilt);
        EXPECT_EQ(found, names);
    }
}

}  // namespace
