// Plays for simulated hours and checks that nothing grows, breaks, slows down or stays awake.
// Usage: quarzel_soak HOURS [SEED]
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <fstream>
#include <memory>
#include <vector>

#include <malloc.h>
#include <unistd.h>

#include "platform/file.h"
#include "platform/folders.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/soak/session.h"
#include "tests/support/recorded_messages.h"
#include "tests/support/temporary_folder.h"

namespace soak {
namespace {

constexpr int kSessions = 3;                       // at once
constexpr int kReportMinutes = 10;                 // simulated
constexpr int kLongestWarmUp = 10;                 // simulated minutes; less in a short run
constexpr double kMinute = 60.0;                   // seconds
constexpr std::size_t kHeapSlack = 64 << 10;       // sessions differ that much
constexpr std::size_t kResidentSlack = 16u << 20;  // pages cached by the C library

double megabytes(std::size_t bytes) {
    return static_cast<double>(bytes) / (1 << 20);
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct ProcessUse {
    std::size_t heapBytes;      // in use in the C library's heap
    std::size_t residentBytes;  // of the process, in memory
    int openFiles;
};

ProcessUse processUse() {
    const struct mallinfo2 heap = mallinfo2();
    std::size_t total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return {heap.uordblks + heap.hblkhd, resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)),
            static_cast<int>(platform::folderEntries("/proc/self/fd").size())};
}

// One simulated minute of all sessions; the oldest makes room for a new one, and the library is
// loaded once more, as by a host that rescans its plug-ins.
void playMinute(std::deque<std::unique_ptr<Session>>& sessions, unsigned seed,
                VSTGUI::headless::HeldClock& clock, Findings& findings) {
    constexpr int kParts = 3;
    for (int part = 0; part < kParts; ++part) {
        for (const auto& session : sessions) {
            session->changeRate();
            session->play(kMinute / kParts);
            session->saveAndRestore();
            session->visitEditor();
        }
    }
    for (const auto& session : sessions) session->fallSilent();
    const PluginLibrary library;
    PluginInstance(library.entry()).dispatch(effMainsChanged, 0, 1);
    sessions.pop_front();
    sessions.push_back(std::make_unique<Session>(seed, clock, findings));
}

class Watch {
  public:
    explicit Watch(int minutes) : warmUp_(std::clamp(minutes / 3, 1, kLongestWarmUp)) {}

    void look(int minute, const Session::Cost& cost, const Findings& findings) {
        const ProcessUse use = processUse();
        if (minute <= warmUp_) {
            atFirst_.heapBytes = std::max(atFirst_.heapBytes, use.heapBytes);
            atFirst_.residentBytes = std::max(atFirst_.residentBytes, use.residentBytes);
            atFirst_.openFiles = use.openFiles;
        } else {
            fuzz::require(use.heapBytes <= atFirst_.heapBytes + kHeapSlack, "the heap stays");
            fuzz::require(use.residentBytes <= atFirst_.residentBytes + kResidentSlack,
                          "the resident memory stays");
            fuzz::require(use.openFiles == atFirst_.openFiles, "no files stay open");
        }
        sounding_.push_back(cost.sounding);
        asleep_.push_back(cost.asleep);
        fuzz::require(cost.asleep <= cost.sounding / 2, "sleep costs less than sound");
        if (minute % kReportMinutes == 0) report(minute, use, cost, findings);
    }

    void summarize(const Findings& findings) const {
        if (sounding_.empty()) return;
        const std::size_t quarter = std::max<std::size_t>(sounding_.size() / 4, 1);
        const auto early = [&](const std::vector<double>& costs) {
            return median({costs.begin(), costs.begin() + static_cast<std::ptrdiff_t>(quarter)});
        };
        const auto late = [&](const std::vector<double>& costs) {
            return median({costs.end() - static_cast<std::ptrdiff_t>(quarter), costs.end()});
        };
        const ProcessUse use = processUse();
        std::printf("%zu minutes, %ld instances, %ld events, %ld editors\n", sounding_.size(),
                    findings.instances, findings.events, findings.editors);
        std::printf("peak %.2f, silent %.2f s after the last note at the latest\n",
                    static_cast<double>(findings.peak), findings.slowestSilence);
        std::printf("heap %.5f MB after warm-up, %.5f MB at the end; resident %.1f and %.1f MB\n",
                    megabytes(atFirst_.heapBytes), megabytes(use.heapBytes),
                    megabytes(atFirst_.residentBytes), megabytes(use.residentBytes));
        std::printf("cost of late minutes over early ones: %.3f sounding, %.3f asleep\n",
                    late(sounding_) / early(sounding_), late(asleep_) / early(asleep_));
    }

  private:
    static void report(int minute, const ProcessUse& use, const Session::Cost& cost,
                       const Findings& findings) {
        std::printf(
            "minute %4d: resident %6.2f MB, heap %8.5f MB, files %d, peak %.2f, "
            "silent in %.2f s, %6.1f ns a sample sounding, %4.1f asleep\n",
            minute, megabytes(use.residentBytes), megabytes(use.heapBytes), use.openFiles,
            static_cast<double>(findings.peak), findings.slowestSilence, cost.sounding,
            cost.asleep);
        std::fflush(stdout);
    }

    const int warmUp_;
    ProcessUse atFirst_ = {};
    std::vector<double> sounding_, asleep_;
};

int run(int minutes, unsigned seed) {
    const TemporaryFolder applicationData;
    setenv("XDG_CONFIG_HOME", applicationData.path().c_str(), 1);  // for the loaded library
    const platform::ScopedFolders folders(QUARZEL_FOLDER, applicationData.path());
    const RecordedMessages messages;
    const VSTGUI::headless::Scope scope;
    VSTGUI::headless::HeldClock clock;
    TestHost host;
    Findings findings;
    Watch watch(minutes);
    int result = 0;
    std::deque<std::unique_ptr<Session>> sessions;
    try {
        for (int i = 0; i < kSessions; ++i) {
            sessions.push_back(std::make_unique<Session>(seed++, clock, findings));
        }
        for (int minute = 1; minute <= minutes; ++minute) {
            playMinute(sessions, seed++, clock, findings);
            host.calls = {};
            watch.look(minute, sessions.back()->measureCost(), findings);
            fuzz::require(messages.all.empty(), "no message appears");
            fuzz::require(findings.peak > 0.1f, "something sounds");
        }
    } catch (const fuzz::Violation& violation) {
        std::printf("FAILED: %s\n", violation.what());
        result = 1;
    }
    watch.summarize(findings);
    return result;
}

}  // namespace
}  // namespace soak

int main(int argc, char** argv) {
    double hours = 0.0;
    unsigned seed = 1;
    const auto parsed = [](const char* text, auto& value) {
        const auto [end, error] = std::from_chars(text, text + std::strlen(text), value);
        return error == std::errc() && *end == '\0';
    };
    if (argc < 2 || argc > 3 || !parsed(argv[1], hours) || !(hours > 0.0 && hours <= 10000.0) ||
        (argc == 3 && !parsed(argv[2], seed))) {
        std::fprintf(stderr, "Usage: quarzel_soak HOURS [SEED]\n");
        return 2;
    }
    return soak::run(std::max(1, static_cast<int>(hours * 60.0 + 0.5)), seed);
}
