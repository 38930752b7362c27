// The editor on its canvas: pixels out, pointer, wheel and keys in.

const kPressed = 0, kMoved = 1, kReleased = 2, kLeft = 3, kLost = 4;
// As the module counts them: left, middle and right button, then the modifiers.
const kButtons = [1 << 1, 1 << 2, 1 << 3];
const kHeld = [1 << 1, 1 << 3, 1 << 2];  // in the order of `buttons`
const kNotch = 100;  // CSS pixels that a wheel reports for one

const modifiersOf = (event) =>
  (event.shiftKey ? 1 << 4 : 0) | (event.ctrlKey ? 1 << 5 : 0) | (event.altKey ? 1 << 6 : 0) |
  (event.metaKey ? 1 << 7 : 0);
const heldOf = ({ buttons }) => kHeld.reduce((held, bit, i) => buttons >> i & 1 ? held | bit : held, 0);

export class Face {
  #canvas;
  #context;
  #model = null;
  #finger = null;  // the only one that the editor follows

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
    },
    focusCanvas: () => this.#canvas.focus({ preventScroll: true }),
    hidePointer: (hidden) => { this.#canvas.style.cursor = hidden ? "none" : ""; },
  };

  constructor(canvas) {
    this.#canvas = canvas;
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
      requestAnimationFrame(idle);
    };
    idle();
    return true;
  }

  #scale() {
    return Math.min(Math.max(devicePixelRatio, 1), 3);
  }

  // Returns true if the editor used the key.
  key(event) {
    if (!this.#model || document.activeElement !== this.#canvas) return false;
    const isText = [...event.key].length === 1;
    return this.#model.key(event.type === "keydown", isText ? event.key.codePointAt(0) : 0,
                           isText ? "" : event.key, modifiersOf(event));
  }
  get wantsKeys() {
    return document.activeElement === this.#canvas && this.#model?.call("EditorWantsKeys") !== 0;
  }

  #tell(what, event, buttons) {
    const box = this.#canvas.getBoundingClientRect();
    const x = (event.clientX - box.left) * this.#canvas.width / box.width;
    const y = (event.clientY - box.top) * this.#canvas.height / box.height;
    this.#model.call("Pointer", what, x, y, buttons | modifiersOf(event));
  }

  #listen() {
    const on = (name, act, options) => this.#canvas.addEventListener(name, act, options);
    const isOther = (event) => this.#finger !== null && event.pointerId !== this.#finger;
    on("pointerdown", (event) => {
      if (isOther(event)) return;
      this.#finger = event.pointerId;
      this.#canvas.setPointerCapture(event.pointerId);
      this.#tell(kPressed, event, kButtons[event.button] ?? 0);
    });
    on("pointermove", (event) => {
      if (!isOther(event)) this.#tell(kMoved, event, heldOf(event));
    });
    on("pointerup", (event) => {
      if (isOther(event)) return;
      this.#finger = null;
      this.#tell(kReleased, event, kButtons[event.button] ?? 0);
    });
    on("pointercancel", (event) => {
      if (isOther(event)) return;
      this.#finger = null;
      this.#tell(kLost, event, 0);
    });
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
    on("blur", () => this.#model.call("KeyboardLost"));
  }
}
