// Installs private settings in every test program that links this file.
#include "tests/support/own_settings.h"

#include <optional>

#include <gtest/gtest.h>

namespace {

class EachTestOnItsOwn : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { settings_.emplace(); }
    void OnTestEnd(const testing::TestInfo&) override { settings_.reset(); }
    std::optional<OwnSettings> settings_;
};

[[maybe_unused]] const bool isInstalled = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new EachTestOnItsOwn);
    return true;
}();

}  // namespace
