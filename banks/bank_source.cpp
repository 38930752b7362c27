#include "banks/bank_source.h"

#include <bitset>
#include <charconv>
#include <map>

namespace banks {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kProgram = "program";

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// Removes the text up to and including the separator from `text`; returns it without the separator.
std::string_view takeUpTo(char separator, std::string_view& text) {
    const std::size_t end = text.find(separator);
    const std::string_view head = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    return head;
}

std::string quoted(std::string_view text) {
    return '"' + std::string(text) + '"';
}

std::map<std::string, int, std::less<>> indicesByName() {
    std::map<std::string, int, std::less<>> indices;
    for (int index = 0; index < state::kNumParams; ++index) {
        const std::string name = state::parameter(index).name;
        if (!indices.emplace(name, index).second) indices.emplace(name + "#2", index);
    }
    return indices;
}

class Parser {
  public:
    BankSource parse(std::string_view text) {
        while (!text.empty()) {
            ++line_;
            parseLine(trimmed(takeUpTo('\n', text)));
        }
        return source_;
    }

  private:
    void parseLine(std::string_view line) {
        if (line.empty() || line.front() == '#') return;
        const std::size_t wordEnd = line.find_first_of(kBlanks);
        if (line.substr(0, wordEnd) == kProgram) {
            beginProgram(trimmed(line.substr(kProgram.size())));
        } else {
            parseValues(line);
        }
    }

    void beginProgram(std::string_view name) {
        if (name.empty()) fail("a program without a name");
        if (name.size() >= state::kNameSize) {
            fail("the name " + quoted(name) + " is longer than " +
                 std::to_string(state::kNameSize - 1) + " bytes");
        }
        if (source_.programs == state::kNumPrograms) {
            fail("more than " + std::to_string(state::kNumPrograms) + " programs");
        }
        source_.bank.setProgramName(source_.programs++, std::string(name).c_str());
        stated_.reset();
    }

    void parseValues(std::string_view line) {
        if (source_.programs == 0) fail("a value before the first program");
        // After a comma another value must follow.
        for (bool more = true; more;) {
            more = line.find(',') != std::string_view::npos;
            parseValue(trimmed(takeUpTo(',', line)));
        }
    }

    void parseValue(std::string_view item) {
        const std::string_view name = item.substr(0, item.find_first_of(kBlanks));
        if (name.empty()) fail("a comma without a value beside it");
        const auto found = indices_.find(name);
        if (found == indices_.end()) fail("unknown parameter " + quoted(name));
        const int index = found->second;
        if (stated_[index]) fail(quoted(name) + " is stated twice");
        stated_.set(index);
        source_.bank.setValue(source_.programs - 1, index,
                              number(name, trimmed(item.substr(name.size()))));
    }

    float number(std::string_view name, std::string_view text) const {
        float value = 0.0f;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, value);
        if (error != std::errc() || stop != end) {
            fail(quoted(name) + " needs a number, not " + quoted(text));
        }
        const bool inRange = value >= 0.0f && value <= 1.0f;
        if (!inRange) fail(quoted(name) + " is " + std::string(text) + ", outside 0 to 1");
        return value;
    }

    [[noreturn]] void fail(const std::string& fault) const {
        throw BankSourceError("line " + std::to_string(line_) + ": " + fault);
    }

    const std::map<std::string, int, std::less<>> indices_ = indicesByName();
    BankSource source_;
    int line_ = 0;
    std::bitset<state::kNumParams> stated_;  // by the current program
};

}  // namespace

BankSource parseBankSource(std::string_view text) {
    return Parser().parse(text);
}

}  // namespace banks
