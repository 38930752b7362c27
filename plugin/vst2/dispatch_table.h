// Table rows that map an opcode to an operation and convert the host's arguments to its types.
#pragma once

#include <type_traits>

#include "plugin/vst2/vst2.h"

namespace vst2 {

// The arguments of the dispatcher other than the opcode.
struct HostCall {
    VstInt32 index;
    VstIntPtr value;
    void* ptr;
    float opt;
};

// The source of an operation's argument. kPtr requires a pointer: without one, the operation is not
// called and the answer is 0. kValue is a number, or a pointer if the operation takes two pointers.
enum From { kIndex, kValue, kPtr, kPtrOrNull, kOpt };

template <typename Effect>
struct DispatchRow {
    VstInt32 opcode;
    VstIntPtr (*answer)(Effect& effect, const HostCall& call);
};

// Converts a host's 64-bit value to 32 bits, clamped to the range.
constexpr VstInt32 toInt32(VstIntPtr value) {
    if (value > INT32_MAX) return INT32_MAX;
    if (value < INT32_MIN) return INT32_MIN;
    return static_cast<VstInt32>(value);
}

template <From from, typename T>
T argumentOf(const HostCall& call) {
    if constexpr (from == kOpt) {
        return call.opt;
    } else if constexpr (from == kPtr || from == kPtrOrNull) {
        return static_cast<T>(call.ptr);
    } else if constexpr (std::is_pointer_v<T>) {
        return reinterpret_cast<T>(call.value);
    } else if constexpr (std::is_same_v<T, VstIntPtr>) {
        return call.value;
    } else {
        const VstInt32 number = from == kIndex ? call.index : toInt32(call.value);
        return static_cast<T>(number);
    }
}

template <From... from, typename Effect, typename Base, typename Result, typename... Args>
VstIntPtr invoke(Effect& effect, Result (Base::*operation)(Args...),
                 [[maybe_unused]] const HostCall& call) {
    if (((from == kPtr && !call.ptr) || ...)) return 0;
    if constexpr (std::is_void_v<Result>) {
        (effect.*operation)(argumentOf<from, Args>(call)...);
        return 0;
    } else if constexpr (std::is_pointer_v<Result>) {
        return reinterpret_cast<VstIntPtr>((effect.*operation)(argumentOf<from, Args>(call)...));
    } else {
        return (effect.*operation)(argumentOf<from, Args>(call)...);
    }
}

// Calls the operation with the given arguments and returns its answer.
template <typename Effect, auto operation, From... from>
VstIntPtr reach(Effect& effect, const HostCall& call) {
    return invoke<from...>(effect, operation, call);
}

// Whether the rows are in opcode order without gaps, starting with first.
template <typename Effect, size_t count>
constexpr bool inOpcodeOrder(const DispatchRow<Effect> (&rows)[count], VstInt32 first) {
    for (size_t i = 0; i < count; ++i) {
        if (rows[i].opcode != first + static_cast<VstInt32>(i)) return false;
    }
    return true;
}

}  // namespace vst2
