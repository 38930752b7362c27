// A song through the built LV2 module, as a host hands it on.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/shared_library.h"
#include "tests/plugin/lv2/driver.h"

// Song: a list of steps with `frame`, `status`, `data1` and `data2`; status 0 is parameter data1 at
// data2 percent, at a block's beginning.
template <typename Song>
lv2_driver::Sound throughLv2(const Song& song, const std::vector<int>& blocks, double rate) {
    using Descriptor = const LV2_Descriptor* (*)(std::uint32_t index);
    const platform::SharedLibrary library(QUARZEL_LV2);
    const auto* const descriptor =
        reinterpret_cast<Descriptor>(library.symbol("lv2_descriptor"))(0);
    lv2_driver::Host host;
    lv2_driver::Instance instance(descriptor, host, rate);
    lv2_driver::Sound sound;
    int start = 0;
    for (const int size : blocks) {
        for (const auto& step : song) {
            if (step.frame < start || step.frame >= start + size) continue;
            if (step.status == 0) {
                instance.controls[step.data1] =
                    lv2::portValue(step.data1, static_cast<float>(step.data2) * 0.01f);
                continue;
            }
            std::vector<std::uint8_t> bytes = {static_cast<std::uint8_t>(step.status),
                                               static_cast<std::uint8_t>(step.data1),
                                               static_cast<std::uint8_t>(step.data2)};
            const bool isShort = step.status == 0xC0 || step.status == 0xD0;
            bytes.resize(isShort ? 2 : 3);
            instance.send(step.frame - start, bytes);
        }
        const lv2_driver::Sound block = instance.run(static_cast<std::uint32_t>(size));
        sound.left.insert(sound.left.end(), block.left.begin(), block.left.end());
        sound.right.insert(sound.right.end(), block.right.begin(), block.right.end());
        start += size;
    }
    return sound;
}
