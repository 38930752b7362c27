// Replays the fuzzers' corpora: inputs that once added coverage or failed still pass.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include <gtest/gtest.h>

#include "fuzz/support/instance.h"
#include "fuzz/support/target.h"
#include "fuzz/support/world.h"

namespace fuzz {

void PrintTo(const Target& target, std::ostream* out) {
    *out << target.name;
}

}  // namespace fuzz

namespace {

class Corpus : public testing::TestWithParam<fuzz::Target> {};

TEST_P(Corpus, Holds) {
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(QUARZEL_CORPUS) + GetParam().name)) {
        inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    ASSERT_FALSE(inputs.empty());
    for (const auto& input : inputs) {
        SCOPED_TRACE(input.filename());
        std::ifstream file(input, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        EXPECT_NO_THROW(GetParam().run(bytes));
    }
}

TEST_P(Corpus, HoldsForNothing) {
    EXPECT_NO_THROW(GetParam().run(""));
}

// Silence would meet every condition.
TEST(FuzzedInstance, Sounds) {
    const fuzz::World world;
    fuzz::Instance instance;
    float loudest = 0.0f;
    for (const auto& sound : playChord(instance)) {
        for (const float x : sound.left) loudest = std::max(loudest, std::fabs(x));
    }
    EXPECT_GT(loudest, 1e-4f);
}

INSTANTIATE_TEST_SUITE_P(Of, Corpus, testing::ValuesIn(fuzz::targets()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
