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

BENCHMARK_CAPTURE(open, skin, "skin")->Name("editor/skin")->Arg(100)->Arg(200)->Arg(300);
BENCHMARK_CAPTURE(open, Night, "Night")->Name("editor/Night")->Arg(100)->Arg(200)->Arg(300);
BENCHMARK_CAPTURE(open, Opera, "Opera")->Name("editor/Opera")->Arg(100)->Arg(200)->Arg(300);

}  // namespace
}  // namespace bench
