// The names of the sounds that the user likes, in a file of the data folder.
#pragma once

#include <set>
#include <string>

namespace editor {

// A name stands for the sound wherever it is, in a slot or in a file. All instances share the file.
class Favourites {
  public:
    static constexpr const char* kFile = "favourites.txt";

    void read();
    bool has(const std::string& name) const { return names_.count(name) > 0; }
    // Adds the name or takes it away. Returns false if that could not be stored.
    bool toggle(const std::string& name);

  private:
    std::set<std::string> names_;
};

}  // namespace editor
