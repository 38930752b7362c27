// Opening the editor: reading a skin, building its controls and drawing it once, without a window.
#include <string>

#include "bench/bench_support.h"
#include "editor/skin_preview.h"

namespace bench {
namespace {

void open(benchmark::State& state, const std::string& skin) {
    for (auto _ : state) {
        const auto picture =
            editor::drawSkin(QUARZEL_SKINS_FOLDER + skin, static_cast<int>(state.range(0)));
        if (!picture) return state.SkipWithError("the skin cannot be opened");
    }
}

// The time of all threads together.
void everyThread(benchmark::internal::Benchmark* skin) {
    skin->Arg(100)->Arg(200)->Arg(300)->MeasureProcessCPUTime();
}

BENCHMARK_CAPTURE(open, skin, "skin")->Name("editor/skin")->Apply(everyThread);
BENCHMARK_CAPTURE(open, Night, "Night")->Name("editor/Night")->Apply(everyThread);
BENCHMARK_CAPTURE(open, Opera, "Opera")->Name("editor/Opera")->Apply(everyThread);

}  // namespace
}  // namespace bench
