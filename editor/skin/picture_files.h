// Finds the picture files of a skin folder by the names in skin.xml.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace editor {

// The same for every spelling of one path: without ".", "x/.." and doubled separators.
std::string normalizedName(const std::string& fileName);

class PictureFiles {
  public:
    // skinFolder ends in a separator.
    explicit PictureFiles(std::string skinFolder) : folder_(std::move(skinFolder)) {}

    // The path of the file, or nothing. Where no file has the name as it is written, one that
    // differs in case counts: skins are made on systems that do not tell them apart.
    std::optional<std::string> find(const std::string& fileName);

  private:
    std::string entryLike(const std::string& folder, const std::string& name);

    std::string folder_;
    std::map<std::string, std::vector<std::string>> entries_;  // of the folders looked through
};

}  // namespace editor
