// Reads a WAV file back.
#pragma once

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

struct SoundFile {
    int channels = 0;
    int rate = 0;
    int bits = 0;
    int64_t frames = 0;
    std::vector<float> samples;  // interleaved, 1.0 is full scale
    std::vector<int> integers;   // the same in the upper bits of 32

    explicit SoundFile(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        const auto number = [&](std::size_t at, int size) {
            uint32_t value = 0;
            for (int i = size; i-- > 0;)
                value = value << 8 | static_cast<uint8_t>(bytes.at(at + i));
            return value;
        };
        for (std::size_t at = 12; at + 8 <= bytes.size(); at += 8 + number(at + 4, 4)) {
            const std::string chunk = bytes.substr(at, 4);
            if (chunk == "fmt ") {
                channels = static_cast<int>(number(at + 10, 2));
                rate = static_cast<int>(number(at + 12, 4));
                bits = static_cast<int>(number(at + 22, 2));
            }
            const std::size_t end = chunk == "data" ? at + 8 + number(at + 4, 4) : 0;
            for (std::size_t i = at + 8; i < end; i += bits / 8) {
                const uint32_t value = number(i, bits / 8) << (32 - bits);
                integers.push_back(static_cast<int>(value));
                samples.push_back(static_cast<float>(integers.back()) / 2147483648.0f);
                if (bits == 32) std::memcpy(&samples.back(), &value, sizeof value);
            }
        }
        if (channels > 0) frames = static_cast<int64_t>(samples.size()) / channels;
    }
};
