// What 44 voices with everything on cost: in the module alone, in a browser that plays them, and against
// native code of as many lanes. Usage: node cost_test.mjs SITE NATIVE-BUILD
// The last needs the benchmarks (make bench). All take turns, so that other work slows them alike.
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import path from "node:path";
import { Browser, check, wait } from "./browser.mjs";

const [site, native] = process.argv.slice(2);
// As bench/player.cpp has them, and its rate and blocks.
const kRate = 44100, kBlock = 64;
const kEverything = [[11, 0.5], [12, 0.5], [13, 0.5], [14, 0.5], [15, 0.5], [16, 0.5], [17, 1], [18, 1], [19, 1],
  [20, 1], [21, 1], [22, 1], [99999, 1], [25, 1], [7, 0.1], [26, 1], [32, 1], [35, 0.8], [37, 1], [41, 0.5]];
const kKeys = Array.from({ length: 44 }, (_, i) => 40 + i);
const kRounds = 5, kModuleSeconds = 5, kBrowserSeconds = 4;
const kMostOfACore = 0.10;

const code = new WebAssembly.Module(fs.readFileSync(path.join(site, "quarzel-sound.wasm")));
const imports = {};
for (const { module, name } of WebAssembly.Module.imports(code)) {
  (imports[module] ??= {})[name] = () => -1;
}
const strings = new WebAssembly.Instance(code, imports).exports;
strings._initialize();
strings.quarzelStart(kRate, 0);
for (const [index, value] of kEverything) strings.quarzelSetParameter(index, value);
for (const key of kKeys) strings.quarzelMessage(0, 0x90, key, 100);
const memory = strings.memory.buffer.byteLength;

const medianOf = (values) => values.sort((a, b) => a - b)[values.length >> 1];

// Nanoseconds a frame: the middle of a second's blocks, and of some seconds the best.
function moduleTime() {
  const seconds = Array.from({ length: kModuleSeconds }, () => medianOf(
    Array.from({ length: kRate / kBlock }, () => {
      const begin = process.hrtime.bigint();
      strings.quarzelRender(kBlock);
      return Number(process.hrtime.bigint() - begin) / kBlock;
    })));
  return Math.min(...seconds);
}

// The same of the benchmark, or 0 without benchmarks.
function baselineTime() {
  const program = path.join(native, "bench/quarzel_bench");
  if (!fs.existsSync(program)) return 0;
  const { stdout } = spawnSync(program, ["--benchmark_filter=^baseline/held/44", "--benchmark_format=json",
    "--benchmark_report_aggregates_only=false"], { encoding: "utf8" });
  const runs = JSON.parse(stdout).benchmarks.filter(({ run_type }) => run_type === "iteration");
  return Math.min(...runs.map((run) => run["ns/sample"]));
}

// The share of a processor that the browser's audio thread takes.
async function browserShare(browser) {
  const thread = browser.audioThread();
  const begin = performance.now(), before = browser.computed(thread);
  await wait(1000 * kBrowserSeconds);
  return (browser.computed(thread) - before) / (performance.now() - begin);
}

const browser = await Browser.start(site);
await browser.test(async () => {
  await browser.open();
  await browser.choose("latency", "shortest");  // "automatic" may replace the thread that is measured
  await browser.wake();
  await browser.run(`
    for (const [index, value] of values[0]) quarzel.sound.send("parameter", index, value);
    for (const key of values[1]) quarzel.midi(0x90, key, 100);`, kEverything, kKeys);
  await browserShare(browser);
  const rounds = [];
  for (let i = 0; i < kRounds; ++i) rounds.push([moduleTime(), baselineTime(), await browserShare(browser)]);
  const [inModule, baseline, inBrowser] = [0, 1, 2].map((i) => medianOf(rounds.map((round) => round[i])));
  const ratio = baseline && medianOf(rounds.map(([module, native]) => module / native));
  console.log(rounds.map((round) => round.map((x) => x.toPrecision(3)).join(" ")).join("; "));

  const heard = new Float32Array(strings.memory.buffer, strings.quarzelLeft(), kBlock);
  check(heard.some((x) => x !== 0), "the voices sound to the end");
  check(strings.memory.buffer.byteLength === memory, `the module keeps its ${memory} bytes`);
  const share = inModule * kRate / 1e9;
  check(share <= kMostOfACore, `44 voices take ${inModule.toFixed(0)} ns a frame in the module, ` +
        `${(100 * share).toFixed(1)} % of a core`);
  console.log(baseline ? `That is ${ratio.toFixed(2)} times the ${baseline.toFixed(0)} ns of four native lanes.`
    : "There are no benchmarks to compare with: make bench builds them.");
  const played = await browser.run("return quarzel.sound.context.currentTime > 0");
  check(played && inBrowser <= kMostOfACore,
        `the browser's audio thread takes ${(100 * inBrowser).toFixed(1)} % of a core for them`);
});
