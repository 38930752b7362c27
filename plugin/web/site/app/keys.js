// The strip of keys, for mouse and any number of fingers, and the computer keyboard as two rows.

const kLowest = 36;   // C2
const kHighest = 84;  // C6
const kVelocity = 100;
const kNames = ["C", "C sharp", "D", "D sharp", "E", "F", "F sharp", "G", "G sharp", "A", "A sharp", "B"];
const kLowerRow = ["KeyZ", "KeyS", "KeyX", "KeyD", "KeyC", "KeyV", "KeyG", "KeyB", "KeyH", "KeyN", "KeyJ",
  "KeyM", "Comma", "KeyL", "Period", "Semicolon", "Slash"];
const kUpperRow = ["KeyQ", "Digit2", "KeyW", "Digit3", "KeyE", "KeyR", "Digit5", "KeyT", "Digit6", "KeyY",
  "Digit7", "KeyU", "KeyI", "Digit9", "KeyO", "Digit0", "KeyP", "BracketLeft", "Equal", "BracketRight"];

export class Keys {
  #midi;
  #buttons = new Map();
  #held = new Map();  // from a finger or a computer key to its note
  #lowest = 48;

  constructor(strip, midi) {
    this.#midi = midi;
    this.#build(strip);
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
      setTimeout(() => this.#end("click"), 600);
    });
    addEventListener("blur", () => this.releaseAll());
  }

  #build(strip) {
    const white = (note) => ![1, 3, 6, 8, 10].includes(note % 12);
    const notes = Array.from({ length: kHighest - kLowest + 1 }, (_, i) => kLowest + i);
    const whites = notes.filter(white).length;
    let passed = 0;
    for (const note of notes) {
      const button = document.createElement("button");
      const octave = Math.floor(note / 12) - 2;
      button.type = "button";
      button.dataset.note = note;
      button.tabIndex = note === 60 ? 0 : -1;
      button.setAttribute("aria-label", `${kNames[note % 12]}${octave}`);
      if (note % 12 === 0) button.textContent = `C${octave}`;
      if (white(note)) {
        ++passed;
      } else {
        button.className = "black";
        button.style.left = `${100 * passed / whites}%`;
        button.style.width = `${60 / whites}%`;
      }
      this.#buttons.set(note, button);
      strip.append(button);
    }
    strip.addEventListener("keydown", ({ key, target }) => {
      const step = { ArrowRight: 1, ArrowLeft: -1 }[key];
      const next = step && this.#buttons.get(Number(target.dataset.note) + step);
      if (!next) return;
      target.tabIndex = -1;
      next.tabIndex = 0;
      next.focus();
    });
  }

  // The pointer is captured, so the key is the one under it.
  #slide(event) {
    const under = document.elementFromPoint(event.clientX, event.clientY)?.dataset?.note;
    if (!under) return;
    const note = Number(under);
    if (this.#held.get(event.pointerId) === note) return;
    this.#end(event.pointerId);
    this.#begin(event.pointerId, note);
  }

  #begin(by, note) {
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
    const shift = { PageUp: 12, PageDown: -12 }[event.code];
    if (shift) {
      if (this.#lowest + shift >= 0 && this.#lowest + shift <= 96) this.#lowest += shift;
      return true;
    }
    const lower = kLowerRow.indexOf(event.code);
    const upper = kUpperRow.indexOf(event.code);
    if (lower < 0 && upper < 0) return false;
    if (!this.#held.has(event.code)) {
      this.#begin(event.code, this.#lowest + (lower >= 0 ? lower : upper + 12));
    }
    return true;
  }
  keyUp(event) { this.#end(event.code); }
  releaseAll() { for (const by of [...this.#held.keys()]) this.#end(by); }
}
