// The parameters as the editor groups them.
#pragma once

#include <vector>

#include "state/parameters.h"

namespace state {

struct Panel {
    const char* name;
    std::vector<ParamIndex> parameters;  // as they stand on it, a switch first
};

// All panels; every parameter stands on one.
const std::vector<Panel>& panels();

// The panel of a parameter.
const Panel& panelOf(int index);

}  // namespace state
