// The common part of the programs' command lines. Numbers ignore the locale.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace host {

// Declare the options first. What they are read into must outlive the parser.
class OptionParser {
  public:
    // With the options --help and --version. `about` is the sentence above the help.
    OptionParser(const std::string& program, const std::string& about);
    ~OptionParser();

    void addFlag(const char* name, bool& to, const std::string& help);
    // The help calls the value `type`. A name without dashes is that of an argument by place.
    void addText(const char* name, std::string& to, const char* type, const std::string& help);
    void addText(const char* name, std::optional<std::string>& to, const char* type,
                 const std::string& help);
    // An option that may be given several times, with one value each.
    void addTexts(const char* name, std::vector<std::string>& to, const char* type,
                  const std::string& help);
    // All arguments that belong to no option.
    void addArguments(const char* names, std::vector<std::string>& to, const std::string& help);

    // Returns the text to print if the arguments ask for help or the version, else an empty string.
    // Throws UsageError.
    std::string parse(int argc, const char* const* argv);

  private:
    const std::unique_ptr<CLI::App> app_;
};

// Parses text as a number. Errors call it option. Throw UsageError if it is not a number and Error
// if it is out of range.
int readInteger(const std::string& option, const std::string& text, int least, int most);
double readDouble(const std::string& option, const std::string& text, double least, double most);

}  // namespace host
