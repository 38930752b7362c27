// A fuzzer: a function that accepts any bytes, and the name of its corpus.
#pragma once

#include <stdexcept>
#include <string_view>
#include <vector>

namespace fuzz {

// A condition that must hold for every input does not hold.
struct Violation : std::logic_error {
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char* what) {
    if (!holds) throw Violation(what);
}

struct Target {
    const char* name;  // of its file and of its folder in fuzz/corpus
    // Deterministic, whatever ran before. Throws Violation.
    void (*run)(std::string_view bytes);
};

// All targets of the program: one in a fuzzer, all in the test that replays the corpora.
inline std::vector<Target>& targets() {
    static std::vector<Target> all;
    return all;
}

struct Registered {
    Registered(const char* name, void (*run)(std::string_view bytes)) {
        targets().push_back({name, run});
    }
};

}  // namespace fuzz
