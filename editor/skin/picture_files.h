// Finds the picture files of a skin folder by the names in skin.xml.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace editor {

// Removes ".", "x/.." and doubled separators, so every spelling of a path gives the same name.
std::string normalizedName(const std::string& fileName);

class PictureFiles {
  public:
    // skinFolder ends in a separator.
    explicit PictureFiles(std::string skinFolder) : folder_(std::move(skinFolder)) {}

    // Returns the path of the file, or nothing. If no file has exactly this name, one that differs
    // in case is taken: many skins are made on systems that ignore case.
    std::optional<std::string> find(const std::string& fileName);

  private:
    std::string entryLike(const std::string& folder, const std::string& name);

    std::string folder_;
    std::map<std::string, std::vector<std::string>> entries_;  // by folder
};

}  // namespace editor
