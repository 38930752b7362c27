// What an instrument in a test's hands has rendered.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace tests {

struct Sound {
    std::vector<float> left;
    std::vector<float> right;
    std::uint64_t silent = 0;  // one bit per channel that is declared silent

    // NaN for a sample that is not finite.
    float peak() const {
        float highest = 0.0f;
        for (const auto* side : {&left, &right}) {
            for (const float x : *side) {
                if (!std::isfinite(x)) return NAN;
                highest = std::max(highest, std::abs(x));
            }
        }
        return highest;
    }
    void append(const Sound& next) {
        left.insert(left.end(), next.left.begin(), next.left.end());
        right.insert(right.end(), next.right.begin(), next.right.end());
    }
    // To the bit.
    bool operator==(const Sound& o) const { return same(left, o.left) && same(right, o.right); }

  private:
    static bool same(const std::vector<float>& a, const std::vector<float>& b) {
        return a.size() == b.size() &&
               std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
    }
};

}  // namespace tests
