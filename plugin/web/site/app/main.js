// Joins the parts: the worklet that sounds, the model with its face, keys, MIDI and storage.
import { Face } from "./face.js";
import { Keys } from "./keys.js";
import { followLatency } from "./latency.js";
import { List } from "./list.js";
import { openMidiInputs } from "./midi_inputs.js";
import { askForFile, handOut, Programs } from "./programs.js";
import { Sound } from "./sound.js";
import { onFileStored, onStateStored, storedFiles, storedState, storeFile, storeState } from "./storage.js";

const kStoreAfter = 500;  // milliseconds
const kName = 0, kParameter = 1, kProgram = 2, kBinding = 3, kState = 4, kKey = 5;  // as plugin/web/page_script.h

const byId = (id) => document.getElementById(id);
const say = (text) => { byId("status").textContent = text; };
const at = (name) => new URL(`../${name}`, import.meta.url);

function showMessage(title, text) {
  byId("message-title").textContent = title;
  byId("message-text").textContent = text;
  if (!byId("message").open) byId("message").showModal();
}

const sound = new Sound();
sound.onNoOutput = () => say("The browser opens no sound output. It plays as soon as there is one.");
sound.onFault = () => say("The instrument has stopped. Please load the page again.");
const face = new Face(byId("canvas"), byId("typing"));
let model = null;
let programs = null;
let list = null;

// --- sound: ready before the module of the page is ---

function midi(status, data1, data2) {
  sound.wake();
  const kind = status >> 4;
  if (model && (kind === 0xB || kind === 0xC)) {
    model.call("Play", status, data1, data2);
    changed();
  }
  sound.send("midi", status, data1, data2);
}

const keys = new Keys(byId("keys"), midi);
for (const gesture of ["pointerdown", "keydown", "touchend"]) {
  addEventListener(gesture, () => sound.wake(), { capture: true });
}
byId("lower").onclick = () => keys.shift(-12);
byId("higher").onclick = () => keys.shift(12);
byId("silence").onclick = () => {
  keys.releaseAll();
  sound.send("silence");
};

const isTyping = ({ target }) => target.matches("input, select, textarea") && target.type !== "range";
const isUndo = ({ key, ctrlKey, metaKey }) => (ctrlKey || metaKey) && /^[zy]$/i.test(key);
addEventListener("keydown", (event) => {
  const isFree = !isTyping(event);
  if (face.key(event, isFree && isUndo(event)) || (isFree && !face.wantsKeys && keys.keyDown(event))) {
    event.preventDefault();
  }
});
addEventListener("keyup", (event) => {
  keys.keyUp(event);
  face.key(event);
});

async function bytesOf(name) {
  const answer = await fetch(at(name));
  if (!answer.ok) throw new Error(`${name} cannot be loaded (${answer.status}).`);
  return answer.arrayBuffer();
}

followLatency(byId("latency"), sound, say);

async function startSound() {
  const lacking = Sound.lacking();
  if (lacking) throw new Error(lacking);
  const [module, factory] = await Promise.all([bytesOf("quarzel-sound.wasm"), bytesOf("default.fxb")]);
  await sound.prepare(module, () => model?.bytes("State").buffer ?? storedState() ?? factory);
  let wasRunning = null;
  sound.onState = () => {
    if (sound.running === wasRunning) return;
    wasRunning = sound.running;
    say(wasRunning ? "Ready." : "Ready. Click a key: browsers let no page sound before.");
  };
  sound.onState();
}

// --- the page's module ---

let storing = 0;
let storageTold = false;
function storeNow() {
  clearTimeout(storing);
  storing = 0;
  if (model) tellOfStorage(storeState(model.bytes("State")));
  byId("others").hidden = true;
}
function tellOfStorage(works) {
  if (works || storageTold) return;
  storageTold = true;
  byId("lacking").textContent += " This browser stores nothing here: save a bank to keep your sounds.";
}
function changed() {
  storing ||= setTimeout(storeNow, kStoreAfter);
  programs?.show();
}
addEventListener("pagehide", () => { if (storing) storeNow(); });

// Of two pages, the one that changes a sound last keeps its bank for the next visit, so the other can take it.
function offerState(bytes) {
  byId("others").hidden = `${bytes}` === `${model.bytes("State")}`;
  byId("others-take").onclick = () => {
    const fault = model.take("TakeState", bytes, "The bank of the other page");
    if (fault) showMessage("Quarzel Strings", fault);
    byId("others").hidden = true;
  };
}

const page = {
  ...face.actions,
  showMessage,
  storeFile: (path, bytes) => tellOfStorage(storeFile(path, bytes)),
  handOut,
  askForFile: () => face.afterPress(askForFile),
  openDocument: () => window.open(at("manual.html")) !== null,
  send(what, index, value) {
    if (what === kKey) {
      face.keyPlayed();
      return midi(value > 0 ? 0x90 : 0x80, index, value);
    }
    if (what === kParameter) sound.send("parameter", index, value);
    if (what === kProgram) sound.send("program", index);
    if (what === kBinding) sound.send("bind", index, value);
    if (what === kState && model) sound.send("state", model.bytes("State").buffer);
    if (what === kName || what === kState) programs?.fill();
    if (model) changed();
  },
};

async function startModel() {
  const { Model } = await import("./model.js");
  const loaded = await Model.load(page, storedFiles(), sound.context.sampleRate);
  const state = storedState();
  const fault = state && loaded.take("BeginWith", state, "The bank of your last visit");
  model = loaded;
  if (fault) showMessage("Quarzel Strings", `${fault} The factory bank is there instead.`);
  onFileStored((path, bytes) => model.putFile(path, bytes));
  onStateStored(offerState);
  model.call("SendBindings");
  programs = new Programs(model, (text, isFault) =>
    isFault ? showMessage("Quarzel Strings", text) : say(text));
  list = new List(byId("list"), model);
  if (!face.open(model)) showMessage("Quarzel Strings", "The panel cannot be shown. Sound and list work.");
  sound.onNews = (news) => model.news(news);
  setInterval(() => {
    if (byId("controls").open) list.show();
    model.call("SendBindings");
    programs.show();
  }, 200);
}

// --- previews ---

let preview = null;
document.addEventListener("click", ({ target }) => {
  const { play, take } = target.dataset ?? {};
  if (play) {
    const again = preview?.file === play && !preview.audio.paused;
    preview?.audio.pause();
    preview = again ? null : { file: play, audio: new Audio(at(play)) };
    preview?.audio.play().catch(() => say("This browser cannot play the preview."));
  }
  if (take && model) {
    programs.choose(Number(take));
    const still = matchMedia("(prefers-reduced-motion: reduce)").matches;
    byId("instrument").scrollIntoView({ behavior: still ? "auto" : "smooth" });
  }
});

// --- MIDI keyboards: asked for by a click, unless the player has allowed them before ---

async function startMidi() {
  const button = byId("midi-open");
  const open = () => {
    button.remove();
    return openMidiInputs(midi, (text) => { byId("midi").textContent = text; });
  };
  const state = await navigator.permissions?.query({ name: "midi" }).catch(() => null);
  if (!navigator.requestMIDIAccess || state?.state === "granted") return open();
  button.hidden = false;
  button.onclick = open;
}

// --- a copy for times without a network ---

async function keepOffline() {
  const registration = await navigator.serviceWorker.register(at("sw.js"));
  const offer = () => {
    if (!registration.waiting || !navigator.serviceWorker.controller) return;
    byId("update").hidden = false;
    byId("update-now").onclick = () => {
      byId("update-now").disabled = true;  // the old one may need half a minute to end
      navigator.serviceWorker.addEventListener("controllerchange", () => location.reload());
      registration.waiting.postMessage("take over");
    };
  };
  registration.addEventListener("updatefound", () => registration.installing.addEventListener("statechange", offer));
  offer();
}

startMidi();
const ready = startSound().then(startModel).then(() => true, (fault) => {
  say(`The instrument cannot play here. ${fault.message}`);
  return false;
});
if ("serviceWorker" in navigator) keepOffline().catch(() => {});

// For tests and the curious.
window.quarzel = { ready, sound, midi, get model() { return model; }, get storing() { return storing; } };
