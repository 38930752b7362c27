// What Windows alone has: locked files, and no libraries for compressed files and loudness.
#include <windows.h>

#include "tests/render/program_kit.h"

namespace {

TEST_F(QuarzelRender, SaysWhatThisBuildLacks) {
    EXPECT_EQ(run(with({}, song_, folder_.path("a.flac"))).err,
              "quarzel-render: --format: this build writes wav alone (see --help)\n");
    const auto outcome = run(with({"--normalize", "LUFS"}, song_, output_));
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.err,
              "quarzel-render: --normalize: this build measures no loudness, only "
              "PEAK (see --help)\n");
    EXPECT_EQ(folder_.entryCount(), 1);
}

TEST_F(QuarzelRender, LeavesFilesThatOthersHaveOpenOrProtect) {
    folder_.write("out.wav", "before");
    const HANDLE open = CreateFileA(output_.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    const auto locked = run(with({}, song_, output_));
    CloseHandle(open);
    EXPECT_NE(locked.err.find("out.wav cannot be written: another program has it open."),
              std::string::npos)
        << locked.err;
    SetFileAttributesA(output_.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(run(with({}, song_, output_)).err.find("it is write-protected."), std::string::npos);
    SetFileAttributesA(output_.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(folder_.read("out.wav"), "before");
    EXPECT_EQ(folder_.entryCount(), 2);
}

}  // namespace
