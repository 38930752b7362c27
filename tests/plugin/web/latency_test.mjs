// The choice of latency: who changes it, and what stays. Usage: node latency_test.mjs SITE
import fs from "node:fs";
import path from "node:path";
import { Browser, check, wait } from "./browser.mjs";

const [site] = process.argv.slice(2);
const kSeconds = 160;
// What happens in each second of a made-up output, whether buffers have come late too often then, and by
// whose count: the browser's, or its clock of played time.
const kOutputs = [
  ["late in three seconds", { late: [10, 13, 30] }, true],
  ["a little late in nine seconds", { late: [10, 12, 14, 16, 18, 20, 22, 24, 26], loss: 8 }, true],
  ["late in two seconds", { late: [10, 30] }, false],
  ["late in three minutes", { late: [10, 80, 150] }, false],
  ["late when it begins", { late: [0, 1, 2] }, false],
  ["late but silent", { late: [10, 20, 30], silent: true }, false],
  ["late in the background", { late: [10, 20, 30], hidden: true }, false],
  ["suspended now and then", { off: [10, 15, 20, 25, 30] }, false],
  ["asleep now and then", { late: [10, 15, 20, 25, 30], asleep: 60 }, false],
  ["a clock that steps and drifts", { step: 30, drift: 2e-4 }, false],
];
const kWatch = `
  const { UnderrunWatch } = await import("./app/latency.js");
  const [outputs, seconds] = values;
  const wrong = [];
  for (const [name, { late = [], off = [], silent, hidden, asleep = 0, loss = 30, step = 5, drift = 0 }, expected] of outputs) {
    for (const counts of [true, false]) {
      Object.defineProperty(document, "hidden", { value: hidden ?? false, configurable: true });
      const watch = new UnderrunWatch();
      let changes = false, underrunEvents = 0, played = 0, slept = 0;
      for (let i = 0; i < 20 * seconds; ++i) {
        const second = Math.floor(i / 20);
        const isLate = late.includes(second) && i % 20 === 7, isOff = off.includes(second);
        underrunEvents += isLate;
        if (isLate) slept += asleep;
        played += isOff ? 0 : (isLate ? 50 - loss : 50) * (1 - drift);
        const context = { state: isOff ? "suspended" : "running", currentTime: Math.floor(played / step) * step / 1000,
          ...counts && { playbackStats: { underrunEvents } } };
        changes ||= watch.look(context, !silent, 50 * i + 7 * (i % 3) + 1000 * slept);
      }
      delete document.hidden;
      if (changes !== expected) wrong.push(name + (counts ? "" : ", by the clock"));
    }
  }
  return wrong;`;

// A worklet that wastes a tenth of every second once it is told to. (Not this browser but others fall behind
// the clock then, so the rest goes by the browser's own count.)
const worklet = fs.readFileSync(path.join(site, "app/worklet.js"), "utf8");
const kWasteful = worklet.replace("actions = {", "actions = {\n    waste: () => { this.waste = true; },")
  .replace("process(_inputs, [[left, right]]) {", `$&
    if (this.waste && currentFrame % 44032 === 0) for (const end = Date.now() + 100; Date.now() < end;);`);

const browser = await Browser.start(site);
const latency = () => browser.run(`return [document.getElementById("latency").value, quarzel.sound.context.baseLatency > 0.05].join()`);
const isHeard = () => browser.until("return quarzel.sound.isHeard && quarzel.sound.running");

await browser.test(async () => {
  browser.replaced["/app/worklet.js"] = Buffer.from(kWasteful);
  await browser.open();
  const wrong = await browser.run(kWatch, kOutputs, kSeconds);
  check(wrong.length === 0, `late buffers are told from other things, except [${wrong}]`);

  await browser.wake();
  await browser.run(`quarzel.model.call("SetProgram", 9); quarzel.model.call("SetParameter", 0, 0.25);
    quarzel.midi(0x90, 60, 100); quarzel.sound.send("waste");`);
  check(await isHeard() && await latency() === "automatic,false", "the page begins with the shortest latency");
  check(await browser.until(`return /Steady/.test(document.getElementById("status").textContent)`) &&
        await latency() === "steady,true", "late buffers make it steady, and the page says so");
  await browser.run(`quarzel.midi(0x90, 64, 100)`);
  check(await isHeard() && await browser.run(`
    const text = (bytes) => new Uint8Array(bytes).join();
    return text(await quarzel.sound.state()) === text(quarzel.model.bytes("State")) &&
           quarzel.model.call("Program") === 9`), "the new output has the bank and the program, and sounds");

  await browser.open();
  check(await latency() === "steady,true", "the choice is there at the next visit");
  await browser.wake();
  await browser.choose("latency", "shortest");
  await browser.run(`quarzel.midi(0x90, 60, 100)`);
  check(await isHeard() && await browser.until(`return quarzel.sound.context.baseLatency < 0.05`), "the player goes back");
  await browser.run(`quarzel.sound.send("waste")`);
  await wait(8000);
  check(await latency() === "shortest,false", "what the player has chosen stays");

  await browser.call("Page.addScriptToEvaluateOnNewDocument", { source:
    `Object.defineProperty(AudioContext.prototype, "baseLatency", { value: 0 });` });
  await browser.open();
  await browser.run(`window.before = quarzel.sound.context`);
  await browser.choose("latency", "steady");
  check(await browser.until(`return /no other/.test(document.getElementById("status").textContent) &&
                                    quarzel.sound.context === before`), "a browser without a choice plays on and is said to have none");
  check(browser.errors.length === 0, `no errors in the console ${browser.errors}`);
});
