// Describes records, functions and virtual tables as text, so that two declarations of one binary
// interface can be compared whatever their type names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace tests {

using Shapes = std::vector<std::string>;

// "p" pointer or reference, "i4" integer or enumeration of four bytes, "f8" floating point, "s24"
// record, "a128:i2" array, "i4(p,f8)" function.
template <class T>
struct Shape {
    static std::string text() {
        if constexpr (std::is_void_v<T>)
            return "v";
        else if constexpr (std::is_pointer_v<T> || std::is_reference_v<T>)
            return "p";
        else if constexpr (std::is_floating_point_v<T>)
            return "f" + std::to_string(sizeof(T));
        else if constexpr (std::is_class_v<T>)
            return "s" + std::to_string(sizeof(T));
        else
            return "i" + std::to_string(sizeof(T));
    }
};

template <class T, size_t N>
struct Shape<T[N]> {
    static std::string text() { return "a" + std::to_string(N) + ":" + Shape<T>::text(); }
};

template <class R, class... A>
struct Shape<R (*)(A...)> {
    static std::string text() {
        std::string arguments;
        ((arguments += "," + Shape<A>::text()), ...);
        return Shape<R>::text() + "(" + (arguments.empty() ? "" : arguments.substr(1)) + ")";
    }
};

// "offset shape" of each of the fields.
template <class Record, class Fields>
Shapes layoutOf(Fields fields, size_t offset = 0) {
    Record record{};
    Shapes shapes;
    const auto add = [&](auto& field) {
        const auto at = reinterpret_cast<char*>(&field) - reinterpret_cast<char*>(&record);
        shapes.push_back(std::to_string(offset + static_cast<size_t>(at)) + " " +
                         Shape<std::remove_reference_t<decltype(field)>>::text());
    };
    std::apply([&](auto&... field) { (add(field), ...); }, fields(record));
    return shapes;
}

// The same for virtual methods: their offset in the table, with the object as first argument. In
// the C++ ABI of both systems' compilers, a pointer to a virtual method is that offset plus one.
template <class C, class R, class... A>
std::string methodShape(R (C::*method)(A...)) {
    intptr_t words[2];
    static_assert(sizeof(method) == sizeof(words));
    std::memcpy(words, &method, sizeof(words));
    return std::to_string(words[0] - 1) + " " + Shape<R (*)(void*, A...)>::text();
}

template <class... M>
Shapes methodShapes(M... method) {
    return {methodShape(method)...};
}

// Converts constants of any types to one number type.
template <class Number, class... C>
std::vector<Number> valuesOf(C... constant) {
    return {static_cast<Number>(constant)...};
}

}  // namespace tests
