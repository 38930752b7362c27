// Values as texts with units, and back.
#include "state/parameter_text.h"

#include <cmath>
#include <set>

#include <gtest/gtest.h>

namespace {

using namespace state;

TEST(ParameterText, StaysThroughEveryRoundAndNeverFalls) {
    std::set<std::string> titles;
    for (int index = 0; index < kNumParams; ++index) {
        SCOPED_TRACE(parameter(index).title);
        EXPECT_TRUE(titles.insert(parameter(index).title).second);
        double last = -INFINITY;
        for (int step = 0; step <= 5000; ++step) {
            const float value = static_cast<float>(step) / 5000.0f;
            const double plain = plainValue(index, value);
            EXPECT_GE(plain, last) << value;
            last = plain;
            const std::string text = plainText(index, value);
            const auto back = valueFromText(index, text);
            ASSERT_TRUE(back) << text;
            ASSERT_EQ(plainText(index, *back), text) << value;
            ASSERT_EQ(plainText(index, valueFromPlain(index, plain)), text) << value;
        }
        for (const float end : {0.0f, 1.0f}) {
            EXPECT_EQ(valueFromText(index, plainText(index, end)), end);
        }
    }
}

}  // namespace
