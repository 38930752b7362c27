// The numbers of a command line, read without the locale.
#pragma once

#include <string>

namespace render {

// The number that text is. option is what an error calls it. Throw UsageError when it is no number,
// and Error when it is out of range.
int readInteger(const std::string& option, const std::string& text, int least, int most);
double readDouble(const std::string& option, const std::string& text, double least, double most);

}  // namespace render
