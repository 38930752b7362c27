// A headless Chromium on a folder served from this machine, driven through its debugging pipe.
import { spawn } from "node:child_process";
import fs from "node:fs";
import http from "node:http";
import os from "node:os";
import path from "node:path";

const kTypes = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css",
  ".wasm": "application/wasm", ".svg": "image/svg+xml", ".opus": "audio/ogg" };
const kPatience = 500000;  // milliseconds, for machines that are busy

// Any static host will do: no special headers.
function serve(folder, requests) {
  const server = http.createServer((request, response) => {
    const name = decodeURIComponent(new URL(request.url, "http://x").pathname);
    requests.push(name);
    const file = path.join(folder, name.endsWith("/") ? `${name}index.html` : name);
    fs.readFile(file, (error, bytes) => {
      response.writeHead(error ? 404 : 200, {
        "Content-Type": kTypes[path.extname(file)] ?? "application/octet-stream" });
      response.end(error ? "" : bytes);
    });
  });
  return new Promise((done) => server.listen(0, "127.0.0.1", () => done(server)));
}

export class Browser {
  requests = [];  // paths that were asked from the server
  outside = [];   // addresses beyond it
  errors = [];    // of the console
  #calls = new Map();
  #next = 1;
  #session;

  static async start(folder) {
    const browser = new Browser();
    browser.server = await serve(folder, browser.requests);
    browser.origin = `http://127.0.0.1:${browser.server.address().port}`;
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
        await new Promise((done) => setTimeout(done, 200));
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

  #receive({ id, result, error, method, params }) {
    const call = this.#calls.get(id);
    if (call) {
      clearTimeout(call.timer);
      this.#calls.delete(id);
      return error ? call.fail(new Error(error.message)) : call.done(result);
    }
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
      await new Promise((done) => setTimeout(done, 50));
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
