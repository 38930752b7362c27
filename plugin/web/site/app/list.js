// All controls as a plain list, for screen readers and for keys.

const kSteps = 1000;

export class List {
  #rows = [];
  #model;

  constructor(place, model) {
    this.#model = model;
    for (let index = 0; index < model.call("ParameterCount"); ++index) {
      const label = document.createElement("label");
      const text = document.createElement("output");
      const range = document.createElement("input");
      const name = model.text("ParameterName", index);
      Object.assign(range, { type: "range", min: 0, max: kSteps });
      range.setAttribute("aria-label", name);  // the label is that of the output, which comes first
      label.append(name, text, range);
      place.append(label);
      range.addEventListener("input", () => {
        model.call("SetParameter", index, range.value / kSteps);
        this.#show(index);
      });
      this.#rows.push({ range, text });
    }
  }

  #show(index) {
    const { range, text } = this.#rows[index];
    const shown = this.#model.text("ParameterText", index);
    if (document.activeElement !== range) {
      range.value = Math.round(this.#model.call("Parameter", index) * kSteps);
    }
    if (text.value !== shown) {
      text.value = shown;
      range.setAttribute("aria-valuetext", shown);
    }
  }
  show() { this.#rows.forEach((_, index) => this.#show(index)); }
}
