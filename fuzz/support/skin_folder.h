// The folder of a skin with pictures to use: bg.png is 200 x 150, the others are named after their
// sizes, and broken.png is none.
#pragma once

#include <string>

#include "fuzz/support/input.h"

namespace fuzz {

// A skin that parses, of up to ten elements with attributes as the input says: mostly such as make
// sense. Damage of the text itself rarely leaves anything to build.
std::string writtenSkin(Input& input);

// Below the folder of the library, as its default skin.
void makeSkinFolder(const std::string& moduleFolder, const std::string& skinXml);

}  // namespace fuzz
