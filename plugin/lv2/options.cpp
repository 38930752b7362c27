// Reads options, and answers for those of a running instance.
#include <cstdint>

#include "lv2/atom/atom.h"
#include "lv2/buf-size/buf-size.h"
#include "lv2/parameters/parameters.h"
#include "plugin/lv2/features.h"
#include "plugin/lv2/shell.h"

namespace lv2 {

namespace {

template <typename Number>
bool readAs(const LV2_Options_Option& option, double& number) {
    if (option.size != sizeof(Number)) return false;
    Number value;
    std::memcpy(&value, option.value, sizeof value);
    number = static_cast<double>(value);
    return true;
}

}  // namespace

bool readNumber(const LV2_URID_Map& map, const LV2_Options_Option& option, double& number) {
    if (!option.value) return false;
    const auto is = [&](const char* uri) { return option.type == map.map(map.handle, uri); };
    if (is(LV2_ATOM__Float)) return readAs<float>(option, number);
    if (is(LV2_ATOM__Double)) return readAs<double>(option, number);
    if (is(LV2_ATOM__Int)) return readAs<std::int32_t>(option, number);
    return is(LV2_ATOM__Long) && readAs<std::int64_t>(option, number);
}

double numberOption(Features features, const char* uri, double otherwise) {
    const auto* const map = feature<LV2_URID_Map>(features, LV2_URID__map);
    const auto* option = feature<LV2_Options_Option>(features, LV2_OPTIONS__options);
    if (!map) return otherwise;
    double number = otherwise;
    for (; option && option->key != 0; ++option) {
        if (option->key == map->map(map->handle, uri) && readNumber(*map, *option, number)) break;
    }
    return number;
}

std::uint32_t Shell::getOptions(LV2_Options_Option* options) {
    std::uint32_t status = LV2_OPTIONS_SUCCESS;
    for (; options->key != 0; ++options) {
        if (options->context == LV2_OPTIONS_INSTANCE && options->key == urids_.sampleRate) {
            rateOption_ = static_cast<float>(sampleRate_);
            options->size = sizeof rateOption_;
            options->type = urids_.atomFloat;
            options->value = &rateOption_;
        } else {
            status |= LV2_OPTIONS_ERR_BAD_KEY;
        }
    }
    return status;
}

// Blocks of any length are welcome, so their options are only acknowledged.
std::uint32_t Shell::setOptions(const LV2_Options_Option* options) {
    std::uint32_t status = LV2_OPTIONS_SUCCESS;
    for (; options->key != 0; ++options) {
        double number = 0.0;
        if (options->context != LV2_OPTIONS_INSTANCE) {
            status |= LV2_OPTIONS_ERR_BAD_SUBJECT;
        } else if (options->key != urids_.sampleRate && options->key != urids_.blockLength) {
            status |= LV2_OPTIONS_ERR_BAD_KEY;
        } else if (!readNumber(map_, *options, number)) {
            status |= LV2_OPTIONS_ERR_BAD_VALUE;
        } else if (options->key == urids_.sampleRate) {
            setSampleRate(number);
        }
    }
    return status;
}

}  // namespace lv2
