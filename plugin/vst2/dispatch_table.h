// Rows that lead an opcode to the operation answering it, with the host's arguments in its types.
#pragma once

#include <type_traits>

#include "plugin/vst2/vst2.h"

namespace vst2 {

// What a host passes to the dispatcher beside the opcode.
struct HostCall {
    VstInt32 index;
    VstIntPtr value;
    void* ptr;
    float opt;
};

// Where an operation's argument comes from. kPtr demands a pointer: without one the operation is
// not reached and the answer is 0. kValue is a number or, for operations that take two, a pointer.
enum From { kIndex, kValue, kPtr, kPtrOrNull, kOpt };

template <typename Effect>
struct DispatchRow {
    VstInt32 opcode;
    VstIntPtr (*answer)(Effect& effect, const HostCall& call);
};

// A host's 64-bit value as a 32-bit one; what does not fit becomes the nearest that does.
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

// A row's answer: calls the operation with the named arguments in their order.
template <typename Effect, auto operation, From... from>
VstIntPtr reach(Effect& effect, const HostCall& call) {
    return invoke<from...>(effect, operation, call);
}

// True when the rows stand in the order of their opcodes, beginning with first, none left out.
template <typename Effect, size_t count>
constexpr bool inOpcodeOrder(const DispatchRow<Effect> (&rows)[count], VstInt32 first) {
    for (size_t i = 0; i < count; ++i) {
        if (rows[i].opcode != first + static_cast<VstInt32>(i)) return false;
    }
    return true;
}

}  // namespace vst2
