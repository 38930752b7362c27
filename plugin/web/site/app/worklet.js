// The audio thread: plays the instrument's module. Options: `module`, the bytes of
// quarzel-sound.wasm, and `state`, a bank. Messages from the page are arrays: what, and arguments.
//
// process() allocates nothing. It sends the news some thirty times a second, as long as there is
// any, in the same message object.

const kNewsPerSecond = 30;

class QuarzelStrings extends AudioWorkletProcessor {
  constructor({ processorOptions: options }) {
    super();
    const code = new WebAssembly.Module(options.module);
    // The module asks its system for files, which it has not here.
    const imports = {};
    for (const { module, name } of WebAssembly.Module.imports(code)) {
      (imports[module] ??= {})[name] = () => -1;
    }
    this.strings = new WebAssembly.Instance(code, imports).exports;
    this.strings._initialize();
    this.strings.quarzelStart(sampleRate, options.state ? this.fill(options.state) : 0);
    this.refreshViews();
    this.song = null;
    this.untilNews = 0;
    this.news = new Float32Array(this.strings.quarzelNewsSize());
    this.port.onmessage = ({ data }) => this.actions[data[0]]?.(data);
    if (options.song) this.actions.song(["song", ...options.song]);
    this.port.postMessage("ready");
  }

  actions = {
    midi: ([, status, data1, data2]) => this.strings.quarzelMessage(0, status, data1, data2),
    parameter: ([, index, value]) => this.strings.quarzelSetParameter(index, value),
    program: ([, program]) => this.strings.quarzelSetProgram(program),
    bind: ([, index, controller]) => this.strings.quarzelBind(index, controller),
    state: ([, bytes]) => this.strings.quarzelTakeState(this.fill(bytes)),
    silence: () => {
      this.song = null;
      this.strings.quarzelSilence();
    },
    // Frames, counted from now, and three bytes for each.
    song: ([, frames, bytes]) => { this.song = { frames, bytes, next: 0, begin: currentFrame }; },
    askState: () => {
      const size = this.strings.quarzelState();
      const at = this.strings.quarzelBytes();
      this.port.postMessage(this.strings.memory.buffer.slice(at, at + size));
    },
  };

  // Puts bytes into the module's buffer and returns how many.
  fill(bytes) {
    const size = Math.min(bytes.byteLength, this.strings.quarzelMostBytes());
    const room = new Uint8Array(this.strings.memory.buffer, this.strings.quarzelBytes(), size);
    room.set(new Uint8Array(bytes, 0, size));
    return size;
  }

  // The memory may have moved, but only during a message with a state.
  refreshViews() {
    const { memory, quarzelLeft, quarzelRight, quarzelMostFrames } = this.strings;
    this.memory = memory.buffer;
    this.left = new Float32Array(this.memory, quarzelLeft(), quarzelMostFrames());
    this.right = new Float32Array(this.memory, quarzelRight(), quarzelMostFrames());
    this.floats = new Float32Array(this.memory);
    this.quantum = 0;
  }

  playSong(frames) {
    const { frames: when, bytes, begin } = this.song;
    const end = currentFrame + frames - begin;
    let next = this.song.next;
    for (; next < when.length && when[next] < end; ++next) {
      const at = when[next] + begin - currentFrame;
      this.strings.quarzelMessage(at, bytes[3 * next], bytes[3 * next + 1], bytes[3 * next + 2]);
    }
    this.song.next = next;
    if (next === when.length) this.song = null;
  }

  process(_inputs, [[left, right]]) {
    const frames = left.length;
    if (this.memory !== this.strings.memory.buffer) this.refreshViews();
    if (this.quantum !== frames) {
      this.quantum = frames;
      this.leftOut = this.left.subarray(0, frames);
      this.rightOut = this.right.subarray(0, frames);
    }
    if (this.song) this.playSong(frames);
    this.strings.quarzelRender(frames);
    left.set(this.leftOut);
    right?.set(this.rightOut);
    this.untilNews -= frames;
    if (this.untilNews <= 0) this.sendNews();
    return true;
  }

  sendNews() {
    this.untilNews = sampleRate / kNewsPerSecond;
    const at = this.strings.quarzelNews() >> 2;
    let changed = false;
    for (let i = 0; i < this.news.length; ++i) {
      changed ||= this.news[i] !== this.floats[at + i];
      this.news[i] = this.floats[at + i];
    }
    if (changed) this.port.postMessage(this.news);
  }
}

registerProcessor("quarzel-strings", QuarzelStrings);
