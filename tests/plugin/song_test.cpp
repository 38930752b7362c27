// The built modules of all formats: one song gives the same bits.
#include <gtest/gtest.h>

#include "tests/plugin/song.h"

namespace {

TEST(Song, GivesTheSameBitsThroughAllFormats) {
    const song::Sound expected = song::throughVst2();
    EXPECT_GT(expected.peak(), 0.05f);
    const struct {
        const char* format;
        song::Sound sound;
    } rows[] = {
        {"VST 3", song::throughVst3()},
        {"CLAP", song::throughClap()},
#ifdef QUARZEL_LV2
        {"LV2", song::throughLv2()},
#endif
    };
    for (const auto& row : rows) {
        for (int i = 0; i < song::kFrames; ++i) {
            ASSERT_EQ(row.sound.left[i], expected.left[i]) << row.format << ' ' << i;
            ASSERT_EQ(row.sound.right[i], expected.right[i]) << row.format << ' ' << i;
        }
    }
}

}  // namespace
