// What the programs' command lines have in common; numbers are read without the locale.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace host {

// Reads the words into what app declares. When they ask for help or the version, that text is
// returned, and nothing else is to be done. Throws UsageError.
std::string parseWords(CLI::App& app, int argc, const char* const* argv);

// The number that text is. option is what an error calls it. Throw UsageError when it is no number,
// and Error when it is out of range.
int readInteger(const std::string& option, const std::string& text, int least, int most);
double readDouble(const std::string& option, const std::string& text, double least, double most);

}  // namespace host
