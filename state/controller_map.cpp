#include "state/controller_map.h"

namespace state {

ControllerMap& controllerMap() {
    static ControllerMap map;
    return map;
}

}  // namespace state
