// The parameter table and what may reach the engine.
#include "state/parameters.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <sstream>
#include <utility>

#include <gtest/gtest.h>

#include "state/parameter_text.h"
#include "tests/support/recording_engine.h"
#include "tests/support/script.h"

namespace {

std::uint32_t bits(float value) {
    std::uint32_t word;
    std::memcpy(&word, &value, sizeof word);
    return word;
}

// Applies the value; returns the engine's call and its argument.
std::pair<std::string, double> toldAt(int index, float value) {
    RecordingEngine engine;
    state::parameter(index).apply(engine, value);
    const std::string call = engine.log.take();
    const std::size_t equals = std::min(call.find('='), call.size());
    return {call.substr(0, equals), std::atof(call.c_str() + std::min(equals + 1, call.size()))};
}

// Plays the script of the table and its texts.
class ParameterTable : public testing::TestWithParam<script::Case> {
  protected:
    ParameterTable() {
        runner_.commands["row"] = [this](std::istream& words) {
            const state::Parameter& row = state::parameter(indexOf(words));
            std::ostringstream line;
            line << std::setprecision(7) << row.name << ' ' << std::hex << bits(row.defaultValue);
            std::string call;
            for (const float value : {0.0f, 0.3f, 0.5f, 0.999f, 1.0f}) {
                const auto [name, argument] = toldAt(row.index, value);
                line << (std::exchange(call, name) == name ? " " : ' ' + name + ' ') << argument;
            }
            runner_.say(line.str());
        };
        runner_.commands["text"] = [this](std::istream& words) {
            const int index = indexOf(words);
            runner_.say(state::plainText(index, std::strtof(script::word(words).c_str(), nullptr)));
        };
        runner_.commands["read"] = [this](std::istream& words) {
            const int index = indexOf(words);
            std::string text;
            words >> std::quoted(text);
            const auto value = state::valueFromText(index, text);
            std::ostringstream plain;
            plain << std::setprecision(4) << (value ? state::plainValue(index, *value) : NAN);
            runner_.say(plain.str());
        };
    }
    // Of the title that comes next.
    static int indexOf(std::istream& words) {
        const std::string title = script::word(words);
        int index = 0;
        while (index < state::kNumParams && title != state::parameter(index).title) ++index;
        return index;
    }
    script::Runner runner_;
};

TEST_P(ParameterTable, KeepsItsScript) {
    runner_.play(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, ParameterTable,
                         testing::ValuesIn(script::casesOf(QUARZEL_STATE_SCRIPTS "parameters.txt")),
                         script::nameOf);

TEST(Parameters, TellTheEngineThePositionsInBetween) {
    ASSERT_EQ(state::kNumParams, 42);
    EXPECT_EQ(toldAt(state::kWaveform, 0.49f).second, 0);
    const double ratios[] = {3, 5.25, 6, 8.25, 9, 11.25, 12, 14.25};
    const int keys[] = {36, 45, 48, 57, 60, 69, 72, 81};
    for (int k = 0; k < 8; ++k) {
        const float value = static_cast<float>(k + 0.01) / 7.0f;
        EXPECT_NEAR(toldAt(state::kKSplit, std::min(value, 1.0f)).second, ratios[k] / 11, 1e-6);
        EXPECT_EQ(state::splitKeyAt(k), keys[k]);
    }
}

TEST(Parameters, GiveTheEngineFiniteValuesWithinItsRange) {
    for (const auto& [value, sent] : {std::pair{NAN, 0.0f},
                                      {INFINITY, 1.0f},
                                      {-INFINITY, 0.0f},
                                      {-0.2f, 0.0f},
                                      {1.7f, 1.0f},
                                      {0.25f, 0.25f}}) {
        EXPECT_EQ(state::engineValue(value), sent);
    }
}

TEST(Parameters, CountVoicesFromSixToAll) {
    for (const auto& [value, voices] :
         {std::pair{0.0f, 6}, {0.5f, 25}, {1.0f, 44}, {1e9f, 44}, {-1e9f, 6}, {NAN, 6}}) {
        EXPECT_EQ(state::voiceCount(value), voices);
    }
}

TEST(Parameters, ShowThreeDecimalsInAHostsBuffer) {
    EXPECT_EQ(state::valueText(0.3f), "0.300");
    EXPECT_EQ(state::valueText(1.0f), "1.000");
    EXPECT_EQ(state::valueText(0.0005f), "0.001");
    EXPECT_EQ(state::valueText(std::nanf("")), "0.000");
    EXPECT_EQ(state::valueText(-1e30f), "-99.000");  // seven characters at most
    EXPECT_EQ(state::valueText(1e30f), "999.000");
}

}  // namespace
