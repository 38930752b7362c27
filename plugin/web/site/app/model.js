// The page's module: programs, files and the editor. See plugin/web/page.cpp for its functions.
const kSettings = "/settings";

// The emscripten of this build writes no module that a script could import.
function script(src) {
  return new Promise((done, fail) => {
    const element = Object.assign(document.createElement("script"), { src, onload: done });
    element.onerror = () => fail(new Error("quarzel-page.js cannot be loaded."));
    document.head.append(element);
  });
}

export class Model {
  #module;

  // `page` has the actions that plugin/web/page_script.js names.
  static async load(page, settings, sampleRate) {
    const model = new Model();
    const folder = new URL("../", import.meta.url);
    await script(new URL("quarzel-page.js", folder));
    model.#module = await loadPage({ page, locateFile: (name) => new URL(name, folder).href });
    model.#module.FS.mkdir(kSettings);
    model.#writeSettings(settings);
    model.call("Start", sampleRate);
    return model;
  }

  call(name, ...values) { return this.#module[`_quarzel${name}`](...values); }
  text(name, ...values) { return this.#module.UTF8ToString(this.call(name, ...values)); }

  // Bytes that a function gives out.
  bytes(name) {
    const at = this.call(name);
    return this.#module.HEAPU8.slice(at, at + this.call("OutSize"));
  }
  // Gives bytes with a name to a function. Returns what was wrong with them.
  take(what, bytes, name, ...more) {
    const types = ["array", "number", "string", ...more.map(() => "number")];
    const data = new Uint8Array(bytes);
    return this.#module.ccall(`quarzel${what}`, "string", types, [data, data.length, name, ...more]);
  }
  key(down, character, name, modifiers) {
    return this.#module.ccall("quarzelKey", "number", ["number", "number", "string", "number"],
                              [down, character, name, modifiers]) !== 0;
  }

  // The events of a MIDI file as frames and their bytes. Throws a sentence.
  song(bytes, name, sampleRate) {
    const fault = this.take("ReadSong", bytes, name, sampleRate);
    if (fault) throw new Error(fault);
    const at = this.call("Song") >> 3;
    const events = this.#module.HEAPF64.subarray(at, at + this.call("SongSize"));
    const count = events.length / 4;
    const frames = Float64Array.from({ length: count }, (_, i) => events[4 * i]);
    const data = Uint8Array.from({ length: 3 * count },
                                 (_, i) => events[4 * Math.floor(i / 3) + 1 + i % 3]);
    return [frames, data];
  }

  news(numbers) {
    this.#module.HEAPF32.set(numbers, this.call("News") >> 2);
    this.call("NewsCame");
  }

  // The files of the settings folder, as an object of path and bytes in hexadecimal digits.
  settings() {
    const files = {};
    const FS = this.#module.FS;
    const walk = (folder) => {
      for (const name of FS.readdir(folder)) {
        const path = `${folder}/${name}`;
        if (name === "." || name === "..") continue;
        if (FS.isDir(FS.stat(path).mode)) walk(path);
        else files[path] = Array.from(FS.readFile(path), (b) => b.toString(16).padStart(2, "0")).join("");
      }
    };
    walk(kSettings);
    return files;
  }

  #writeSettings(files) {
    const FS = this.#module.FS;
    for (const [path, digits] of Object.entries(files)) {
      if (!path.startsWith(`${kSettings}/`)) continue;
      FS.mkdirTree(path.slice(0, path.lastIndexOf("/")));
      FS.writeFile(path, Uint8Array.from(digits.match(/../g) ?? [], (pair) => parseInt(pair, 16)));
    }
  }
}
