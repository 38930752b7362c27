// The folder of a skin with pictures to use: bg.png is 200 x 150, the others are named after their
// sizes, and broken.png is none.
#pragma once

#include <string>

namespace fuzz {

// Below the folder of the library, as its default skin.
void makeSkinFolder(const std::string& moduleFolder, const std::string& skinXml);

}  // namespace fuzz
