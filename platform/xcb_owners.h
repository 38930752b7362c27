// Owners of what XCB hands out. Linux only.
#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace platform {

struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};
// A reply, an event or an error.
template <typename Data>
using XcbOwned = std::unique_ptr<Data, XcbFree>;

struct XcbDisconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using XcbConnection = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

}  // namespace platform
