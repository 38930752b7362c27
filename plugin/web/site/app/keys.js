// The strip of keys, for mouse and any number of fingers, and the computer keyboard as two rows.

const kLowest = 0;
const kHighest = 120;
const kWidest = 29;   // white keys of the strip
const kNarrow = 34;   // CSS pixels that a finger wants of one
const kVelocity = 100;
const kClick = 600;   // milliseconds that a key sounds that is only clicked
const kNames = ["C", "C sharp", "D", "D sharp", "E", "F", "F sharp", "G", "G sharp", "A", "A sharp", "B"];
const kLowerRow = ["KeyZ", "KeyS", "KeyX", "KeyD", "KeyC", "KeyV", "KeyG", "KeyB", "KeyH", "KeyN", "KeyJ",
  "KeyM", "Comma", "KeyL", "Period", "Semicolon", "Slash"];
const kUpperRow = ["KeyQ", "Digit2", "KeyW", "Digit3", "KeyE", "KeyR", "Digit5", "KeyT", "Digit6", "KeyY",
  "Digit7", "KeyU", "KeyI", "Digit9", "KeyO", "Digit0", "KeyP", "BracketLeft", "Equal", "BracketRight"];

const isWhite = (note) => ![1, 3, 6, 8, 10].includes(note % 12);

export class Keys {
  #strip;
  #midi;
  #buttons = new Map();
  #held = new Map();  // from a finger or a computer key to its note
  #lowest = 48;       // of the computer keys
  #shift = 0;         // of the strip, in semitones
  #whites = 0;

  constructor(strip, midi) {
    this.#strip = strip;
    this.#midi = midi;
    new ResizeObserver(() => this.#build()).observe(strip);
    this.#build();
    strip.addEventListener("pointerdown", (event) => {
      strip.setPointerCapture(event.pointerId);
      event.preventDefault();
      this.#slide(event);
    });
    strip.addEventListener("pointermove", (event) => {
      if (this.#held.has(event.pointerId)) this.#slide(event);
    });
    for (const end of ["pointerup", "pointercancel", "lostpointercapture"]) {
      strip.addEventListener(end, (event) => this.#end(event.pointerId));
    }
    // Screen readers and the Enter key only click.
    strip.addEventListener("click", ({ target, detail }) => {
      if (detail !== 0 || !target.dataset.note) return;
      this.#begin("click", Number(target.dataset.note));
      setTimeout(() => this.#end("click"), kClick);
    });
    strip.addEventListener("keydown", ({ key, target }) => {
      const step = { ArrowRight: 1, ArrowLeft: -1 }[key];
      const next = step && this.#buttons.get(Number(target.dataset.note) + step);
      if (!next) return;
      target.tabIndex = -1;
      next.tabIndex = 0;
      next.focus();
    });
    addEventListener("blur", () => this.releaseAll());
    document.addEventListener("visibilitychange", () => { if (document.hidden) this.releaseAll(); });
  }

  // As many octaves around middle C as fingers find room for.
  #build() {
    const room = Math.floor(this.#strip.clientWidth / kNarrow);
    const octaves = Math.max(Math.min(Math.floor((room - 1) / 7), (kWidest - 1) / 7), 1);
    const whites = 7 * octaves + 1;
    const lowest = 60 - 12 * Math.floor(octaves / 2) + this.#shift;
    if (this.#buttons.has(lowest) && this.#buttons.keys().next().value === lowest && this.#whites === whites) return;
    this.#whites = whites;
    this.#buttons.clear();
    this.#strip.replaceChildren();
    let passed = 0;
    for (let note = lowest; note <= lowest + 12 * octaves; ++note) {
      const button = document.createElement("button");
      const octave = Math.floor(note / 12) - 2;
      button.type = "button";
      button.dataset.note = note;
      button.tabIndex = note === 60 + this.#shift ? 0 : -1;
      button.setAttribute("aria-label", `${kNames[note % 12]}${octave}`);
      if (note % 12 === 0) button.textContent = `C${octave}`;
      if (isWhite(note)) {
        ++passed;
      } else {
        button.className = "black";
        button.style.left = `${100 * passed / whites}%`;
        button.style.width = `${60 / whites}%`;
      }
      this.#buttons.set(note, button);
      this.#strip.append(button);
    }
    for (const note of this.#held.values()) this.#buttons.get(note)?.classList.add("down");
  }

  // By semitones: the strip, and the computer keys with it. What is held sounds on until released.
  shift(by) {
    const lowest = this.#lowest + by;
    if (lowest < kLowest || lowest > kHighest - 24) return;
    this.#lowest = lowest;
    this.#shift += by;
    this.#build();
  }

  // The pointer is captured, so the key is the one under it.
  #slide(event) {
    const under = document.elementFromPoint(event.clientX, event.clientY)?.dataset?.note;
    if (!under) return;
    const note = Number(under);
    if (this.#held.get(event.pointerId) === note) return;
    this.#begin(event.pointerId, note);
  }

  #begin(by, note) {
    this.#end(by);
    const sounds = [...this.#held.values()].includes(note);
    this.#held.set(by, note);
    if (!sounds) this.#midi(0x90, note, kVelocity);
    this.#buttons.get(note)?.classList.add("down");
  }

  #end(by) {
    const note = this.#held.get(by);
    if (note === undefined) return;
    this.#held.delete(by);
    if ([...this.#held.values()].includes(note)) return;
    this.#midi(0x80, note, 0);
    this.#buttons.get(note)?.classList.remove("down");
  }

  // Returns true if the key plays. Positions count, not letters.
  keyDown(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return false;
    const octave = { PageUp: 12, PageDown: -12 }[event.code];
    if (octave) {
      if (event.target.matches("input") || !this.#isSeen) return false;
      this.shift(octave);
      return true;
    }
    const lower = kLowerRow.indexOf(event.code);
    const upper = kUpperRow.indexOf(event.code);
    if (lower < 0 && upper < 0) return false;
    if (!event.repeat && !this.#held.has(event.code)) {
      this.#begin(event.code, this.#lowest + (lower >= 0 ? lower : upper + 12));
    }
    return true;
  }
  keyUp(event) {
    this.#end(event.code);
    // Some systems do not tell which keys were released while this one was down.
    if (event.key === "Meta") this.releaseAll();
  }
  releaseAll() { for (const by of [...this.#held.keys()]) this.#end(by); }

  // Elsewhere on the page, its keys turn pages.
  get #isSeen() {
    const { top, bottom } = this.#strip.getBoundingClientRect();
    return bottom > 0 && top < innerHeight;
  }
}
