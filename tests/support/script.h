// Tests as text files: each line says what is done and, after "=>", what comes of it.
//
//   == The handle follows the pointer            begins a case
//   knob 60,60,120,120 10x10
//   down 90,90 move 90,40 up => begin 0.75 end
//   report                                       for longer answers:
//   | first line
//   | second line
//
// "#" begins a comment.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <istream>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace script {

struct Step {
    int line;
    std::string words;
    std::optional<std::string> expected;
};

struct Case {
    std::string file;
    std::string title;
    std::vector<Step> steps;
};

void PrintTo(const Case& one, std::ostream* out);

std::vector<Case> casesOf(const std::string& path);
std::string nameOf(const testing::TestParamInfo<Case>& info);

// Reads the next word, which may be quoted. Empty at the end of the line.
std::string word(std::istream& words);
double number(std::istream& words);
std::string restOf(std::istream& words);

// Runs the commands of a case and compares what they say.
class Runner {
  public:
    virtual ~Runner() = default;
    void play(const Case& one);
    // Adds to the answer of the line.
    void say(const std::string& text);

    // The words of the script. A command reads its own arguments.
    std::map<std::string, std::function<void(std::istream&)>> commands;
    // Gets each line that begins with "<", and all after "=>".
    std::function<void(const std::string&)> markup;

  protected:
    // Called before a command's name is looked up.
    virtual void prepare(std::string&) {}
    // What happened by itself since the last call.
    virtual std::string reported() { return {}; }

  private:
    void perform(const std::string& line);
    std::string answer_;
};

}  // namespace script
