// The interface by which a plug-in asks its host to move a control input. It is not part of LV2.
#pragma once

#include <cstdint>

namespace lv2 {

inline constexpr char kChangeRequestUri[] =
    "http://kx.studio/ns/lv2ext/control-input-port-change-request";

// Data of the feature.
struct ChangeRequest {
    void* handle;
    // Audio thread. Returns 0, or why the host declines.
    int (*request)(void* handle, std::uint32_t port, float value);
};

}  // namespace lv2
