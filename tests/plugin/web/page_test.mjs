// The page as a player uses it. Usage: node page_test.mjs SITE FOLDER
// FOLDER holds what native programs made: sound.fxp, init.fxb (every sound "Init") and face.png,
// the default skin with such a sound.
import fs from "node:fs";
import path from "node:path";
import { Browser, check, kRenderOffline, wait } from "./browser.mjs";

const [site, folder] = process.argv.slice(2);
const kSoundsWithin = 100;  // milliseconds from the first press to an audible sample
const kNews = [0, 0, 0, -1, 0.25, 0.5, 0.75, 0, 0, 0, 0, 0, 0, 0, 0];  // no note, no sound, and the taps of the picture
// With these on top of "Init", nothing is silent that a control could change.
const kSounding = { 3: 0.5, 7: 0.2, 8: 0.4, 9: 0.5, 10: 0.4, 11: 0.5, 12: 0.5, 13: 0.5, 14: 0.5, 21: 1, 22: 1, 32: 1,
  34: 0.5, 37: 1 };
const kPan = 1;           // stored and shown, but it changes no sample in any edition
const kHeardFrom = 3e-3;  // of the phrase's peak: what a movement must change at least
const browser = await Browser.start(site);

async function loadFile(name) {
  await browser.run(`document.getElementById("status").textContent = ""`);
  await browser.pickFile(path.resolve(folder, name));
  for (let i = 0; i < 100 && !await browser.run(`return document.getElementById("status").textContent`); ++i) {
    await wait(50);
  }
}

// The worklet's own state and the model's, as texts.
const states = () => browser.run(`
  const text = (bytes) => new Uint8Array(bytes).join();
  const worklet = await quarzel.sound.state();
  return [text(worklet), text(quarzel.model.bytes("State"))];`);

// Milliseconds from a real press on a key to the news that something is heard.
async function firstSound() {
  await browser.open();
  const [x, y] = await browser.placeOf("#keys [data-note='60']");
  await browser.run(`
    window.heard = new Promise((done) => {
      let pressed = 0;
      addEventListener("pointerdown", (event) => { pressed = event.timeStamp; },
                       { capture: true, once: true });
      const before = quarzel.sound.onNews;
      quarzel.sound.onNews = (news) => {
        if (pressed && news[0] > 1e-4) done(performance.now() - pressed);
        before(news);
      };
    });`);
  await browser.mouse("mousePressed", x, y);
  const time = await browser.run("return window.heard");
  await browser.mouse("mouseReleased", x, y);
  return time;
}

// Two points of the canvas for each parameter, of those found by turning the wheel. Menus may move
// one, too, but lie above the panels.
const controls = () => browser.run(`
  const { model } = quarzel;
  const canvas = document.getElementById("canvas");
  canvas.scrollIntoView({ block: "start" });
  const box = canvas.getBoundingClientRect();
  const count = model.call("ParameterCount");
  const all = () => Array.from({ length: count }, (_, i) => model.call("Parameter", i));
  const found = {};
  for (let y = 5; y < box.height; y += 10) {
    for (let x = 5; x < box.width; x += 10) {
      const before = all();
      const at = { clientX: box.left + x, clientY: box.top + y, bubbles: true, cancelable: true };
      canvas.dispatchEvent(new PointerEvent("pointermove", at));
      for (const deltaY of [-100, 100]) {
        canvas.dispatchEvent(new WheelEvent("wheel", { ...at, deltaY }));
        const moved = all().flatMap((value, i) => value === before[i] ? [] : [i]);
        if (moved.length === 1) (found[moved[0]] ??= []).push([at.clientX, at.clientY]);
      }
    }
  }
  return Object.values(found).map((places) => [places.at(-1), places[places.length >> 1]]);`);

const parameter = (index) => browser.run(`return quarzel.model.call("Parameter", values[0])`, index);

// Switches want a click or a drag sideways.
const kDrags = [[0, 0], [0, -25], [0, 25], [25, 0]];

async function drag(index, places) {
  const before = await parameter(index);
  for (const [x, y] of places) {
    for (const [right, down] of kDrags) {
      await browser.mouse("mouseMoved", x, y);
      await browser.mouse("mousePressed", x, y);
      await browser.mouse("mouseMoved", x + right, y + down, { buttons: 1, button: "left" });
      await browser.mouse("mouseReleased", x + right, y + down);
      if (await parameter(index) !== before) return true;
      await wait(600);  // the next press is no double click
    }
  }
  return false;
}

// Makes the page ready for drags that are heard, and renders the phrase as it sounds without any.
const listen = () => browser.run(kRenderOffline + `
  const [sounding, rate] = values;
  const { model, sound } = quarzel;
  for (const [index, value] of Object.entries(sounding)) model.call("SetParameter", Number(index), value);
  const base = model.bytes("State");
  // A chord over all splits, one key more that starts an envelope again, and a release.
  const keys = [30, 33, 36, 40, 45, 48, 52, 57, 60, 64, 69, 72, 76];
  const events = [...keys.map((key) => [0, 0x90, key, 60]), [0.3, 0x90, 79, 127],
    ...[...keys, 79].map((key) => [0.7, 0x80, key, 0])];
  const song = [Float64Array.from(events, ([time]) => Math.round(time * rate)),
    Uint8Array.from(events.flatMap(([, ...bytes]) => bytes))];
  const render = async (messages) => {
    const heard = await renderOffline(rate, 1.2 * rate, base.slice().buffer, song, messages);
    return [0, 1].map((channel) => heard.getChannelData(channel));
  };
  const mostOf = (sides, sample) => Math.max(...sides.map((side, channel) =>
    side.reduce((most, x, i) => Math.max(most, Math.abs(sample(x, channel, i))), 0)));
  const untouched = await render([]);
  const peak = mostOf(untouched, (x) => x);
  let sent = [];
  const { send } = sound;
  sound.send = (...message) => {
    sent.push(message);
    send.apply(sound, message);
  };
  window.begin = () => {
    model.take("TakeState", base, "base");
    sent = [];
  };
  // By how much the messages since then change the phrase.
  window.difference = async () =>
    mostOf(await render(sent), (x, channel, i) => x - untouched[channel][i]) / peak;`, kSounding, 48000);

await browser.test(async () => {
  let best = Infinity;
  for (let i = 0; i < 6 && best > kSoundsWithin; ++i) best = Math.min(best, await firstSound());
  check(best <= kSoundsWithin, `a key sounds ${best.toFixed(0)} ms after the first press`);

  await browser.open();  // with a meter at rest
  await loadFile("init.fxb");
  await browser.run(`
    quarzel.model.call("Start", 48000);  // the rate of quarzel-skin
    for (let i = 0; i < 60; ++i) quarzel.model.call("SetProgram", 0);  // "HP" has arrived
    quarzel.sound.onNews = () => {};
    quarzel.model.news(new Float32Array(values[0]));`, kNews);
  await wait(1500);
  const differing = await browser.run(`
    const native = await createImageBitmap(await (await fetch("data:image/png;base64," + values[0])).blob());
    const canvas = document.getElementById("canvas");
    const copy = new OffscreenCanvas(native.width, native.height).getContext("2d");
    copy.drawImage(native, 0, 0);
    if (canvas.width !== native.width || canvas.height !== native.height) return -1;
    const [a, b] = [copy, canvas.getContext("2d")].map(
      (context) => context.getImageData(0, 0, native.width, native.height).data);
    const wrong = new Set();
    a.forEach((byte, i) => { if (byte !== b[i]) wrong.add(i >> 2); });
    window.wrong = [...wrong].slice(0, 5).map((i) => [i % native.width, Math.floor(i / native.width)]);
    return wrong.size;`, fs.readFileSync(path.join(folder, "face.png"), "base64"));
  check(differing === 0, `${differing} pixels of the face differ from the native ones ` +
        JSON.stringify(await browser.run("return window.wrong")));

  await listen();
  const found = await controls();
  const unmoved = [];
  const differences = [];
  for (const [index, places] of found.entries()) {
    await browser.run("begin()");
    if (!await drag(index, places)) unmoved.push(index);
    differences.push(await browser.run("return difference()"));
  }
  check(found.length === 42 && unmoved.length === 0,
        `${found.length} parameters move by wheel and by pointer, except by pointer [${unmoved}]`);
  const silent = differences.flatMap((change, i) => i !== kPan && !(change >= kHeardFrom) ? [i] : []);
  const least = Math.min(...differences.filter((_, i) => i !== kPan));
  check(silent.length === 0 && differences[kPan] === 0,
        `each but Pan is heard in the worklet, the least by ${least.toFixed(4)} of the peak, except [${silent}]`);

  await browser.run("quarzel.midi(0xC0, 5, 0)");
  check(await browser.run(`return Number(document.getElementById("program").value) === 5 &&
                                  quarzel.model.call("Program") === 5`), "a program change arrives");
  await loadFile("sound.fxp");
  const name = await browser.run(`return quarzel.model.text("ProgramName", 5)`);
  const inFile = fs.readFileSync(path.join(folder, "sound.fxp")).toString("latin1", 28, 56);
  check(name === inFile.replace(/\0.*/s, ""), `a native preset is loaded: ${name}`);
  const [worklet, model] = await states();
  check(worklet === model, "the worklet and the page hold the same bank");

  for (let i = 0; i < 100 && await browser.run("return quarzel.storing"); ++i) await wait(50);
  await browser.open();
  const [, reloaded] = await states();
  check(reloaded === model, "the bank is there after a reload");

  check(browser.errors.length === 0, `no errors in the console ${browser.errors}`);
  check(browser.outside.length === 0, `no request leaves the page's folder ${browser.outside}`);
});
