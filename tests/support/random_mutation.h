// Random damage to a text, the same on every system for the same seed.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

// Replaces, inserts, removes or repeats one to four stretches of the text. Characters come from the
// alphabet, sometimes from all bytes.
inline std::string randomlyMutated(std::string text, std::string_view alphabet,
                                   std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t limit) { return limit ? random() % limit : 0; };
    for (std::size_t change = 1 + below(4); change > 0; --change) {
        const std::size_t position = below(text.size() + 1);
        const char character =
            below(8) == 0 ? static_cast<char>(below(256)) : alphabet[below(alphabet.size())];
        switch (below(4)) {
            case 0:
                text.insert(position, 1, character);
                break;
            case 1:
                text.erase(position, 1 + below(8));
                break;
            case 2:
                text.insert(below(text.size() + 1), text.substr(position, 1 + below(16)));
                break;
            default:
                if (position < text.size()) text[position] = character;
        }
    }
    return text;
}
