// What a fuzzer is made of: a function that reads any bytes, under the name of its corpus.
#pragma once

#include <stdexcept>
#include <string_view>
#include <vector>

namespace fuzz {

// Something did not hold that has to hold for every input.
struct Violation : std::logic_error {
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char* what) {
    if (!holds) throw Violation(what);
}

struct Target {
    const char* name;  // of its file and its folder in fuzz/corpus
    // Does the same for the same bytes whatever ran before. Throws Violation.
    void (*run)(std::string_view bytes);
};

// All targets of the program: one in a fuzzer, every one in the test that replays the corpora.
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
