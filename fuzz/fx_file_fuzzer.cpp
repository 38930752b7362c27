// The renderer's bank and preset files, for an instrument with three programs.
#include "fuzz/support/target.h"
#include "platform/input_error.h"
#include "state/fx_file.h"

#include <cmath>
#include <optional>
#include <string>

namespace {

constexpr state::FxOwner kOwner = {0x54737449, 3, 2};  // 'TstI'

template <typename Parse>
auto readWith(Parse parse, std::string_view bytes)
    -> std::optional<decltype(parse(bytes, kOwner, ""))> {
    try {
        return parse(bytes, kOwner, "a.fx");
    } catch (const platform::InputError& error) {
        fuzz::require(std::string_view(error.what()).substr(0, 5) == "a.fx ", "a sentence");
        return std::nullopt;
    }
}

// A file that parses is written with the same size and parses to the same values.
template <typename Parse>
auto requireRoundTrip(Parse parse, std::string_view bytes) {
    const auto file = readWith(parse, bytes);
    if (!file) return file;
    const std::string written = state::fxBytes(*file, kOwner.id);
    fuzz::require(written.size() == bytes.size(), "as much is written as was read");
    const auto again = readWith(parse, written);
    fuzz::require(again && state::fxBytes(*again, kOwner.id) == written, "and read the same");
    return file;
}

void run(std::string_view bytes) {
    const auto bank = requireRoundTrip(state::parseFxBank, bytes);
    const auto preset = requireRoundTrip(state::parseFxPreset, bytes);
    fuzz::require(!bank || !preset, "no file is both");
    if (bank) {
        fuzz::require(bank->programs >= 0 && bank->programs <= kOwner.programs, "programs fit");
        fuzz::require(bank->currentProgram < kOwner.programs, "the current program is there");
    }
    if (preset) {
        fuzz::require(preset->parameters <= kOwner.parameters, "parameters fit");
        if (const auto* const values = std::get_if<std::vector<float>>(&preset->content)) {
            for (const float value : *values) fuzz::require(std::isfinite(value), "finite");
        }
    }
}

const fuzz::Registered registered("fx_file", run);

}  // namespace
