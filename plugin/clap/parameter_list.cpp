// Records and scales of the parameters.
#include "plugin/clap/parameter_list.h"

#include <algorithm>
#include <cmath>

#include "plugin/clap/text.h"
#include "state/bank.h"
#include "state/panels.h"
#include "state/parameter_text.h"

namespace clap {

namespace {

int positions(Id id) {
    return id == kProgramId ? state::kNumPrograms
                            : state::parameter(static_cast<int>(id)).law.positions;
}

double highest(Id id) {
    return positions(id) > 0 ? positions(id) - 1.0 : 1.0;
}

}  // namespace

ParamInfo parameterInfo(uint32_t index) {
    ParamInfo info{};
    info.id = isInstrumentId(index) ? index : kProgramId;
    info.flags = kParamIsAutomatable;
    if (positions(info.id) > 0) info.flags |= kParamIsStepped | kParamIsEnum;
    if (isInstrumentId(index)) {
        copyText(state::parameter(static_cast<int>(index)).title, info.name);
        copyText(state::panelOf(static_cast<int>(index)).name, info.module);
    } else {
        copyText("Program", info.name);
    }
    info.max_value = highest(info.id);
    return info;
}

double limitedPlain(Id id, double plain) {
    const double limited = std::isnan(plain) ? 0.0 : std::clamp(plain, 0.0, highest(id));
    return positions(id) > 0 ? std::floor(limited) : limited;
}

double plainOf(int index, float value) {
    const bool steps = state::parameter(index).law.positions > 0;
    return steps ? state::plainValue(index, value) : state::engineValue(value);
}

float valueOf(int index, double plain) {
    const bool steps = state::parameter(index).law.positions > 0;
    return steps ? state::valueFromPlain(index, plain)
                 : state::engineValue(static_cast<float>(plain));
}

}  // namespace clap
