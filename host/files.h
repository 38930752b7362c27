// Reads and writes whole files; errors carry a sentence for the user.
#pragma once

#include <cstddef>
#include <string>

namespace host {

// Reads a regular file. The error for a file that is too large calls it what, for example "a MIDI
// file". Throws Error.
std::string readWhole(const std::string& path, std::size_t maxBytes, const std::string& what);

// Resolves links in path, so that renaming onto the result keeps a link. Throws Error if something
// other than a regular file is there.
std::string writablePath(const std::string& path);

// Replaces the file by the bytes, all or none. Throws Error.
void writeWhole(const std::string& path, const std::string& bytes);

// Whether both paths lead to the same file, which need not exist yet.
bool isSameFile(const std::string& one, const std::string& other);

}  // namespace host
