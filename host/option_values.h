// The common part of the programs' command lines. Numbers ignore the locale.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace host {

// Parses the arguments into the options that app declares. Returns the text to print if they ask
// for help or the version, else an empty string. Throws UsageError.
std::string parseWords(CLI::App& app, int argc, const char* const* argv);

// Parses text as a number. Errors call it option. Throw UsageError if it is not a number and Error
// if it is out of range.
int readInteger(const std::string& option, const std::string& text, int least, int most);
double readDouble(const std::string& option, const std::string& text, double least, double most);

}  // namespace host
