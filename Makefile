# Entry points for everyday tasks, based on the CMake presets.
JOBS ?= $(shell nproc)

.PHONY: demo site test dist dist-arm64 package release bench fuzz soak coverage mutants format check-format deps clean

deps:
	@scripts/install-deps

demo: deps
	@cmake --preset release -DQUARZEL_TESTS=OFF >/dev/null
	@cmake --build --preset release -j $(JOBS)
	@scripts/demo build/release build/demo

site:
	@scripts/install-deps emscripten chromium nodejs || scripts/install-deps
	@scripts/site $(JOBS)

test: deps check-format
	@scripts/test $(JOBS)

dist: deps
	@scripts/dist $(JOBS)

dist-arm64: deps
	@scripts/dist $(JOBS) linux-arm64

package: deps
	@scripts/package $(JOBS)

release: deps
	-@scripts/install-deps emscripten
	@scripts/release $(JOBS)

bench: deps
	@scripts/bench $(JOBS)

fuzz: deps
	@scripts/fuzz $(JOBS)

soak: deps
	@scripts/soak $(JOBS)

coverage: deps
	@scripts/coverage $(JOBS)

# N faults (20) for each folder of DIRS, chosen by SEED (1), in at most MINUTES each.
mutants: deps
	@scripts/mutants $(DIRS)

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

check-format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format --dry-run -Werror

clean:
	rm -rf build dist
