// What a host saves: the state, and the ports to which it belongs.
#include "state/saved_state.h"

#include <cmath>
#include <cstring>
#include <exception>
#include <optional>
#include <string>

#include "plugin/lv2/shell.h"

namespace lv2 {

namespace {

constexpr std::uint32_t kFlags = LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE;

struct PortVector {
    LV2_Atom_Vector_Body header;
    std::array<float, state::kNumParams> values;
};
static_assert(sizeof(PortVector) == sizeof(LV2_Atom_Vector_Body) + 4 * state::kNumParams);

// A retrieved value of the type, as far as it has any.
struct Retrieved {
    Retrieved(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle, LV2_URID key,
              LV2_URID type) {
        std::uint32_t actual = 0;
        std::uint32_t flags = 0;
        bytes = retrieve(handle, key, &size, &actual, &flags);
        present = bytes != nullptr;
        if (actual != type) bytes = nullptr;
    }
    template <typename Value>
    bool read(Value& value) const {
        if (!bytes || size != sizeof value) return false;
        std::memcpy(&value, bytes, sizeof value);
        return true;
    }

    bool present;
    const void* bytes;
    std::size_t size = 0;
};

}  // namespace

LV2_State_Status Shell::save(LV2_State_Store_Function store, LV2_State_Handle handle) try {
    const std::string bytes = state::bytesOf(instrument_.savedState());
    PortVector ports{{sizeof(float), urids_.atomFloat}, {}};
    for (int i = 0; i < state::kNumParams; ++i) ports.values[i] = watch_.known(i);
    const LV2_State_Status stored =
        store(handle, urids_.state, bytes.data(), bytes.size(), urids_.atomChunk, kFlags);
    if (stored != LV2_STATE_SUCCESS) return stored;
    return store(handle, urids_.ports, &ports, sizeof ports, urids_.atomVector, kFlags);
} catch (const std::exception&) {
    return LV2_STATE_ERR_NO_SPACE;
}

// A state without the instrument's is a preset: it selects a program, whose values come by ports.
LV2_State_Status Shell::restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle) try {
    const Retrieved whole(retrieve, handle, urids_.state, urids_.atomChunk);
    if (!whole.present) {
        const Retrieved selected(retrieve, handle, urids_.program, urids_.atomInt);
        std::int32_t program = -1;
        if (!selected.present) return LV2_STATE_ERR_NO_PROPERTY;
        if (!selected.read(program)) return LV2_STATE_ERR_BAD_TYPE;
        if (!state::isProgram(program)) return LV2_STATE_ERR_UNKNOWN;
        instrument_.setProgram(program);
        return LV2_STATE_SUCCESS;
    }
    if (!whole.bytes) return LV2_STATE_ERR_BAD_TYPE;
    if (whole.size > state::kLongestState) return LV2_STATE_ERR_UNKNOWN;
    const auto saved = state::readSavedState({static_cast<const char*>(whole.bytes), whole.size});
    if (!saved) return LV2_STATE_ERR_UNKNOWN;

    // Before the state, which is newer than the ports if they differ.
    PortVector ports;
    const Retrieved vector(retrieve, handle, urids_.ports, urids_.atomVector);
    if (vector.read(ports) && ports.header.child_type == urids_.atomFloat) {
        for (int i = 0; i < state::kNumParams; ++i) {
            if (std::isfinite(ports.values[i])) watch_.expect(i, ports.values[i]);
        }
    }
    instrument_.loadSavedState(*saved);
    return LV2_STATE_SUCCESS;
} catch (const std::exception&) {
    return LV2_STATE_ERR_NO_SPACE;
}

}  // namespace lv2
