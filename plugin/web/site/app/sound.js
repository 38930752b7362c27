// The instrument's voice: an audio context with the worklet in it.

// A module with one vector instruction.
const kSimd = Uint8Array.of(0, 97, 115, 109, 1, 0, 0, 0, 1, 5, 1, 96, 0, 1, 123, 3, 2, 1, 0, 10, 10, 1, 8, 0, 65, 0, 253, 15, 253, 98, 11);
const kBegun = 1000;  // milliseconds after which a failure is not that of the start
const kOpens = 3000;  // milliseconds
const kPeakLeft = 0, kPeakRight = 1;  // as plugin/web/news.h

export class Sound {
  #context = null;
  #opening = Promise.resolve();
  #latencyHint = "interactive";
  #node = null;
  #module = null;
  #stateNow = null;
  #waiting = [];  // messages from before the worklet was there
  #asked = [];    // who waits for a state
  #bound = new Map();
  #isHeard = false;
  #opens = 0;     // the timer that tells of an output that does not open
  onNews = () => {};
  onState = () => {};  // called whenever `running` may have changed
  onNoOutput = () => {};  // called if the browser leaves a gesture without an output
  onFault = () => {};  // called if the worklet cannot play at all

  // A reason why this browser cannot play, or an empty text.
  static lacking() {
    if (!window.isSecureContext) return "Sound needs a page that comes by https or from this machine.";
    if (!window.AudioWorklet) return "This browser has no audio worklets. Its next version may have them.";
    if (!WebAssembly.validate(kSimd)) return "This browser has no WebAssembly with SIMD. Newer ones have.";
    return "";
  }

  // The context waits for the first gesture; everything else is ready before. `stateNow` gives the
  // bank, again if a worklet has to be replaced.
  async prepare(module, stateNow) {
    this.#module = module;
    this.#stateNow = stateNow;
    await this.#open();
    for (const message of this.#waiting.splice(0)) this.send(...message);
  }

  // As `latencyHint` of an AudioContext, which must be replaced for that. What sounds stops. Returns false if the
  // browser's latency is the same with both hints, as in Firefox; then all goes on.
  async setLatency(hint) {
    const before = this.#context;
    if (hint === this.#latencyHint) return true;
    this.#latencyHint = hint;
    if (this.#module) await this.#open();
    return before === null || before !== this.#context;
  }

  // Replaces the context as soon as another can play, one after the other.
  #open() {
    this.#opening = this.#opening.catch(() => {}).then(() => this.#openNow());
    return this.#opening;
  }
  async #openNow() {
    const before = this.#context?.state === "closed" ? null : this.#context;
    const context = new AudioContext({ latencyHint: this.#latencyHint });
    if (before && context.baseLatency === before.baseLatency) return context.close();
    // The system may take the output away, for a call or because a device has gone.
    context.onstatechange = () => {
      if (context !== this.#context) return;
      if (context.state === "closed") this.#open();
      else if (context.state !== "running") this.wake();
      this.onState();
    };
    await context.audioWorklet.addModule(new URL("worklet.js", import.meta.url));
    this.#context = context;
    this.#addNode();
    before?.close().catch(() => {});
    this.wake();
  }

  #addNode() {
    const node = new AudioWorkletNode(this.#context, "quarzel-strings", {
      numberOfInputs: 0, outputChannelCount: [2],
      processorOptions: { module: this.#module, state: this.#stateNow() },
    });
    let begun = Infinity;
    node.port.onmessage = ({ data }) => {
      if (data === "ready") begun = performance.now();
      if (data instanceof Float32Array) {
        this.#isHeard = data[kPeakLeft] > 0 || data[kPeakRight] > 0;
        this.onNews(data);
      }
      if (data instanceof ArrayBuffer) this.#asked.shift()?.(data);
    };
    // A worklet that has failed stays silent.
    node.onprocessorerror = () => {
      node.disconnect();
      if (performance.now() - begun > kBegun) this.#addNode();
      else this.onFault();
    };
    this.#node?.disconnect();
    node.connect(this.#context.destination);
    for (const message of this.#bound.values()) node.port.postMessage(message);
    this.#node = node;
  }

  // Call this in every gesture. Before the first, browsers refuse.
  wake() {
    if (this.running || navigator.userActivation?.hasBeenActive === false) return;
    this.#context?.resume().catch(() => {});
    this.#opens ||= setTimeout(() => {
      this.#opens = 0;
      if (!this.running) this.onNoOutput();
    }, kOpens);
  }

  get running() { return this.#context?.state === "running"; }
  get isHeard() { return this.#isHeard; }
  get context() { return this.#context; }

  // The worklet's own state.
  state() {
    this.send("askState");
    return new Promise((done) => this.#asked.push(done));
  }

  send(...message) {
    if (message[0] === "bind") this.#bound.set(message[1], message);
    if (this.#node) this.#node.port.postMessage(message);
    else this.#waiting.push(message);
  }
}
