// Parses with CLI11 and checks numbers against their bounds.
#include "host/option_values.h"

#include <optional>

#include <CLI/CLI.hpp>

#include "host/error.h"
#include "host/numbers.h"

namespace host {
namespace {

template <typename Number>
Number inRange(const std::string& option, const std::string& text, std::optional<Number> number,
               Number least, Number most) {
    if (!number) throw UsageError(option + ": " + text + " is not a number");
    if (*number >= least && *number <= most) return *number;
    const std::string bounds = fixedText(least, 0) + " to " + fixedText(most, 0);
    throw Error(option + ": " + text + " is out of range; it can be " + bounds + ".");
}

}  // namespace

std::string parseWords(CLI::App& app, int argc, const char* const* argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    return {};
}

int readInteger(const std::string& option, const std::string& text, int least, int most) {
    return inRange(option, text, parseInteger(text), least, most);
}

double readDouble(const std::string& option, const std::string& text, double least, double most) {
    return inRange(option, text, parseDouble(text), least, most);
}

}  // namespace host
