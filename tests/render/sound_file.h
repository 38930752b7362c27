// Reads a sound file back with libsndfile.
#pragma once

#include <string>
#include <vector>

#include <sndfile.h>

struct SoundFile {
    SF_INFO info = {};
    std::vector<float> samples;  // interleaved, 1.0 is full scale
    std::vector<int> integers;   // the same in the upper bits of 32

    explicit SoundFile(const std::string& path) {
        SNDFILE* const file = sf_open(path.c_str(), SFM_READ, &info);
        if (!file) return;
        const auto count = static_cast<std::size_t>(info.frames * info.channels);
        samples.resize(count);
        integers.resize(count);
        sf_read_float(file, samples.data(), static_cast<sf_count_t>(count));
        sf_seek(file, 0, SEEK_SET);
        sf_read_int(file, integers.data(), static_cast<sf_count_t>(count));
        sf_close(file);
    }
};
