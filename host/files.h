// Whole files in and out, with a sentence for the user when that fails.
#pragma once

#include <cstddef>
#include <string>

namespace host {

// The bytes of a regular file. what says what it should be, for one that is too large: "a MIDI
// file". Throws Error.
std::string readWhole(const std::string& path, std::size_t maxBytes, const std::string& what);

// The regular file that path leads to, or that can be made there. Renaming onto it keeps a link.
// Throws Error when something else stands there.
std::string writablePath(const std::string& path);

// Puts the bytes in place of the file, all or none. Throws Error.
void writeWhole(const std::string& path, const std::string& bytes);

// Whether both paths lead to one file, which need not be there yet.
bool isSameFile(const std::string& one, const std::string& other);

}  // namespace host
