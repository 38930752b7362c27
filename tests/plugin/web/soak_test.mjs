// Dense playing in the page, at the steady latency: no late buffer, and memory stays flat.
// Usage: node soak_test.mjs SITE. QUARZEL_SOAK_SECONDS (20) says for how long.
import fs from "node:fs";
import { Browser, wait } from "./browser.mjs";

const [site] = process.argv.slice(2);
const kSeconds = Number(process.env.QUARZEL_SOAK_SECONDS ?? 20);
const kWarmUp = 10;  // seconds until all code is compiled and every cache has its size
const kLookEvery = 500;     // milliseconds
const kTick = 10;           // milliseconds, the unit of /proc/stat
const kMostOfACore = 0.25;  // for the audio thread
const kIdle = 0.1;          // of all cores: with less, the machine has more to do than it can
const kHeldUp = 150;        // milliseconds, at most, for the page by its own work
const kHeapGrowth = 4 << 20, kProcessGrowth = 16 << 20;  // bytes

// Before the page's own scripts: measures what process() takes, by a clock of milliseconds that makes no
// garbage, and finds the memory of both modules.
const kProbe = `
  const probe = () => {
    const register = registerProcessor;
    globalThis.registerProcessor = (name, Processor) => register(name, class extends Processor {
      told = { blocks: 0, sounding: 0, slowest: 0, memory: 0 };
      process(inputs, outputs) {
        const begin = Date.now();
        const result = super.process(inputs, outputs);
        const took = Date.now() - begin;
        this.told.blocks += 1;
        this.told.sounding += outputs[0][0][0] !== 0;
        this.told.slowest = Math.max(this.told.slowest, took);
        if (this.told.blocks % 128 === 0) {
          this.told.memory = this.strings.memory.buffer.byteLength;
          this.port.postMessage(this.told);
          this.told.slowest = 0;
        }
        return result;
      }
    });
  };
  const add = AudioWorklet.prototype.addModule;
  AudioWorklet.prototype.addModule = async function (...names) {
    await add.call(this, URL.createObjectURL(new Blob(["(" + probe + ")()"], { type: "text/javascript" })));
    return add.apply(this, names);
  };
  window.slowest = [];
  window.AudioWorkletNode = class extends AudioWorkletNode {
    constructor(...from) {
      super(...from);
      this.port.addEventListener("message", ({ data }) => {
        if (!data.blocks) return;
        window.told = data;
        window.slowest.push(data.slowest);
      });
    }
  };
  for (const name of ["instantiate", "instantiateStreaming"]) {
    const make = WebAssembly[name];
    WebAssembly[name] = async (...from) => {
      const made = await make.apply(WebAssembly, from);
      window.pageMemory = Object.values((made.instance ?? made).exports)
        .find((each) => each instanceof WebAssembly.Memory);
      return made;
    };
  }`;

// Fifty times a second: keys, pedal, wheel, pressure and controllers, the editor's own controls under the
// pointer, and now and then another sound, with every section and effect on.
const kPlaying = `
  const { model, midi } = quarzel;
  const canvas = document.getElementById("canvas");
  canvas.scrollIntoView({ block: "start" });
  let seed = 1;
  const random = (below) => {
    seed = (Math.imul(seed, 1664525) + 1013904223) >>> 0;
    return Math.floor(seed / 2 ** 32 * below);
  };
  const everythingOn = () => {
    for (const [index, value] of [[0, 0.3], [7, 0.1], [9, 1]]) model.call("SetParameter", index, value);
    for (let section = 0; section < 6; ++section) {
      model.call("SetParameter", 11 + section, 0.5);
      model.call("SetParameter", 17 + section, 1);
    }
    for (const effect of [26, 32, 37]) model.call("SetParameter", effect, 1);
  };
  const held = [];
  let tick = 0;
  let now = performance.now();
  window.heldUp = 0;
  setInterval(() => {
    const before = now;
    now = performance.now();
    heldUp = Math.max(heldUp, now - before - 20);
    if (tick % 150 === 0) {
      midi(0xC0, random(128), 0);
      everythingOn();
    }
    if (tick % 100 === 0) midi(0xB0, 64, tick % 200 ? 0 : 127);
    const key = 30 + random(60);
    midi(0x90, key, 1 + random(127));
    held.push(key);
    if (held.length > 24) midi(0x80, held.shift(), 0);
    midi(0xE0, 0, 32 + random(64));
    midi(0xB0, [1, 7, 11, 20 + random(60)][random(4)], 64 + random(64));
    const box = canvas.getBoundingClientRect();
    const at = { clientX: box.left + random(box.width), clientY: box.top + random(box.height), bubbles: true,
      cancelable: true, deltaY: random(2) ? 100 : -100 };
    canvas.dispatchEvent(new PointerEvent("pointermove", at));
    canvas.dispatchEvent(new WheelEvent("wheel", at));
    ++tick;
  }, 20);`;

const browser = await Browser.start(site);
// Goes on after a fault: the other figures help to find it.
const tell = (holds, what) => {
  console.log(`${holds ? "ok" : "FAILED"}: ${what}`);
  if (!holds) process.exitCode = 1;
};

// For how many milliseconds a thread has waited for a core.
const waited = ({ id, task }) =>
  Number(fs.readFileSync(`/proc/${id}/task/${task}/schedstat`, "utf8").split(" ")[1]) / 1e6;

// What there is to see now. Times are milliseconds since some beginning.
async function look(thread) {
  const page = await browser.run(`return { underruns: quarzel.sound.context.playbackStats.underrunEvents,
    played: quarzel.sound.context.currentTime * 1000, told, pageMemory: pageMemory.buffer.byteLength,
    slowest: slowest.splice(0).reduce((a, b) => Math.max(a, b), 0), heldUp: [heldUp, heldUp = 0][0] }`);
  const ticks = fs.readFileSync("/proc/stat", "utf8").split("\n")[0].trim().split(/\s+/).slice(1, 9).map(Number);
  return { ...page, at: performance.now(), computed: browser.computed(thread), waited: waited(thread),
    pageComputed: browser.computed({ id: thread.id, task: thread.id }),
    idle: ticks[3] + ticks[4], stolen: ticks[7] * kTick, ticks: ticks.reduce((a, b) => a + b) };
}

// Bytes in use by the page's scripts, and by the process. The least of some looks, because a picture on
// its way to the canvas takes megabytes.
async function memoryInUse({ id }) {
  const least = { heap: Infinity, process: Infinity };
  for (let i = 0; i < 6; ++i) {
    await browser.call("HeapProfiler.collectGarbage");
    const { usedSize, backingStorageSize } = await browser.call("Runtime.getHeapUsage");
    const process = /RssAnon:\s*(\d+)/.exec(fs.readFileSync(`/proc/${id}/status`, "utf8"))[1] * 1024;
    least.heap = Math.min(least.heap, usedSize + backingStorageSize);
    least.process = Math.min(least.process, process);
    await wait(300);
  }
  return least;
}

const medianOf = (values) => [...values].sort((a, b) => a - b)[values.length >> 1];
const megabytes = (bytes) => `${(bytes / 2 ** 20).toFixed(1)} MB`;

await browser.test(async () => {
  await browser.call("Page.addScriptToEvaluateOnNewDocument", { source: kProbe });
  await browser.open();
  await browser.choose("latency", "steady");
  await browser.until("return quarzel.sound.context.baseLatency > 0.05");
  await browser.wake();
  await browser.run(kPlaying);
  await wait(1000 * kWarmUp);
  const thread = browser.audioThread();
  const before = await memoryInUse(thread);
  const looks = [await look(thread)];
  while (looks.at(-1).at < looks[0].at + 1000 * kSeconds) {
    await wait(kLookEvery);
    looks.push(await look(thread));
  }
  const after = await memoryInUse(thread);
  const [first, last] = [looks[0], looks.at(-1)];
  const over = (name, from = first, to = last) => to[name] - from[name];

  tell(Math.abs(over("played") / over("at") - 1) < 0.1,
       `${(over("played") / 1000).toFixed(1)} s were played in ${(over("at") / 1000).toFixed(1)} s`);
  const toldOver = (name) => last.told[name] - first.told[name];
  tell(toldOver("sounding") > 0.95 * toldOver("blocks"),
       `${toldOver("sounding")} of ${toldOver("blocks")} blocks sound`);
  const buffer = await browser.run("return 1000 * quarzel.sound.context.baseLatency");
  const share = over("computed") / over("at");
  tell(share < kMostOfACore, `the audio thread takes ${(100 * share).toFixed(1)} % of a core; the longest of ` +
       `its blocks took ${Math.max(...looks.slice(1).map(({ slowest }) => slowest))} ms, waiting included`);

  // What happened in each interval, and around it: a buffer computed late is played late a little later, and a
  // page that was held up tells it late. `beyond` is how much longer than usual a thread computed.
  const each = looks.slice(1).map((to, i) => [looks[i], to]);
  const shareOf = (name) => medianOf(each.map(([from, to]) => over(name, from, to) / over("at", from, to)));
  const usual = { computed: shareOf("computed"), pageComputed: shareOf("pageComputed") };
  const beyond = (name, from, to) => over(name, from, to) - usual[name] * over("at", from, to);
  const intervals = each.map(([from, to], i) => {
    const [first, last] = [looks[Math.max(i - 1, 0)], looks[Math.min(i + 2, looks.length - 1)]];
    return { late: over("underruns", from, to), idle: over("idle", from, to) / over("ticks", from, to),
      stolen: over("stolen", first, last), waited: over("waited", first, last),
      slowest: Math.max(...looks.slice(Math.max(i, 1), i + 3).map(({ slowest }) => slowest)),
      beyond: beyond("computed", first, last), heldUp: to.heldUp, pageBeyond: beyond("pageComputed", first, to) };
  });
  const figures = (some) => JSON.stringify(some, (_, x) => typeof x === "number" ? Number(x.toFixed(2)) : x);
  const most = (name) => Math.max(...intervals.map((interval) => interval[name])).toFixed(0);
  console.log(`${over("underruns")} late buffers of ${buffer.toFixed(0)} ms in ${intervals.filter(({ late }) => late).length} ` +
              `of ${intervals.length} intervals, on a machine that idled for ` +
              `${(100 * over("idle") / over("ticks")).toFixed(0)} % of the time, let the thread wait for ` +
              `${over("waited").toFixed(0)} ms and lost ${over("stolen")} ms to its host`);
  // The instrument is at fault if a block took longer than a buffer because the thread computed that much more than
  // usual, even if the browser had enough in store. Otherwise a late buffer is the machine's fault if others kept
  // all cores busy or the thread waiting, or if the host of a virtual machine took a buffer's time away. Time
  // that was taken away counts as computed.
  const own = intervals.filter(({ late, idle, stolen, waited, slowest, beyond }) =>
    (slowest > buffer && beyond - stolen > buffer) || (late && idle > kIdle && stolen + waited < buffer));
  tell(own.length === 0, `${own.length} of these intervals are the instrument's fault, which computed for up to ` +
       `${most("beyond")} ms more than usual ` + figures(own));
  const slow = intervals.filter(({ stolen, heldUp, pageBeyond }) => Math.min(heldUp, pageBeyond - stolen) > kHeldUp);
  tell(slow.length === 0, `the page was held up for up to ${most("heldUp")} ms, in ${slow.length} intervals by itself, ` +
       `which computed for up to ${most("pageBeyond")} ms more than usual ` + figures(slow));

  tell(over("pageMemory") === 0 && last.told.memory === first.told.memory,
       `the modules keep their ${megabytes(last.told.memory)} and ${megabytes(last.pageMemory)}`);
  for (const [what, most] of [["heap", kHeapGrowth], ["process", kProcessGrowth]]) {
    tell(after[what] - before[what] < most,
         `the page's ${what} has grown by ${megabytes(after[what] - before[what])} from ${megabytes(before[what])}`);
  }
  tell(browser.errors.length === 0, `no errors in the console ${browser.errors.slice(0, 3)}`);
});
