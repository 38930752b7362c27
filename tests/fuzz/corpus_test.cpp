// Replays the fuzzers' corpora: what was once found to go a new way, or to fail, still holds.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "fuzz/support/target.h"

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

INSTANTIATE_TEST_SUITE_P(Of, Corpus, testing::ValuesIn(fuzz::targets()),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
