// Plays for simulated hours and checks that nothing grows, breaks, slows down or stays awake.
// Usage: quarzel_soak HOURS [SEED]
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <vector>

#include "platform/folders.h"
#include "tests/plugin/vst2/plugin_under_test.h"
#include "tests/soak/process_use.h"
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

// Loads the library again, like a host that rescans its plug-ins.
void reloadLibrary() {
    const TestHost host;
    const PluginLibrary library;
    const PluginInstance instance(library.entry());
}

// One simulated minute of all sessions; the oldest makes room for a new one.
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
    reloadLibrary();
    sessions.pop_front();
    sessions.push_back(std::make_unique<Session>(seed, clock, findings));
}

class Watch {
  public:
    explicit Watch(int minutes) : warmUp_(std::clamp(minutes / 3, 1, kLongestWarmUp)) {}

    void look(int minute, const Session::Cost& cost, Findings& findings) {
        const ProcessUse use = processUse();
        if (minute <= warmUp_) {
            atFirst_.heapBytes = std::max(atFirst_.heapBytes, use.heapBytes);
            atFirst_.residentBytes = std::max(atFirst_.residentBytes, use.residentBytes);
            atFirst_.openFiles = use.openFiles;
        } else {
            complainIf(use.heapBytes > atFirst_.heapBytes + kHeapSlack, "the heap grows", findings);
            complainIf(use.residentBytes > atFirst_.residentBytes + kResidentSlack,
                       "the resident memory grows", findings);
            complainIf(use.openFiles != atFirst_.openFiles, "files stay open", findings);
        }
        sounding_.push_back(cost.sounding);
        asleep_.push_back(cost.asleep);
        complainIf(cost.asleep > cost.sounding / 2, "sleep costs as much as sound", findings);
        if (minute % kReportMinutes == 0) report(minute, use, cost, findings);
    }

    void summarize(const Findings& findings) const {
        const std::size_t quarter = std::max<std::size_t>(sounding_.size() / 4, 1);
        const auto early = [&](const std::vector<double>& costs) {
            return median({costs.begin(), costs.begin() + static_cast<std::ptrdiff_t>(quarter)});
        };
        const auto late = [&](const std::vector<double>& costs) {
            return median({costs.end() - static_cast<std::ptrdiff_t>(quarter), costs.end()});
        };
        const ProcessUse use = processUse();
        std::printf("%zu minutes, %ld instances, %ld events, %ld rates, %ld chunks, %ld editors\n",
                    sounding_.size(), findings.instances, findings.events, findings.rateChanges,
                    findings.chunks, findings.editors);
        std::printf("peak %.2f, silent %.2f s after the last note at the latest\n",
                    static_cast<double>(findings.peak), findings.slowestSilence);
        std::printf("heap %.5f MB after warm-up, %.5f MB at the end; resident %.1f and %.1f MB\n",
                    megabytes(atFirst_.heapBytes), megabytes(use.heapBytes),
                    megabytes(atFirst_.residentBytes), megabytes(use.residentBytes));
        std::printf("cost of late minutes over early ones: %.3f sounding, %.3f asleep\n",
                    late(sounding_) / early(sounding_), late(asleep_) / early(asleep_));
        for (const std::string& complaint : findings.complaints) {
            std::printf("FAILED: %s\n", complaint.c_str());
        }
    }

  private:
    static void complainIf(bool wrong, const char* what, Findings& findings) {
        if (wrong) findings.complaints.push_back(what);
    }

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
    Findings findings;
    Watch watch(minutes);
    std::deque<std::unique_ptr<Session>> sessions;
    for (int i = 0; i < kSessions; ++i) {
        sessions.push_back(std::make_unique<Session>(seed++, clock, findings));
    }
    for (int minute = 1; minute <= minutes && findings.complaints.empty(); ++minute) {
        playMinute(sessions, seed++, clock, findings);
        watch.look(minute, sessions.back()->measureCost(), findings);
        for (const RecordedMessage& message : messages.all) {
            findings.complaints.push_back("a message: " + message.title + ": " + message.text);
        }
    }
    watch.summarize(findings);
    return findings.complaints.empty() ? 0 : 1;
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
