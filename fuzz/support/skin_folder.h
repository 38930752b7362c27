// A skin folder with pictures: bg.png is 200 x 150, the others are named after their sizes, and
// broken.png is not a picture.
#pragma once

#include <string>

#include "fuzz/support/input.h"

namespace fuzz {

// Writes a skin that parses, with up to ten elements whose attributes come from the input and
// mostly make sense. Damaging the text itself rarely leaves anything to build.
std::string writtenSkin(Input& input);

// Makes the default skin in the library's folder.
void makeSkinFolder(const std::string& moduleFolder, const std::string& skinXml);

}  // namespace fuzz
