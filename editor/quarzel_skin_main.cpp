// quarzel-skin SKIN-FOLDER: lists the elements of a skin and everything wrong with it.
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "editor/skin_report.h"

int main(int argc, char** argv) {
    constexpr int kComplaints = 1;
    constexpr int kWrongUsage = 2;

    CLI::App app(
        "Lists the elements of a skin with their computed numbers, and every message "
        "that loading it brings up.",
        "quarzel-skin");
    std::string folder;
    app.add_option("SKIN-FOLDER", folder, "Folder that holds skin.xml and its pictures")
        ->required();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    return editor::reportSkin(folder + '/', std::cout) > 0 ? kComplaints : 0;
}
