// A host and chance, for the tests of the shell.
#pragma once

#include <random>

#include "tests/plugin/clap/driver.h"
#include "tests/plugin/shell_kit.h"

namespace clap_driver {

class Clap : public ShellTest {
  protected:
    TestHost host_;
    std::mt19937 random_{17};

    int upTo(int most) { return std::uniform_int_distribution(0, most)(random_); }
    // A value for each parameter. Programs come last here, and first in their frame.
    void randomise(Events& events) {
        for (uint32_t i = 0; i < kParameterCount; ++i) {
            const ParamInfo info = parameterInfo(i);
            events.value(info.id, upTo(1000) / 1000.0 * info.max_value);
        }
    }
};

}  // namespace clap_driver
