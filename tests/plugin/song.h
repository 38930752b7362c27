// One song, and a function per format that renders it through the built module.
#pragma once

#include <algorithm>
#include <vector>

#include "tests/plugin/sound.h"

namespace song {

using tests::Sound;

inline constexpr int kFrames = 4 * 48000;
inline constexpr double kRate = 48000.0;

// A MIDI message, or a parameter at a block's beginning: status 0, index, value in percent.
struct Step {
    int frame;
    int status;
    int data1;
    int data2;
};

inline constexpr Step kSong[] = {
    {0, 0xC0, 17, 0},         {0, 0x90, 36, 100},     {0, 0x90, 60, 1},
    {1, 0x90, 64, 127},       {63, 0xB0, 64, 127},    {64, 0x90, 67, 90},
    {65, 0xE0, 0, 0x50},      {5000, 0, 5, 80},       {5001, 0x80, 60, 0},
    {5003, 0xE0, 0x7F, 0x7F}, {9000, 0xB0, 11, 40},   {9001, 0xE0, 0, 0x40},
    {20000, 0, 4, 65},        {20000, 0x90, 72, 64},  {24000, 0xB0, 64, 0},
    {24000, 0xA0, 72, 9},     {30000, 0, 23, 70},     {40000, 0xC0, 72, 0},
    {40000, 0x90, 55, 110},   {40010, 0xD0, 50, 0},   {41000, 0, 6, 50},
    {41000, 0x90, 57, 110},   {70000, 0xB0, 121, 0},  {80000, 0xB0, 123, 0},
    {120000, 0xC0, 40, 0},    {120000, 0x90, 48, 99}, {140000, 0x90, 51, 99},
    {150000, 0xB0, 120, 0},   {150100, 0x90, 90, 30},
};

// Blocks of several sizes; they end where a parameter is set.
inline std::vector<int> blocks() {
    constexpr int kSizes[] = {64, 1, 333, 1024, 17, 4096};
    std::vector<int> all;
    for (int frame = 0, i = 0; frame < kFrames; frame += all.back(), ++i) {
        int size = std::min(kSizes[i % 6], kFrames - frame);
        for (const Step& step : kSong) {
            if (step.status == 0 && step.frame > frame) size = std::min(size, step.frame - frame);
        }
        all.push_back(size);
    }
    return all;
}

// Calls `play(step, offset)` for the steps of a block.
template <typename Play>
void forEachStep(int start, int size, Play play) {
    for (const Step& step : kSong) {
        if (step.frame >= start && step.frame < start + size) play(step, step.frame - start);
    }
}

Sound throughVst2();
Sound throughVst3();
Sound throughClap();
// Not on Windows.
Sound throughLv2();

}  // namespace song
