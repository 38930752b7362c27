// Reads and runs scripts.
#include "tests/support/script.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iomanip>
#include <sstream>

namespace script {

void PrintTo(const Case& one, std::ostream* out) {
    *out << one.file;
}

std::vector<Case> casesOf(const std::string& path) {
    std::ifstream file(path);
    std::vector<Case> cases;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.empty() || line[0] == '#') continue;
        if (line.compare(0, 3, "== ") == 0) {
            cases.push_back({path, line.substr(3), {}});
        } else if (line[0] == '|') {
            auto& expected = cases.back().steps.back().expected;
            expected =
                expected.value_or("") + line.substr(std::min<std::size_t>(2, line.size())) + '\n';
        } else {
            const std::size_t arrow = line[0] == '<' ? std::string::npos : line.find("=>");
            std::optional<std::string> expected;
            if (arrow != std::string::npos)
                expected = line.substr(std::min(arrow + 3, line.size()));
            cases.back().steps.push_back({number, line.substr(0, arrow), expected});
        }
    }
    return cases;
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    std::string name;
    bool first = true;
    for (const char c : info.param.title) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            name += static_cast<char>(first ? std::toupper(c) : c);
        first = c == ' ' || c == '-';
    }
    return name;
}

std::string word(std::istream& words) {
    std::string next;
    words >> std::quoted(next);
    return next;
}

double number(std::istream& words) {
    return std::stod(word(words));
}

std::string restOf(std::istream& words) {
    std::string rest;
    std::getline(words >> std::ws, rest);
    return rest.substr(0, rest.find_last_not_of(' ') + 1);
}

void Runner::say(const std::string& text) {
    for (const std::string& part : {reported(), text})
        if (!part.empty()) answer_ += (answer_.empty() ? "" : " ") + part;
}

void Runner::perform(const std::string& line) {
    std::istringstream words(line);
    for (std::string name = word(words); !name.empty(); name = word(words)) {
        prepare(name);
        const auto command = commands.find(name);
        ASSERT_NE(command, commands.end()) << "no such word: " << name;
        command->second(words);
        say("");
    }
}

void Runner::play(const Case& one) {
    ASSERT_FALSE(one.steps.empty());
    for (const Step& step : one.steps) {
        SCOPED_TRACE(one.file + ":" + std::to_string(step.line) + ": " + step.words);
        if (step.words[0] == '<') {
            markup(step.words);
            continue;
        }
        answer_.clear();
        perform(step.words);
        if (!step.expected) continue;
        EXPECT_EQ(answer_, *step.expected);
    }
}

}  // namespace script
