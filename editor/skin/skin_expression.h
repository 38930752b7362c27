// The expression language of skin files: constants, statements and the CONSTANTS element.
//
// Operators, tightest first: * /, + -, | (bitwise or), & (bitwise and), $ (shift left). All
// numbers are doubles; the bitwise operators work on operands truncated to 32 bits.
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
constexpr std::size_t kMaxSkinStatementLength = 255;  // of one statement in CONSTANTS

// Expressions nested deeper fail. Each level takes at least one character, so every statement and
// every attribute value of legal length can be read.
constexpr int kMaxSkinExpressionDepth = 256;

// The named values of one skin load. Names compare without regard to case.
class SkinConstantTable {
  public:
    using Entries = std::map<std::string, double, LessIgnoringCase>;

    std::optional<double> find(std::string_view name) const;
    void assign(std::string_view name, double value);  // a known name keeps its first spelling
    const Entries& entries() const { return entries_; }

  private:
    Entries entries_;
};

// A statement is "NAME = expression", which defines the name, or a bare expression. Returns its
// value, or nothing when it fails (unknown or over-long name, number with two points, nesting too
// deep). Text after the end of the expression is ignored.
std::optional<double> evaluateStatement(SkinConstantTable& table, std::string_view text,
                                        std::size_t& position);
std::optional<double> evaluateStatement(SkinConstantTable& table, std::string_view text);

// Reads an expression made of operators that bind tighter than minimumPrecedence. The position
// moves to the end of the expression only when no operator was applied, or when an operator that
// binds too loosely ended it. Otherwise it stays, and the caller reads the same characters again:
// "1+-2*3" is -11 and "(1+2)*3" is 3. Skins rely on it.
std::optional<double> evaluateExpression(const SkinConstantTable& table, std::string_view text,
                                         std::size_t& position, int minimumPrecedence);

// Evaluates the text of a CONSTANTS element: statements separated by commas and line ends; a
// statement without "=" is a name that gets the value before it plus 1. Each statement that fails
// is reported (title: the statement), and the rest is still evaluated.
void evaluateConstants(SkinConstantTable& table, std::string_view text,
                       const platform::MessageHandler& report);

// Truncation toward zero. What does not fit (NaN too) becomes INT32_MIN, as x86 converts.
std::int32_t truncateToInt32(double value);

}  // namespace editor
