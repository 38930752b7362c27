// Random and damaged bytes for readers of binary files, deterministic for a generator state.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <random>
#include <string>

// The number of random inputs for a test: QUARZEL_MUTATIONS if it is a number above 0, else
// byDefault.
inline int mutationCount(int byDefault) {
    const std::string text =
        std::getenv("QUARZEL_MUTATIONS") ? std::getenv("QUARZEL_MUTATIONS") : "";
    int count = 0;
    std::from_chars(text.data(), text.data() + text.size(), count);
    return count > 0 ? count : byDefault;
}

inline std::string randomBytes(std::size_t size, std::mt19937& random) {
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    return bytes;
}

// Replaces one to eight bytes, half of them in the first 220, where the headers are. Also truncates
// one result in three and extends one in nine.
inline std::string randomlyDamaged(std::string bytes, std::mt19937& random) {
    for (auto changes = 1 + random() % 8; changes > 0 && !bytes.empty(); --changes) {
        const auto reach = random() % 2 ? bytes.size() : std::min<std::size_t>(bytes.size(), 220);
        bytes[random() % reach] = static_cast<char>(random());
    }
    if (random() % 3 == 0) {
        bytes.resize(random() % (bytes.size() + 1));
    } else if (random() % 6 == 0) {
        bytes += randomBytes(random() % 64, random);
    }
    return bytes;
}
