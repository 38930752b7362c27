// Parses with CLI11, which takes long to compile and therefore stays in here.
#include "host/option_parser.h"

#include <CLI/CLI.hpp>

#include "host/error.h"
#include "host/numbers.h"
#include "platform/product.h"

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

OptionParser::OptionParser(const std::string& program, const std::string& about)
    : app_(std::make_unique<CLI::App>(about, program)) {
    app_->allow_windows_style_options(false);  // a path may begin with a slash there, too
    app_->set_version_flag("--version", program + " " + platform::productVersion(),
                           "Print the version and leave");
}

OptionParser::~OptionParser() = default;

void OptionParser::addFlag(const char* name, bool& to, const std::string& help) {
    app_->add_flag(name, to, help);
}

void OptionParser::addText(const char* name, std::string& to, const char* type,
                           const std::string& help) {
    app_->add_option(name, to, help)->type_name(type);
}

void OptionParser::addText(const char* name, std::optional<std::string>& to, const char* type,
                           const std::string& help) {
    app_->add_option(name, to, help)->type_name(type);
}

void OptionParser::addTexts(const char* name, std::vector<std::string>& to, const char* type,
                            const std::string& help) {
    app_->add_option(name, to, help)->type_name(type)->allow_extra_args(false);
}

void OptionParser::addArguments(const char* names, std::vector<std::string>& to,
                                const std::string& help) {
    app_->add_option(names, to, help)->type_name("");
}

std::string OptionParser::parse(int argc, const char* const* argv) {
    try {
        app_->parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return app_->help();
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
