// The instrument's voice: an audio context with the worklet in it.

export class Sound {
  #context = null;
  #node = null;
  #module = null;
  #stateNow = null;
  #waiting = [];  // messages from before the worklet was there
  #asked = [];    // who waits for a state
  #bound = new Map();
  onNews = () => {};
  onState = () => {};  // called whenever `running` may have changed

  // A reason why this browser cannot play, or an empty text.
  static lacking() {
    if (!window.isSecureContext) return "Sound needs a page that comes by https or from this machine.";
    if (!window.AudioWorklet) return "This browser has no audio worklets. Its next version may have them.";
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

  async #open() {
    const context = new AudioContext({ latencyHint: "interactive" });
    // The system may take the output away, for a call or because a device has gone.
    context.onstatechange = () => {
      if (context.state === "closed") this.#open();
      else if (context.state !== "running") this.wake();
      this.onState();
    };
    await context.audioWorklet.addModule(new URL("worklet.js", import.meta.url));
    this.#context = context;
    this.#addNode();
    this.wake();
  }

  #addNode() {
    const node = new AudioWorkletNode(this.#context, "quarzel-strings", {
      numberOfInputs: 0, outputChannelCount: [2],
      processorOptions: { module: this.#module, state: this.#stateNow() },
    });
    node.port.onmessage = ({ data }) => {
      if (data instanceof Float32Array) this.onNews(data);
      if (data instanceof ArrayBuffer) this.#asked.shift()?.(data);
    };
    // A worklet that has failed stays silent.
    node.onprocessorerror = () => {
      node.disconnect();
      this.#addNode();
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
  }

  get running() { return this.#context?.state === "running"; }
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
