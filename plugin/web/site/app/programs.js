// The choice of programs, and their files.

import { onChosen } from "./choices.js";

const kPrograms = 128;
const kLargestFile = 1 << 19;  // bytes

const kPicker = document.getElementById("file");
export const askForFile = () => kPicker.click();

export function handOut(name, bytes) {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([bytes]));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}

export class Programs {
  #model;
  #select = document.getElementById("program");
  #tell;

  constructor(model, tell) {
    this.#model = model;
    this.#tell = tell;
    const button = (id, act) => {
      const element = document.getElementById(id);
      element.disabled = false;
      element.addEventListener("click", act);
    };
    this.#select.disabled = false;
    onChosen(this.#select, () => this.choose(Number(this.#select.value)));
    button("previous", () => this.choose((this.current + kPrograms - 1) % kPrograms));
    button("next", () => this.choose((this.current + 1) % kPrograms));
    button("load", askForFile);
    kPicker.addEventListener("change", () => this.#load(kPicker));
    button("save-bank", () => handOut("quarzel.fxb", model.bytes("BankFile")));
    button("save-preset", () => handOut(`${this.#fileName()}.fxp`, model.bytes("PresetFile")));
    this.fill();
  }

  get current() { return this.#model.call("Program"); }

  choose(program) {
    this.#model.call("SetProgram", program);
    this.show();
  }

  // Call this after names may have changed.
  fill() {
    let group = null;
    const groups = [];
    for (let i = 0; i < kPrograms; ++i) {
      const family = this.#model.text("ProgramFamily", i) || "Own sounds";
      if (group?.label !== family) {
        group = document.createElement("optgroup");
        group.label = family;
        groups.push(group);
      }
      group.append(new Option(`${String(i).padStart(3, "0")} ${this.#model.text("ProgramName", i)}`, i));
    }
    this.#select.replaceChildren(...groups);
    this.show();
  }

  show() {
    if (Number(this.#select.value) !== this.current) this.#select.value = this.current;
  }

  #fileName() {
    return this.#model.text("ProgramName", this.current).replace(/[^\w \-]/g, "_") || "sound";
  }

  async #load(input) {
    const [file] = input.files;
    input.value = "";
    if (!file) return;
    const isPreset = file.name.toLowerCase().endsWith(".fxp");
    const fault = file.size > kLargestFile ? `${file.name} is too large to be a bank.`
      : this.#model.take(isPreset ? "TakePreset" : "TakeBank", await file.arrayBuffer(), file.name);
    this.#tell(fault || `${file.name} is loaded. Ctrl+Z brings back what was there.`, fault !== "");
  }
}
