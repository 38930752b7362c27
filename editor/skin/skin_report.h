// Lists what a skin says, for skin authors: every element with its numbers, and every message.
#pragma once

#include <iosfwd>
#include <string>

namespace editor {

// Loads the skin in skinFolder (ends in a separator) and writes one line per element and per
// message to out. While it runs, messages of the whole process go there. Returns the number of
// complaints: messages, attributes too long to be read, a file that cannot be read.
int reportSkin(const std::string& skinFolder, std::ostream& out);

}  // namespace editor
