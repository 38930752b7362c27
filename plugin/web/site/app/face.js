// The editor on its canvas: pixels out, pointer, wheel and keys in.

import { Typing } from "./typing.js";

const kPressed = 0, kMoved = 1, kReleased = 2, kLeft = 3, kLost = 4;
// As the module counts them: left, middle and right button, then the modifiers.
const kButtons = [1 << 1, 1 << 2, 1 << 3];
const kHeld = [1 << 1, 1 << 3, 1 << 2];  // in the order of `buttons`
const kRightButton = kButtons[2];
const kNotch = 100;  // CSS pixels that a wheel reports for one
const kLongPress = 500;  // milliseconds that a resting finger takes to be a right click
const kRests = 8;        // CSS pixels that it may move meanwhile

// Command is to Macs what Control is to others.
const modifiersOf = (event) =>
  (event.shiftKey ? 1 << 4 : 0) | (event.ctrlKey || event.metaKey ? 1 << 5 : 0) | (event.altKey ? 1 << 6 : 0);
const heldOf = ({ buttons }) => kHeld.reduce((held, bit, i) => buttons >> i & 1 ? held | bit : held, 0);

export class Face {
  #canvas;
  #context;
  #model = null;
  #finger = null;  // the only one that the editor follows
  #longPress = 0;  // its timer
  #begin = null;   // the event of the press
  #afterPress = [];
  #touched = false;  // by a finger, last
  #typing;

  // What the module calls.
  actions = {
    showPixels: (bytes, left, top, width, height) => {
      const pixels = new Uint8ClampedArray(bytes);  // a copy: the module's memory may move
      this.#context.putImageData(new ImageData(pixels, width, height), left, top);
    },
    sizeCanvas: (width, height) => {
      this.#canvas.width = width;
      this.#canvas.height = height;
      this.#canvas.style.width = `${width / devicePixelRatio}px`;
      this.#canvas.style.setProperty("--shape", width / height);
    },
    focusCanvas: () => this.#canvas.focus({ preventScroll: true }),
    hidePointer: (hidden) => { this.#canvas.style.cursor = hidden ? "none" : ""; },
  };

  constructor(canvas, typing) {
    this.#canvas = canvas;
    this.#typing = new Typing(typing, (character, name) => {
      for (const down of [true, false]) this.#model.key(down, character, name, 0);
    });
    this.#context = canvas.getContext("2d", { alpha: false });
  }

  // Returns false if there is nothing to show.
  open(model) {
    if (!model.call("OpenEditor", this.#scale())) return false;
    this.#model = model;
    this.#listen();
    addEventListener("resize", () => this.#model.call("ScaleEditor", this.#scale()));
    const idle = () => {
      this.#model.call("Idle");
      this.#typing.show(this.#touched && this.#model.call("EditorWantsText") !== 0);
      requestAnimationFrame(idle);
    };
    idle();
    return true;
  }

  #scale() {
    return Math.min(Math.max(devicePixelRatio, 1), 3);
  }

  // Returns true if the editor used the key. It gets those of the canvas, and others that are `meant` for it.
  key(event, meant = false) {
    if (!this.#model || !(meant || document.activeElement === this.#canvas)) return false;
    const isText = [...event.key].length === 1;
    return this.#model.key(event.type === "keydown", isText ? event.key.codePointAt(0) : 0,
                           isText ? "" : event.key, modifiersOf(event));
  }
  get wantsKeys() { return document.activeElement === this.#canvas && this.#model !== null && this.#busy; }

  #tell(what, event, buttons) {
    const box = this.#canvas.getBoundingClientRect();
    const x = (event.clientX - box.left) * this.#canvas.width / box.width;
    const y = (event.clientY - box.top) * this.#canvas.height / box.height;
    this.#model.call("Pointer", what, x, y, buttons | modifiersOf(event));
  }

  // Some browsers open a picker only at the end of a press.
  afterPress(act) {
    if (this.#finger === null) act();
    else this.#afterPress.push(act);
  }
  // Call this when a key has sounded: a finger that rests on it wants no menu.
  keyPlayed() { clearTimeout(this.#longPress); }

  #press(event) {
    this.#finger = event.pointerId;
    this.#begin = event;
    this.#touched = event.pointerType === "touch";
    this.#canvas.setPointerCapture(event.pointerId);
    const values = this.#model.values();
    const rests = event.pointerType === "touch" && !this.#busy;
    if (rests) this.#longPress = setTimeout(() => this.#openMenu(values), kLongPress);
    this.#tell(kPressed, event, kButtons[event.button] ?? 0);
    if (this.#busy) clearTimeout(this.#longPress);
  }

  // A menu or the sound browser is open.
  get #busy() { return this.#model.call("EditorWantsKeys") !== 0; }

  // The press has been a right click, so what it has changed is taken back.
  #openMenu(values) {
    this.#tell(kLost, this.#begin, 0);
    this.#model.takeValues(values);
    this.#tell(kPressed, this.#begin, kRightButton);
    this.#tell(kReleased, this.#begin, kRightButton);
    this.#finger = null;
  }

  #end(what, event, buttons) {
    if (event.pointerId !== this.#finger) return;
    clearTimeout(this.#longPress);
    this.#finger = null;
    this.#tell(what, event, buttons);
    for (const act of this.#afterPress.splice(0)) act();
  }

  #listen() {
    const on = (name, act, options) => this.#canvas.addEventListener(name, act, options);
    on("pointerdown", (event) => {
      clearTimeout(this.#longPress);
      if (this.#finger === null || this.#finger === event.pointerId) this.#press(event);
    });
    on("pointermove", (event) => {
      if (this.#finger !== null ? event.pointerId !== this.#finger : event.pointerType === "touch") return;
      const { clientX, clientY } = this.#begin ?? event;
      if (Math.hypot(event.clientX - clientX, event.clientY - clientY) > kRests) clearTimeout(this.#longPress);
      this.#tell(kMoved, event, heldOf(event));
    });
    on("pointerup", (event) => this.#end(kReleased, event, kButtons[event.button] ?? 0));
    for (const end of ["pointercancel", "lostpointercapture"]) {
      on(end, (event) => this.#end(kLost, event, 0));
    }
    on("pointerleave", (event) => {
      if (this.#finger === null) this.#tell(kLeft, event, 0);
    });
    on("contextmenu", (event) => event.preventDefault());
    on("wheel", (event) => {
      event.preventDefault();
      const unit = event.deltaMode === WheelEvent.DOM_DELTA_PIXEL ? kNotch : 3;
      const box = this.#canvas.getBoundingClientRect();
      this.#model.call("Wheel", (event.clientX - box.left) * this.#canvas.width / box.width,
                       (event.clientY - box.top) * this.#canvas.height / box.height,
                       event.deltaX / unit, -event.deltaY / unit, modifiersOf(event));
    }, { passive: false });
    on("blur", ({ relatedTarget }) => {
      if (!this.#typing.has(relatedTarget)) this.#model.call("KeyboardLost");
    });
  }
}
