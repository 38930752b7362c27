// Skin expressions: values, returned positions, constants and hostile texts.
#include "editor/skin/skin_expression.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/random_mutation.h"
#include "tests/support/recorded_messages.h"

namespace {

using editor::evaluateConstants;
using editor::evaluateStatement;
using editor::SkinConstantTable;

SkinConstantTable tableOf(const std::string& constants) {
    SkinConstantTable table;
    evaluateConstants(table, constants,
                      [](const std::string& title, const std::string&, platform::MessageIcon) {
                          ADD_FAILURE() << "refused: " << title;
                      });
    return table;
}

struct ValueCase {
    const char* text;
    double value;
};

void expectValues(const std::vector<ValueCase>& cases) {
    SkinConstantTable table;
    for (const auto& [text, value] : cases) {
        SCOPED_TRACE(text);
        const auto result = evaluateStatement(table, text);
        ASSERT_TRUE(result);
        EXPECT_EQ(*result, value);
    }
}

TEST(SkinExpression, FollowsItsOwnPrecedences) {
    expectValues({
        {"1+2*3+4", 11},
        {"10-4-3", 3},
        {"64/4/2", 8},
        {"2*3-4/8", 5.5},
        {"1|2&3", 3},   // (1|2)&3, the reverse of the usual order
        {"4&1|4", 4},   // 4&(1|4)
        {"1+1$2", 8},   // (1+1)$2
        {"1$1+1", 4},   // 1$(1+1)
        {"1$2$3", 32},  // (1$2)$3
        {"1$1|2", 8},   // 1$(1|2)
        {"6 & 3 $ 1", 4},
        {"\t 1 +\t2 ", 3},
        {"1\n+2", 1},  // only blanks and tabs are whitespace
    });
}

TEST(SkinExpression, ReadsAgainWhatAnInnerExpressionDidNotHandBack) {
    expectValues({
        {"(1+2)*3", 3},
        {"2*(1+2)+1", 6},
        {"3*(1+2)", 9},
        {"1+-2*3", -11},
        {"(1)*3", 1},  // a ")" ends every level
        {"(5", 5},
        {"5)+3", 5},
        {"-(1+2)", -3},
        {"-2*3", -6},
        {"2*-3", -6},
        {"1--1", 2},
        {"--4", 4},
        {"-(-1+2)", 0},   // -1, then "-1+2" again
        {"(-2*3", -12},   // -6, then "-2*3" again
        {"1|-2*3", -11},  // -5, then "-2*3" again
    });
}

TEST(SkinExpression, ReadsNumbersDigitByDigit) {
    expectValues({
        {"7.", 7},
        {"0.5", 5 * 0.1},
        {"1.25", 125 * (0.1 * 0.1)},
        {"007", 7},
        {"", 0},
        {"   ", 0},
        {".5", 0},
        {"+5", 5},
        {"*5", 0},
        {"5 6", 5},
        {"5px", 5},
        {"#", 0},
    });
    SkinConstantTable table;
    for (const char* text : {"1.5.2", "1..", "1+2.0.", "(1.5.2", "-1.5.2"}) {
        EXPECT_FALSE(evaluateStatement(table, text)) << text;
    }
}

TEST(SkinExpression, TruncatesBitwiseOperandsTo32Bits) {
    const double lowest = std::numeric_limits<std::int32_t>::min();
    expectValues({
        {"3.9|0", 3},
        {"0-3.9|0", -3},
        {"2147483647.9|0", 2147483647.0},
        {"2147483648|0", lowest},
        {"0-2147483648.9|0", lowest},
        {"0-2147483649|0", lowest},
        {"99999999999|1", lowest + 1},
        {"1/0|0", lowest},
        {"0/0|0", lowest},
        {"1$31", lowest},
        {"1$32", 1},  // the count is masked to 5 bits
        {"1$33.9", 2},
        {"3$31", lowest},
    });
}

TEST(SkinExpression, DividesByZeroAsFloatingPointDoes) {
    SkinConstantTable table;
    EXPECT_EQ(*evaluateStatement(table, "1/0"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(*evaluateStatement(table, "-1/0"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(*evaluateStatement(table, "0/0")));
}

TEST(SkinExpression, HandsThePositionBackOnlyWhenNothingOrALooserOperatorEndsIt) {
    struct Case {
        const char* text;
        int minimum;
        double value;
        std::size_t position;
    };
    const Case cases[] = {
        {"12 ", 0, 12, 3},    // no operator applied
        {"1*2+3", 18, 2, 3},  // stopped at "+"
        {"1+2", 0, 3, 0},     // stopped at the end after an operator
        {"1+2)", -1, 3, 0},  {"-5*2", 19, -5, 2}, {"(4)", 0, 4, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        std::size_t position = 0;
        const auto value = editor::evaluateExpression({}, c.text, position, c.minimum);
        ASSERT_TRUE(value);
        EXPECT_EQ(*value, c.value);
        EXPECT_EQ(position, c.position);
    }
}

TEST(SkinExpression, StartsWhereItIsTold) {
    SkinConstantTable table;
    std::size_t position = 4;
    EXPECT_EQ(evaluateStatement(table, "9+9 A = 4", position), 4.0);
    EXPECT_EQ(table.find("a"), 4.0);
    position = 1000;
    EXPECT_EQ(evaluateStatement(table, "1", position), 0.0);
}

TEST(SkinStatement, DefinesAndReplacesNamesWithoutRegardToCase) {
    SkinConstantTable table;
    EXPECT_EQ(evaluateStatement(table, " a = 4"), 4.0);
    EXPECT_EQ(evaluateStatement(table, "A"), 4.0);
    EXPECT_EQ(evaluateStatement(table, "_b2=a*2"), 8.0);
    EXPECT_EQ(evaluateStatement(table, "A = a + _B2"), 12.0);
    EXPECT_EQ(evaluateStatement(table, "a"), 12.0);
    EXPECT_EQ(evaluateStatement(table, "c = d = 5"), std::nullopt);
    EXPECT_EQ(table.entries().size(), 2u);
}

TEST(SkinStatement, FailsOnUnknownNamesAndDefinesNothing) {
    SkinConstantTable table;
    for (const char* text : {"A", "-A", "1+A", "(A", "X = A", "X = 1.2.3", "A+1 = 3"}) {
        EXPECT_FALSE(evaluateStatement(table, text)) << text;
    }
    EXPECT_TRUE(table.entries().empty());
}

TEST(SkinStatement, RefusesNamesBeyond59Characters) {
    SkinConstantTable table;
    const std::string longest(59, 'n');
    EXPECT_EQ(evaluateStatement(table, longest + " = 2"), 2.0);
    EXPECT_EQ(evaluateStatement(table, longest), 2.0);
    EXPECT_FALSE(evaluateStatement(table, longest + "n = 2"));
    EXPECT_FALSE(evaluateStatement(table, longest + "n"));
    EXPECT_FALSE(evaluateStatement(table, "1+" + longest + "n"));
}

TEST(SkinConstants, CountsBareNamesUpFromTheValueBefore) {
    struct Case {
        const char* constants;
        std::vector<std::pair<const char*, double>> values;
    };
    const Case cases[] = {
        {"X = 4, Y, Z = X*2, W", {{"x", 4}, {"y", 5}, {"z", 8}, {"w", 9}}},
        {"A", {{"A", 1}}},
        {"A = 10, B, C", {{"B", 11}, {"C", 12}}},
        {"A = 2.5\nB", {{"B", 3}}},
        {"A = -2.5\r\n\tB ,,\n C", {{"B", -1}, {"C", 0}}},
        {"A = 2147483647, B", {{"B", -2147483648.0}}},
        {"A = 99999999999, B", {{"B", -2147483647.0}}},
        {"A = 7, 3, B", {{"A", 7}, {"B", 4}}},  // "3 = 8" is the expression 3
        {" , \n", {}},
        {"", {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.constants);
        const SkinConstantTable table = tableOf(c.constants);
        for (const auto& [name, value] : c.values) EXPECT_EQ(table.find(name), value) << name;
    }
}

TEST(SkinConstants, ReportsFailedStatementsAndGoesOn) {
    const std::string longName(60, 'n');
    const std::string longest = "B = 3" + std::string(250, ' ');
    const std::string tooLong = "C = 4" + std::string(251, ' ');
    SkinConstantTable table;
    RecordedMessages messages;
    evaluateConstants(
        table, "A = 2, Q = nope, " + longName + ", D\nE = 1.2.3\n" + longest + "," + tooLong + ",F",
        platform::showMessage);
    const char* const text = "Expression parser error";
    const std::vector<RecordedMessage> expected = {{"Q = nope", text},
                                                   {longName + " = 3", text},
                                                   {"E = 1.2.3", text},
                                                   {tooLong.substr(0, 255), text}};
    EXPECT_EQ(messages.all, expected);
    EXPECT_EQ(table.find("D"), 3.0);
    EXPECT_EQ(table.find("B"), 3.0);
    EXPECT_EQ(table.find("C"), std::nullopt);
    EXPECT_EQ(table.find("F"), 4.0);
}

// These would take more than 2^30 steps if every level read its text again.
TEST(SkinExpressionHostile, NestedRereadingStaysCheap) {
    SkinConstantTable table;
    for (const char* group : {"(-1|", "(-(", "(-2*", "1&-1|-("}) {
        SCOPED_TRACE(group);
        std::string text;
        while (text.size() < editor::kMaxSkinStatementLength - 8) text += group;
        EXPECT_TRUE(evaluateStatement(table, text + "-1+1"));
    }
}

TEST(SkinExpressionHostile, NestingFailsBeforeTheStackEnds) {
    SkinConstantTable table;
    for (const char* level : {"(", "-"}) {
        std::string text;
        for (int i = 0; i < 255; ++i) text += level;
        EXPECT_TRUE(evaluateStatement(table, text)) << level;
        for (int i = 0; i < 1000000; ++i) text += level;
        EXPECT_FALSE(evaluateStatement(table, text)) << level;
    }
    EXPECT_FALSE(evaluateStatement(table, std::string(1000000, 'n')));
    EXPECT_TRUE(std::isnan(*evaluateStatement(table, "0." + std::string(1000000, '9'))));
}

TEST(SkinExpressionHostile, RandomMutationsNeverHarm) {
    const std::string seed = "A = 10, B, C = (A + 2) * 3 | -B & 7 $ 2\nD = 1.5 / 0, E";
    for (std::uint32_t i = 0; i < 5000; ++i) {
        SkinConstantTable table;
        std::size_t failures = 0;
        const std::string text = randomlyMutated(seed, "AB_09.+-*/|&$(),= \n", i);
        evaluateConstants(table, text,
                          [&](const std::string& title, const std::string&, platform::MessageIcon) {
                              ++failures;
                              EXPECT_FALSE(title.empty());
                          });
        EXPECT_LE(table.entries().size() + failures, text.size()) << "seed " << i;
    }
}

}  // namespace
