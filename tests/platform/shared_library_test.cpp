// Loading libraries of code by their path.
#include "platform/shared_library.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

std::string loadingError(const std::string& path) {
    try {
        platform::SharedLibrary library(path);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

TEST(SharedLibrary, FindsItsSymbolsAndNoOthers) {
    const platform::SharedLibrary library(TEST_LIBRARY);
    const auto answer = reinterpret_cast<int (*)()>(library.symbol("answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(library.symbol("question"), nullptr);
}

TEST(SharedLibrary, SaysWhyAFileCannotBeLoaded) {
    const std::string text = __FILE__;
    for (const std::string& path : {text, text + ".missing", std::string("libm.so.6")}) {
        SCOPED_TRACE(path);
        const std::string error = loadingError(path);
        EXPECT_NE(error, "");
        EXPECT_EQ(error.find(path), std::string::npos) << error;
    }
}

}  // namespace
