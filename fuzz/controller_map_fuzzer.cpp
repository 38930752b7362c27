// The controller map file, in either of its places.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"
#include "platform/file.h"
#include "platform/product.h"
#include "state/data_folder.h"

namespace {

constexpr std::size_t kSize = 4 * state::kNumParams;

void requireWords(const state::ControllerMap& map, std::string_view words) {
    fuzz::Input input(words);
    for (int i = 0; i < state::kNumParams; ++i) {
        fuzz::require(map.controller(i) == input.integer(), "a binding is as in the file");
    }
}

void run(std::string_view bytes) {
    const fuzz::World world;
    fuzz::Input input(bytes);
    const bool besideLibrary = input.byte() % 2 == 0;
    const int bound = input.below(state::kNumParams);
    const int controller = input.byte();
    const std::string file(input.rest());
    const std::string folder = state::findDataFolder(platform::kProductName).value_or("");
    const std::string path = folder + state::kControllerMapFile;
    platform::writeFile(besideLibrary ? world.module.path() + state::kControllerMapFile : path,
                        file);

    state::ControllerMap map;
    map.load();
    std::string words = file.substr(0, kSize);
    words.resize(kSize, '\0');
    requireWords(map, words);

    map.saveIfChanged();
    fuzz::require(platform::fileExists(path) != besideLibrary, "what was loaded is not saved");
    map.bind(bound, controller);
    words.replace(4 * bound, 4, std::string{static_cast<char>(controller), '\0', '\0', '\0'});
    map.saveIfChanged();
    fuzz::require(platform::readFile(path, 1000) == words, "a binding is saved with the rest");

    state::ControllerMap again;
    again.load();
    requireWords(again, words);
    fuzz::require(platform::folderEntries(folder).size() == 1, "nothing is left beside the file");
}

const fuzz::Registered registered("controller_map", run);

}  // namespace
