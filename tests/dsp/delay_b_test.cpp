// Tests of the ring of samples.
#include "dsp/delay_b.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace dsp {
namespace {

TEST(DelayB, DelaysByItsLength) {
    const auto ring = std::make_unique<DelayB>();
    ring->setLength(3);
    for (int i = 1; i <= 10; ++i) {
        EXPECT_EQ(ring->readThenWrite(static_cast<float>(i)), i > 3 ? i - 3.0f : 0.0f);
    }
}

TEST(DelayB, BoundsItsLength) {
    const auto ring = std::make_unique<DelayB>();
    ring->setLength(0);
    EXPECT_EQ(ring->length(), 1);
    EXPECT_EQ(ring->readThenWrite(0.5f), 0.0f);
    EXPECT_EQ(ring->readThenWrite(0.0f), 0.5f);
    ring->setLength(std::numeric_limits<int>::max());
    EXPECT_EQ(ring->length(), DelayB::kCapacity);
    for (int i = 0; i < DelayB::kCapacity; ++i) ring->readThenWrite(1.0f);
    EXPECT_EQ(ring->readThenWrite(0.0f), 1.0f);

    // Shorten the ring while the index is past the new end; clear must still empty all of it.
    for (int i = 0; i < 1000; ++i) ring->readThenWrite(1.0f);
    ring->setLength(10);
    for (int i = 0; i < 11; ++i) ring->readThenWrite(2.0f);
    EXPECT_EQ(ring->readThenWrite(2.0f), 2.0f);
    ring->clear();
    ring->setLength(DelayB::kCapacity);
    for (int i = 0; i < DelayB::kCapacity; ++i) ASSERT_EQ(ring->readThenWrite(1.0f), 0.0f);
}

}  // namespace
}  // namespace dsp
