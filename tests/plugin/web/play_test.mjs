// Fingers, computer keys, MIDI keyboards, interrupted sound, and small screens.
// Usage: node play_test.mjs SITE
import { Browser, check, wait } from "./browser.mjs";

const [site] = process.argv.slice(2);
const browser = await Browser.start(site);
// What is sent to the worklet, as "status key", and what the page does with touches.
const played = () => browser.run(`return window.played.splice(0).join(" ")`);
const held = () => browser.run(`return [...document.querySelectorAll("#keys .down")].map((key) => key.dataset.note).join()`);
const parameters = () => browser.run(`
  return Array.from({ length: 42 }, (_, i) => quarzel.model.call("Parameter", i)).join()`);

// Stands in for hardware: `plug` and `pull` change its inputs, `midi` lets one speak.
const kMidi = `
  window.inputs = new Map();
  const access = { inputs, onstatechange: null };
  navigator.permissions.query = async () => ({ state: "prompt" });
  navigator.requestMIDIAccess = async (options) => {
    if (options?.sysex || window.refusing) throw new DOMException("", "SecurityError");
    return access;
  };
  window.plug = (name) => { inputs.set(name, { name, state: "connected" }); access.onstatechange?.(); };
  window.pull = (name) => {
    inputs.get(name).state = "disconnected";
    inputs.delete(name);
    access.onstatechange?.();
  };
  window.speak = (name, ...data) => inputs.get(name).onmidimessage({ data: new Uint8Array(data) });`;

async function open() {
  await browser.open();
  await browser.choose("latency", "shortest");  // "automatic" may interrupt held notes
  await browser.run(`
    window.played = [];
    const send = quarzel.sound.send.bind(quarzel.sound);
    quarzel.sound.send = (...message) => {
      if (message[0] === "midi") played.push(message.slice(1, 3).join(":"));
      send(...message);
    };
    quarzel.sound.onNews = ((before) => (news) => { window.heard = news[0] > 1e-4; before(news); })(quarzel.sound.onNews);`);
}

async function phone(width, height) {
  await browser.call("Emulation.setDeviceMetricsOverride", { width, height, deviceScaleFactor: 2, mobile: true });
  await browser.call("Emulation.setTouchEmulationEnabled", { enabled: true, maxTouchPoints: 5 });
}

await browser.test(async () => {
  await browser.call("Page.addScriptToEvaluateOnNewDocument", { source: kMidi });
  await open();

  // Computer keys: places count, not letters.
  await browser.call("Input.dispatchKeyEvent", { type: "keyDown", key: "y", code: "KeyZ", text: "y" });
  await browser.call("Input.dispatchKeyEvent", { type: "keyDown", key: "y", code: "KeyZ", text: "y", autoRepeat: true });
  check(await played() === "144:48", "a computer key plays by its place, and once");
  await browser.run(`dispatchEvent(new Event("blur"))`);
  check(await played() === "128:48", "it is released with the page's focus");
  await browser.key("PageUp");
  await browser.key("z", "KeyZ");
  check(await played() === "144:60 128:60", "Page Up goes up by an octave");
  await browser.key("PageDown");
  await browser.run(`document.getElementById("program").focus()`);
  await browser.key("z", "KeyZ");
  await browser.run(`document.getElementById("canvas").focus()`);
  await browser.key("f", "KeyF", 2);
  await browser.key("z", "KeyZ");
  check(await played() === "", "what is typed into a list or a search plays nothing");
  await browser.key("Escape");
  await browser.key("Escape");

  // MIDI keyboards.
  await browser.run(`plug("Piano")`);
  await browser.click("#midi-open");
  const midi = () => browser.run(`return document.getElementById("midi").textContent`);
  check(await browser.until(`return document.getElementById("midi").textContent.includes("Piano")`), `says: ${await midi()}`);
  await browser.run(`
    for (const message of [[0x93, 64, 90], [0xE3, 0, 80], [0xB3, 64, 127], [0xC0, 9], [0xB3, 123, 0], [0xF8], [0x93, 65, 90]]) {
      speak("Piano", ...message);
    }`);
  check(await played() === "147:64 227:0 179:64 192:9 179:123 147:65" &&
        await browser.run(`return quarzel.model.call("Program")`) === 9, "notes, bend, pedal, programs and all notes off arrive");
  await browser.run(`plug("Organ"); pull("Piano")`);
  check(/131:65/.test(await played()) && await midi() === "MIDI: Organ", `a keyboard that is pulled out releases its keys; ${await midi()}`);
  await browser.call("Page.addScriptToEvaluateOnNewDocument", { source: "window.refusing = true;" });
  await open();
  await browser.click("#midi-open");
  check(await browser.until(`return document.getElementById("midi").textContent.includes("not allowed")`), `says: ${await midi()}`);

  // The system takes the sound away; the worklet fails.
  check(await browser.until("return quarzel.sound.running"), "a click begins the sound");
  await browser.run(`await quarzel.sound.context.suspend()`);
  check(await browser.until("return quarzel.sound.running"), "a suspended output comes back");
  await wait(1200);
  await browser.run(`quarzel.sound.send("song", null, null)`);
  await wait(300);
  await browser.call("Input.dispatchKeyEvent", { type: "keyDown", key: "z", code: "KeyZ", text: "z" });
  check(await browser.until("return window.heard"), "a worklet that fails is replaced");
  browser.errors.length = 0;  // that failure

  // A phone.
  await phone(360, 740);
  await open();
  const pages = ["", "manual.html", "skins.html", "presets.html", "formats.html"];
  const wide = await browser.run(`
    const frame = document.body.appendChild(document.createElement("iframe"));
    frame.style.cssText = "width: 360px; height: 600px; border: 0";
    const wide = [];
    for (const page of values[0]) {
      await new Promise((done) => { frame.onload = done; frame.src = page || "index.html?"; });
      if (frame.contentDocument.documentElement.scrollWidth > 360) wide.push(page);
    }
    frame.remove();
    return wide;`, pages);
  check(wide.length === 0, `pages fit into 360 pixels, except [${wide}]`);
  const names = await browser.run(`
    const unnamed = [...document.querySelectorAll("button, select, input, audio, canvas")].filter((element) =>
      !element.textContent.trim() && !element.labels?.length && !element.getAttribute("aria-label"));
    const narrow = [...document.querySelectorAll("#keys button:not(.black)")].filter((key) => key.offsetWidth < 30);
    return [unnamed.length, narrow.length, document.querySelectorAll("h1").length, !!document.querySelector("nav, main")];`);
  check(names.join() === "0,0,1,true", `controls have names, keys have room: ${names}`);

  const keys = [];
  for (const note of [60, 64, 67]) keys.push(await browser.placeOf(`#keys [data-note='${note}']`));
  await browser.touch("touchStart", ...keys);
  check(await held() === "60,64,67", `fingers hold ${await held()}`);
  await browser.touch("touchMove", keys[0], keys[1], await browser.placeOf("#keys [data-note='65']"));
  check(await held() === "60,64,65", `one slides: ${await held()}`);
  await browser.touch("touchCancel");
  check(await held() === "" && (await played()).split(" ").filter((sent) => sent.startsWith("128")).length === 4,
        "no key hangs after the system takes the fingers away");

  const [left, top, width] = await browser.run(`
    const box = document.getElementById("canvas").getBoundingClientRect();
    return [box.left, box.top, box.width];`);
  const volume = [left + width * 0.913, top + width * 0.378];
  const place = () => browser.run("return [scrollY, visualViewport.scale].join()");
  const before = [await parameters(), await place()];
  await browser.touch("touchStart", volume);
  for (const up of [10, 20, 30, 2000]) await browser.touch("touchMove", [volume[0], volume[1] - up]);
  const moved = await parameters();
  await browser.touch("touchEnd");
  check(moved !== before[0] && await place() === before[1], "a finger turns a knob beyond the canvas; the page stays");
  await wait(600);
  const resting = await parameters();
  await browser.touch("touchStart", volume);
  check(await browser.until(`return quarzel.model.call("EditorWantsKeys") === 1`) && await parameters() === resting,
        "a finger that rests opens the menu");
  await browser.touch("touchEnd");

  // A finger finds a sound: on-screen keyboards report text instead of keys.
  await open();
  await browser.run(`document.getElementById("canvas").scrollIntoView()`);
  await browser.touch("touchStart", [left + width * 0.509, width * 0.026]);
  await browser.touch("touchEnd");
  await browser.until(`return !document.getElementById("typing").hidden`);
  await browser.run(`document.querySelector("#typing input").focus()`);
  await browser.call("Input.insertText", { text: "velvet tr" });
  await browser.key("Backspace");
  await browser.call("Input.insertText", { text: "i" });
  await browser.key("Enter");
  const name = await browser.run(`return quarzel.model.text("ProgramName", quarzel.model.call("Program"))`);
  check(name === "Velvet Tier", `a sound is searched for on a phone: ${name}`);

  await browser.call("Page.addScriptToEvaluateOnNewDocument", { source: "WebAssembly.validate = () => false;" });
  await browser.open();
  const status = await browser.run(`return document.getElementById("status").textContent`);
  check(/SIMD/.test(status), `says: ${status}`);
  check(browser.errors.length === 0, `no errors in the console ${browser.errors}`);
});
