// Lists the elements, numbers and messages of a skin, for skin authors.
#pragma once

#include <iosfwd>
#include <string>

namespace editor {

// Loads the skin and writes one line per element and per message to `out`. While it runs, it takes
// over the messages of the whole process. Returns the number of complaints: messages, attributes
// that are too long, an unreadable file. skinFolder ends in a separator.
int reportSkin(const std::string& skinFolder, std::ostream& out);

}  // namespace editor
