// A headless Chromium on a folder served from this machine, driven through its debugging pipe.
import { spawn } from "node:child_process";
import fs from "node:fs";
import http from "node:http";
import os from "node:os";
import path from "node:path";

const kTypes = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css",
  ".wasm": "application/wasm", ".svg": "image/svg+xml", ".opus": "audio/ogg" };
const kKeyCodes = { Backspace: 8, Enter: 13, Escape: 27, Tab: 9, Home: 36, PageUp: 33, PageDown: 34 };
const kPatience = 500000;  // milliseconds, for machines that are busy

const kFolder = "/strings";  // one of several on its host

// Any static host will do: no special headers. `replaced` has other contents for some names.
function serve(folder, requests, replaced) {
  const server = http.createServer((request, response) => {
    const asked = decodeURIComponent(new URL(request.url, "http://x").pathname);
    requests.push(asked);
    const inside = asked.startsWith(`${kFolder}/`) ? asked.slice(kFolder.length) : "/nothing";
    const name = inside.endsWith("/") ? `${inside}index.html` : inside;
    let bytes = replaced[name] ?? null;
    try { bytes ??= fs.readFileSync(path.join(folder, name)); } catch { /* not there */ }
    const part = /^bytes=(\d+)-(\d*)$/.exec(request.headers.range ?? "");
    const [first, last] = part ? [Number(part[1]), part[2] ? Number(part[2]) : bytes.length - 1] : [];
    response.writeHead(bytes === null ? 404 : part ? 206 : 200, {
      "Content-Type": kTypes[path.extname(name)] ?? "application/octet-stream",
      ...part && { "Content-Range": `bytes ${first}-${last}/${bytes.length}` } });
    response.end(part ? bytes?.subarray(first, last + 1) : bytes ?? "");
  });
  return new Promise((done) => server.listen(0, "127.0.0.1", () => done(server)));
}

export class Browser {
  requests = [];  // paths that were asked from the server
  replaced = {};  // what it answers instead of files: bytes by names in the page's folder
  outside = [];   // addresses beyond the page's folder
  errors = [];    // of the console
  #calls = new Map();
  #awaited = new Map();
  #next = 1;
  #session;

  static async start(folder) {
    const browser = new Browser();
    browser.server = await serve(folder, browser.requests, browser.replaced);
    browser.origin = `http://127.0.0.1:${browser.server.address().port}${kFolder}`;
    browser.profile = fs.mkdtempSync(path.join(os.tmpdir(), "quarzel-browser-"));
    browser.process = spawn("chromium", ["--headless=new", "--no-sandbox", "--disable-gpu",
      "--remote-debugging-pipe", "--no-first-run", "--disable-background-networking",
      "--disable-component-update", "--window-size=1280,1600",
      `--user-data-dir=${browser.profile}`, "about:blank"],
      { stdio: ["ignore", "ignore", "ignore", "pipe", "pipe"], detached: true });
    let rest = "";
    browser.process.stdio[4].on("data", (data) => {
      const parts = (rest + data).split("\0");
      rest = parts.pop();
      for (const part of parts) browser.#receive(JSON.parse(part));
    });
    const { targetInfos } = await browser.call("Target.getTargets");
    const { targetId } = targetInfos.find(({ type }) => type === "page");
    const { sessionId } = await browser.call("Target.attachToTarget", { targetId, flatten: true });
    browser.#session = sessionId;
    for (const domain of ["Page", "Runtime", "Network", "Log"]) await browser.call(`${domain}.enable`);
    return browser;
  }

  // Runs a test to its first fault, and ends.
  async test(body) {
    try {
      await body();
    } catch (fault) {
      console.log(`FAILED: ${fault.message}`);
      process.exitCode = 1;
    } finally {
      await this.stop();
    }
  }

  async stop() {
    this.process.kill();
    this.server.closeAllConnections();
    this.server.close();
    await new Promise((done) => this.process.on("exit", done));
    // Its helper processes write until they notice.
    try {
      process.kill(-this.process.pid, "SIGKILL");
    } catch {
      // None is left.
    }
    for (let left = 50; ; --left) {
      try {
        return fs.rmSync(this.profile, { recursive: true, force: true });
      } catch (error) {
        if (left === 0) throw error;
        await wait(200);
      }
    }
  }

  call(method, params = {}) {
    const id = this.#next++;
    this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId: this.#session }) + "\0");
    return new Promise((done, fail) => {
      const timer = setTimeout(() => fail(new Error(`${method}: no answer`)), kPatience);
      this.#calls.set(id, { done, fail, timer });
    });
  }

  // The next event of a name.
  event(name) {
    return new Promise((done) => this.#awaited.set(name, done));
  }

  #receive({ id, result, error, method, params }) {
    const call = this.#calls.get(id);
    if (call) {
      clearTimeout(call.timer);
      this.#calls.delete(id);
      return error ? call.fail(new Error(error.message)) : call.done(result);
    }
    this.#awaited.get(method)?.(params);
    if (method === "Runtime.exceptionThrown") {
      this.errors.push(params.exceptionDetails.exception?.description ?? params.exceptionDetails.text);
    }
    if (method === "Runtime.consoleAPICalled" && params.type === "error") {
      this.errors.push(params.args.map(({ value, description }) => value ?? description).join(" "));
    }
    if (method === "Log.entryAdded" && params.entry.level === "error") {
      this.errors.push(`${params.entry.text} ${params.entry.url ?? ""}`);
    }
    if (method === "Network.requestWillBeSent") {
      const { url } = params.request;
      const isInside = url.startsWith(`${this.origin}/`) || /^(blob|data):/.test(url);
      if (!isInside) this.outside.push(url);
    }
  }

  // Runs the body of an asynchronous function in the page and returns its JSON value.
  async run(body, ...values) {
    const expression = `(async (...values) => { ${body} })(${values.map((v) => JSON.stringify(v))})`;
    const { result, exceptionDetails } = await this.call("Runtime.evaluate",
      { expression, awaitPromise: true, returnByValue: true });
    if (exceptionDetails) throw new Error(exceptionDetails.exception?.description ?? exceptionDetails.text);
    return result.value;
  }

  // Loads the page until its instrument is there.
  async open(name = "/") {
    await this.call("Page.navigate", { url: this.origin + name });
    const end = Date.now() + kPatience;
    while (Date.now() < end) {
      const ready = await this.run("return window.quarzel ? quarzel.ready : null").catch(() => null);
      if (ready !== null) return ready;
      await wait(50);
    }
    throw new Error("the page does not load");
  }

  // The process and the thread that run the worklet.
  audioThread() {
    for (const id of fs.readdirSync("/proc").filter((name) => /^\d+$/.test(name))) {
      try {
        if (!fs.readFileSync(`/proc/${id}/cmdline`, "utf8").includes(this.profile)) continue;
        for (const task of fs.readdirSync(`/proc/${id}/task`)) {
          const name = fs.readFileSync(`/proc/${id}/task/${task}/comm`, "utf8");
          if (/AudioW/.test(name) && !/AudioWorker/.test(name)) return { id, task };
        }
      } catch {
        // It ended meanwhile.
      }
    }
    throw new Error("no thread of a worklet");
  }

  // For how many milliseconds a thread has computed.
  computed({ id, task }) {
    return Number(fs.readFileSync(`/proc/${id}/task/${task}/schedstat`, "utf8").split(" ")[0]) / 1e6;
  }

  // The gesture without which a browser lets no page sound.
  async wake() {
    for (const type of ["mousePressed", "mouseReleased"]) await this.mouse(type, 5, 5);
  }

  mouse(type, x, y, more = {}) {
    const held = type === "mouseMoved" ? {} : { button: "left", clickCount: 1 };
    return this.call("Input.dispatchMouseEvent", { type, x, y, ...held, ...more });
  }

  // Waits until the body of a function returns something true in the page.
  async until(body, ...values) {
    const end = Date.now() + 60000;
    while (Date.now() < end) {
      // It may just be between two pages.
      if (await this.run(body, ...values).catch(() => false)) return true;
      await wait(50);
    }
    return false;
  }

  // Presses and releases a key of the computer. `code` is its place, `key` what it types.
  async key(key, code = key, modifiers = 0) {
    const named = { key, code, modifiers, windowsVirtualKeyCode: kKeyCodes[key] ?? 0 };
    const text = [...key].length === 1 && !modifiers ? { text: key } : {};
    await this.call("Input.dispatchKeyEvent", { type: "keyDown", ...named, ...text });
    await this.call("Input.dispatchKeyEvent", { type: "keyUp", ...named });
  }
  // Gives a file to the page's own picker.
  async pickFile(file) {
    const { root } = await this.call("DOM.getDocument");
    const { nodeId } = await this.call("DOM.querySelector", { nodeId: root.nodeId, selector: "#file" });
    await this.call("DOM.setFileInputFiles", { nodeId, files: [file] });
  }
  // Chooses from a list by its identity.
  choose(id, value) {
    return this.run(`
      const select = document.getElementById(values[0]);
      select.value = values[1];
      select.dispatchEvent(new Event("change"));`, id, value);
  }
  touch(type, ...points) {
    return this.call("Input.dispatchTouchEvent",
      { type, touchPoints: points.map(([x, y], id) => ({ x, y, id })) });
  }

  // Where an element is: the middle of its lower end.
  placeOf(selector) {
    return this.run(`
      const element = document.querySelector(values[0]);
      element.scrollIntoView({ block: "center" });
      const box = element.getBoundingClientRect();
      return [box.left + box.width / 2, box.top + box.height * 0.9];`, selector);
  }
  async click(selector) {
    const [x, y] = await this.placeOf(selector);
    await this.mouse("mousePressed", x, y);
    await this.mouse("mouseReleased", x, y);
  }
}

// For the body of run(): renders `frames` frames by a worklet that begins with the bank `state`, has got
// the `messages` of a page, and plays `song` (frames and bytes).
export const kRenderOffline = `
  async function renderOffline(rate, frames, state, song, messages = []) {
    const context = new OfflineAudioContext(2, frames, rate);
    await context.audioWorklet.addModule("app/worklet.js");
    const module = await (await fetch("quarzel-sound.wasm")).arrayBuffer();
    const node = new AudioWorkletNode(context, "quarzel-strings", {
      numberOfInputs: 0, outputChannelCount: [2], processorOptions: { module, state, song } });
    node.connect(context.destination);
    const arrived = new Promise((done) => {
      node.port.onmessage = ({ data }) => { if (data instanceof ArrayBuffer) done(); };
    });
    for (const message of [...messages, ["askState"]]) node.port.postMessage(message);
    await arrived;
    return context.startRendering();
  }`;

export function check(holds, what) {
  if (!holds) throw new Error(what);
  console.log(`ok: ${what}`);
}

export const wait = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));
