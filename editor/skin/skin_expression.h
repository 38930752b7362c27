// The expression language of skin files: constants, statements and the CONSTANTS element.
//
// Operators from tightest to loosest: * /, + -, | (bitwise or), & (bitwise and), $ (shift left).
// All numbers are doubles. The bitwise operators truncate their operands to 32 bits.
//
// The order of the bitwise operators and the re-reading described below are unusual. They are
// intentional: existing skins depend on them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "editor/skin/skin_text.h"
#include "platform/message_box.h"

namespace editor {

constexpr std::size_t kMaxSkinNameLength = 59;        // a longer name fails its statement
constexpr std::size_t kMaxSkinStatementLength = 255;  // one statement in CONSTANTS

// Deeper expressions fail. Each level needs at least one character, so every statement and
// attribute value of legal length stays within the limit.
constexpr int kMaxSkinExpressionDepth = 256;

// The constants of one skin. Names ignore case.
class SkinConstantTable {
  public:
    using Entries = std::map<std::string, double, LessIgnoringCase>;

    std::optional<double> find(std::string_view name) const;
    void assign(std::string_view name, double value);  // keeps the first spelling of a name
    const Entries& entries() const { return entries_; }

  private:
    Entries entries_;
};

// A statement is either "NAME = expression", which defines the name, or a plain expression. Returns
// its value, or nothing on an unknown or over-long name, a number with two points, or nesting that
// is too deep. Ignores text after the end of the expression.
std::optional<double> evaluateStatement(SkinConstantTable& table, std::string_view text,
                                        std::size_t& position);
std::optional<double> evaluateStatement(SkinConstantTable& table, std::string_view text);

// Reads an expression of operators that bind tighter than minimumPrecedence. The position moves to
// the end of the expression only if no operator was applied, or if an operator that binds too
// loosely ended it. Otherwise it stays, and the caller reads the same characters again: "1+-2*3" is
// -11 and "(1+2)*3" is 3.
std::optional<double> evaluateExpression(const SkinConstantTable& table, std::string_view text,
                                         std::size_t& position, int minimumPrecedence);

// Evaluates the text of a CONSTANTS element. Commas and line ends separate the statements. A
// statement without "=" is a name; it gets the previous value plus 1. A statement that fails is
// reported with its text as the title, and evaluation goes on.
void evaluateConstants(SkinConstantTable& table, std::string_view text,
                       const platform::MessageHandler& report);

// Truncates toward zero. NaN and values out of range become INT32_MIN, as on x86.
std::int32_t truncateToInt32(double value);

}  // namespace editor
