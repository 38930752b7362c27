// quarzel-skin SKIN-FOLDER [OUT.png] [--zoom PERCENT]: lists the elements and faults of a skin, and
// draws it.
#include <algorithm>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "editor/skin_preview.h"
#include "platform/console.h"
#include "platform/file.h"
#include "platform/product.h"

int main(int argc, char** argv) {
    constexpr int kComplaints = 1;
    constexpr int kWrongUsage = 2;

    platform::useUtf8Console();
    CLI::App app(
        "Lists the elements of a skin with their computed numbers, and every message that "
        "loading it brings up; draws the skin.",
        "quarzel-skin");
    app.allow_windows_style_options(false);  // a path may begin with a slash there, too
    app.set_version_flag("--version", std::string("quarzel-skin ") + platform::productVersion(),
                         "Print the version and leave");
    std::string folder;
    std::string picture;
    app.add_option("SKIN-FOLDER", folder, "Folder that holds skin.xml and its pictures")
        ->required();
    app.add_option("OUT.png", picture, "Where to write the skin's picture");
    int zoom = 100;
    app.add_option("--zoom", zoom, "Percent, from 100 to 300")->check(CLI::Range(100, 300));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    folder += '/';
    std::replace(folder.begin(), folder.end(), '/', platform::kSeparator);
    const int complaints = editor::reportAndDrawSkin(folder, picture, std::cout, zoom);
    return complaints > 0 ? kComplaints : 0;
}
