// What 44 voices cost in the module of the worklet, against real time and against native code.
// Usage: node cost_test.mjs SITE NATIVE-BUILD
import { spawnSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { check } from "./browser.mjs";

const [site, native] = process.argv.slice(2);
const kRate = 48000, kSeconds = 20, kQuantum = 128, kRounds = 3;
const kMostOfACore = 0.10;
// Chorus, phaser, reverb and spring on, every section, and the most voices.
const kOn = [17, 18, 19, 20, 21, 22, 26, 32, 37];
const kAmounts = [[34, 0.5], [38, 0.5], [41, 0.5]];
const kVoices = 99999;
// Voices above the split and one bass.
const kKeys = Array.from({ length: 44 }, (_, i) => 40 + i);

const code = new WebAssembly.Module(fs.readFileSync(path.join(site, "quarzel-sound.wasm")));
const imports = {};
for (const { module, name } of WebAssembly.Module.imports(code)) {
  (imports[module] ??= {})[name] = () => -1;
}

function secondsInWasm() {
  const strings = new WebAssembly.Instance(code, imports).exports;
  strings._initialize();
  strings.quarzelStart(kRate, 0);
  strings.quarzelSetParameter(kVoices, 1);
  for (const index of kOn) strings.quarzelSetParameter(index, 1);
  for (const [index, value] of kAmounts) strings.quarzelSetParameter(index, value);
  for (const key of kKeys) strings.quarzelMessage(0, 0x90, key, 100);
  const memory = strings.memory.buffer.byteLength;
  const before = process.cpuUsage();
  for (let frame = 0; frame < kRate * kSeconds; frame += kQuantum) strings.quarzelRender(kQuantum);
  const used = process.cpuUsage(before);
  const heard = new Float32Array(strings.memory.buffer, strings.quarzelLeft(), kQuantum);
  check(heard.some((x) => x !== 0), "the voices sound to the end");
  check(strings.memory.buffer.byteLength === memory, `the module keeps its ${memory} bytes`);
  return (used.user + used.system) / 1e6;
}

// The same chord as a song, with what the native program takes for it.
function songFile() {
  const lengthOf = (ticks) => [0x80 | ticks >> 14 & 127, 0x80 | ticks >> 7 & 127, ticks & 127];
  const track = [...kKeys.flatMap((key) => [0, 0x90, key, 100]),
    ...lengthOf(960 * kSeconds), 0x80, kKeys[0], 0, 0, 0xFF, 0x2F, 0];
  const file = path.join(os.tmpdir(), `quarzel-cost-${process.pid}.mid`);
  fs.writeFileSync(file, Buffer.from([...Buffer.from("MThd"), 0, 0, 0, 6, 0, 0, 0, 1, 480 >> 8, 480 & 255,
    ...Buffer.from("MTrk"), 0, 0, track.length >> 8, track.length & 255, ...track]));
  return file;
}

function secondsInNative(song) {
  const sets = [...kOn.map((i) => [i, 1]), ...kAmounts].flatMap(([i, x]) => ["--set", `${i}=${x}`]);
  const { stderr, status } = spawnSync("bash", ["-c", 'TIMEFORMAT="%U"; time "$@"', "bash",
    path.join(native, "render/quarzel-render"), "--quiet", "--rate", kRate, "--block", kQuantum, "--tail", "0",
    "--plugin", path.join(native, "plugin/QuarzelStrings.so"), ...sets, song, `${song}.wav`], { encoding: "utf8" });
  return status === 0 ? Number(stderr.trim()) : NaN;
}

const song = songFile();
const rounds = Array.from({ length: kRounds }, () => [secondsInWasm(), secondsInNative(song)]);
for (const file of [song, `${song}.wav`]) fs.rmSync(file);
const [wasm, nativeTime] = [0, 1].map((i) => Math.min(...rounds.map((round) => round[i])));
console.log(`the native program takes ${nativeTime} s for as much`);
check(wasm / kSeconds <= kMostOfACore,
      `44 voices take ${(100 * wasm / kSeconds).toFixed(1)} % of a core, ` +
      `${(wasm / nativeTime).toFixed(2)} times the native program`);
