// The instrument's voice: an audio context with the worklet in it.

export class Sound {
  #context = null;
  #node = null;
  #waiting = [];  // messages from before the worklet was there
  #asked = [];    // who waits for a state
  onNews = () => {};

  // A reason why this browser cannot play, or an empty text.
  static lacking() {
    if (!window.isSecureContext) return "Sound needs a page that comes by https or from this machine.";
    if (!window.AudioWorklet) return "This browser has no audio worklets. Its next version may have them.";
    return "";
  }

  // The context waits for the first gesture; everything else is ready before.
  async prepare(module, state) {
    this.#context = new AudioContext({ latencyHint: "interactive" });
    await this.#context.audioWorklet.addModule(new URL("worklet.js", import.meta.url));
    this.#node = new AudioWorkletNode(this.#context, "quarzel-strings", {
      numberOfInputs: 0, outputChannelCount: [2], processorOptions: { module, state },
    });
    this.#node.port.onmessage = ({ data }) => {
      if (data instanceof Float32Array) this.onNews(data);
      if (data instanceof ArrayBuffer) this.#asked.shift()?.(data);
    };
    this.#node.connect(this.#context.destination);
    for (const message of this.#waiting.splice(0)) this.send(...message);
  }

  // Call this in every gesture.
  wake() {
    if (this.#context?.state !== "running") this.#context?.resume();
  }

  get running() { return this.#context?.state === "running"; }
  get context() { return this.#context; }

  // The worklet's own state.
  state() {
    this.send("askState");
    return new Promise((done) => this.#asked.push(done));
  }

  send(...message) {
    if (this.#node) this.#node.port.postMessage(message);
    else this.#waiting.push(message);
  }
}
