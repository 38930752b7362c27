// A field for fingers. On-screen keyboards report no keys, so what changes in the field becomes keys.

const kToErase = "\u200b".repeat(60);  // invisible, for erasing what the panel already shows

export class Typing {
  #label;
  #field;
  #before = kToErase;

  // Calls `press` with a character, or with 0 and the name of a key.
  constructor(label, press) {
    this.#label = label;
    this.#field = label.querySelector("input");
    this.#field.addEventListener("input", () => {
      const { value } = this.#field;
      let same = 0;
      while (same < value.length && value[same] === this.#before[same]) ++same;
      for (let i = same; i < this.#before.length; ++i) press(0, "Backspace");
      for (const letter of value.slice(same)) press(letter.codePointAt(0), "");
      this.#before = value;
    });
    this.#field.addEventListener("keydown", (event) => {
      if (event.key !== "Enter") return;
      event.preventDefault();
      press(0, "Enter");
      this.#clear();
    });
  }

  has(element) { return element === this.#field; }
  show(wanted) {
    if (this.#label.hidden === !wanted) return;
    this.#label.hidden = !wanted;
    this.#clear();
  }
  #clear() { this.#field.value = this.#before = kToErase; }
}
