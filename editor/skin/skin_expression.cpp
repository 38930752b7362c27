// Evaluates skin expressions by precedence climbing.
#include "editor/skin/skin_expression.h"

#include <limits>
#include <utility>

namespace editor {
namespace {

constexpr int kNoOperator = 0;
constexpr int kUnaryMinusPrecedence = 19;
constexpr int kGroupMinimum = -1;

constexpr int precedenceOf(char symbol) {
    switch (symbol) {
        case '*':
        case '/':
            return 19;
        case '+':
        case '-':
            return 18;
        case '|':
            return 17;
        case '&':
            return 16;
        case '$':
            return 15;
        default:
            return kNoOperator;
    }
}

double shiftedLeft(double left, double right) {
    const auto bits = static_cast<std::uint32_t>(truncateToInt32(left));
    const auto count = static_cast<std::uint32_t>(truncateToInt32(right)) & 31u;
    return static_cast<std::int32_t>(bits << count);
}

double combine(char symbol, double left, double right) {
    switch (symbol) {
        case '*':
            return left * right;
        case '/':
            return left / right;
        case '+':
            return left + right;
        case '-':
            return left - right;
        case '|':
            return truncateToInt32(left) | truncateToInt32(right);
        case '&':
            return truncateToInt32(left) & truncateToInt32(right);
        default:
            return shiftedLeft(left, right);
    }
}

char charAt(std::string_view text, std::size_t position) {
    return position < text.size() ? text[position] : '\0';
}

std::size_t skipBlanks(std::string_view text, std::size_t position) {
    while (charAt(text, position) == ' ' || charAt(text, position) == '\t') ++position;
    return position;
}

// Evaluates one text. It remembers the result at each position, because callers may read the same
// characters again; without that, every nested group would double the work.
class Evaluator {
  public:
    Evaluator(const SkinConstantTable& table, std::string_view text) : table_(table), text_(text) {}

    std::optional<double> expression(std::size_t& position, int minimum) {
        const auto key = std::make_pair(position, minimum);
        auto known = known_.find(key);
        if (known == known_.end()) {
            if (depth_ == kMaxSkinExpressionDepth) return std::nullopt;
            ++depth_;
            std::size_t end = position;
            const auto value = read(end, minimum);
            --depth_;
            if (!value) return std::nullopt;
            known = known_.emplace(key, Result{*value, end}).first;
        }
        position = known->second.end;
        return known->second.value;
    }

  private:
    struct Result {
        double value;
        std::size_t end;
    };

    std::optional<double> read(std::size_t& position, int minimum) {
        std::size_t next = skipBlanks(text_, position);
        auto left = operand(next);
        for (bool applied = false; left; applied = true) {
            next = skipBlanks(text_, next);
            const char symbol = charAt(text_, next);
            const int precedence = precedenceOf(symbol);
            if (precedence == kNoOperator && applied) break;  // leave the caller's position
            if (precedence == kNoOperator || precedence <= minimum) {
                position = next;
                break;
            }
            ++next;
            const auto right = expression(next, precedence);
            if (!right) return std::nullopt;
            left = combine(symbol, *left, *right);
        }
        return left;
    }

    std::optional<double> operand(std::size_t& position) {
        const char first = charAt(text_, position);
        if (first == '-') {
            const auto value = expression(++position, kUnaryMinusPrecedence);
            return value ? std::optional<double>(-*value) : std::nullopt;
        }
        if (first == '(') return expression(++position, kGroupMinimum);
        if (isDigit(first)) return number(position);
        if (startsName(first)) return constant(position);
        return 0.0;
    }

    std::optional<double> number(std::size_t& position) const {
        double value = 0.0;
        double scale = 1.0;
        bool hasPoint = false;
        for (;; ++position) {
            const char c = charAt(text_, position);
            if (isDigit(c)) {
                value = value * 10.0 + (c - '0');
                if (hasPoint) scale *= 0.1;
            } else if (c != '.') {
                return value * scale;
            } else if (std::exchange(hasPoint, true)) {
                return std::nullopt;
            }
        }
    }

    std::optional<double> constant(std::size_t& position) const {
        const std::string_view name = nameAt(text_, position);
        position += name.size();
        return table_.find(name);  // finds no over-long name: the table holds none
    }

    const SkinConstantTable& table_;
    std::string_view text_;
    std::map<std::pair<std::size_t, int>, Result> known_;  // by position, precedence
    int depth_ = 0;
};

bool separatesStatements(char c) {
    return c == '\n' || c == '\r' || c == ',';
}

// INT32_MAX wraps to INT32_MIN.
std::int32_t integerAfter(double value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(truncateToInt32(value)) + 1u);
}

}  // namespace

std::int32_t truncateToInt32(double value) {
    const bool fits = value > -2147483649.0 && value < 2147483648.0;
    return fits ? static_cast<std::int32_t>(value) : std::numeric_limits<std::int32_t>::min();
}

std::optional<double> SkinConstantTable::find(std::string_view name) const {
    const auto entry = entries_.find(name);
    return entry == entries_.end() ? std::nullopt : std::optional<double>(entry->second);
}

void SkinConstantTable::assign(std::string_view name, double value) {
    entries_.insert_or_assign(std::string(name), value);
}

std::optional<double> evaluateExpression(const SkinConstantTable& table, std::string_view text,
                                         std::size_t& position, int minimumPrecedence) {
    return Evaluator(table, text).expression(position, minimumPrecedence);
}

std::optional<double> evaluateStatement(SkinConstantTable& table, std::string_view text,
                                        std::size_t& position) {
    const std::size_t start = skipBlanks(text, position);
    if (!startsName(charAt(text, start))) return evaluateExpression(table, text, position, 0);

    const std::string_view name = nameAt(text, start);
    if (name.size() > kMaxSkinNameLength) return std::nullopt;
    const std::size_t afterName = skipBlanks(text, start + name.size());
    if (charAt(text, afterName) != '=') {
        position = start;
        return evaluateExpression(table, text, position, 0);
    }
    position = afterName + 1;
    const auto value = evaluateExpression(table, text, position, 0);
    if (value) table.assign(name, *value);
    return value;
}

std::optional<double> evaluateStatement(SkinConstantTable& table, std::string_view text) {
    std::size_t position = 0;
    return evaluateStatement(table, text, position);
}

void evaluateConstants(SkinConstantTable& table, std::string_view text,
                       const platform::MessageHandler& report) {
    double previous = 0.0;
    std::size_t position = 0;
    const auto fail = [&report](const std::string& statement) {
        report(statement, "Expression parser error", platform::MessageIcon::kNone);
    };
    for (;;) {
        position = skipBlanks(text, position);
        if (position == text.size()) return;
        if (separatesStatements(text[position])) {
            ++position;
            continue;
        }
        const std::size_t start = position;
        while (position < text.size() && !separatesStatements(text[position])) ++position;

        std::string statement(text.substr(start, position - start));
        if (statement.size() > kMaxSkinStatementLength) {
            fail(statement.substr(0, kMaxSkinStatementLength));
            continue;
        }
        if (statement.find('=') == std::string::npos) {
            statement += " = " + std::to_string(integerAfter(previous));
        }
        if (const auto value = evaluateStatement(table, statement)) {
            previous = *value;
        } else {
            fail(statement);
        }
    }
}

}  // namespace editor
