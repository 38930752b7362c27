// What a host offers, found in its list of features.
#pragma once

#include <cstring>

#include "lv2/core/lv2.h"
#include "lv2/log/logger.h"
#include "lv2/options/options.h"
#include "lv2/urid/urid.h"

namespace lv2 {

using Features = const LV2_Feature* const*;

inline bool hasFeature(Features features, const char* uri) {
    for (; features && *features; ++features) {
        if (std::strcmp((*features)->URI, uri) == 0) return true;
    }
    return false;
}

// Null if the host does not offer it.
template <typename Data>
Data* feature(Features features, const char* uri) {
    for (; features && *features; ++features) {
        if (std::strcmp((*features)->URI, uri) == 0) return static_cast<Data*>((*features)->data);
    }
    return nullptr;
}

// Says why something is refused, where the host has a log.
inline void logRefusal(Features features, const char* why) {
    auto* const log = feature<LV2_Log_Log>(features, LV2_LOG__log);
    auto* const map = feature<LV2_URID_Map>(features, LV2_URID__map);
    if (!log || !map) return;
    LV2_Log_Logger logger;
    lv2_log_logger_init(&logger, map, log);
    lv2_log_error(&logger, "Quarzel Strings: %s\n", why);
}

// The number that an option holds; `otherwise` where it is missing or no number.
double numberOption(Features features, const char* uri, double otherwise);
// The number that an option of these holds, if it is of a numeric type.
bool readNumber(const LV2_URID_Map& map, const LV2_Options_Option& option, double& number);

}  // namespace lv2
