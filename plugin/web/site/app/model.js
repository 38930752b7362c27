// The page's module: programs, files and the editor. See plugin/web/page.cpp for its functions.
const kSettings = "/settings";
const kDownloads = "/downloads";  // as platform/file_exchange_web.cpp

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

  // `page` has the actions that plugin/web/page_script.js names; those for files also take their bytes.
  // `files` are paths in the settings folder with their bytes.
  static async load(page, files, sampleRate) {
    const model = new Model();
    const folder = new URL("../", import.meta.url);
    await script(new URL("quarzel-page.js", folder));
    model.#module = await loadPage({
      page: { ...page, fileWritten: (path) => model.#written(path, page) },
      locateFile: (name) => new URL(name, folder).href,
    });
    model.#module.FS.mkdir(kSettings);
    model.#module.FS.mkdir(kDownloads);
    for (const [path, bytes] of files) model.putFile(path, bytes);
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

  values() {
    return Array.from({ length: this.call("ParameterCount") }, (_, i) => this.call("Parameter", i));
  }
  takeValues(values) {
    const now = this.values();
    values.forEach((value, i) => { if (value !== now[i]) this.call("SetParameter", i, value); });
  }

  news(numbers) {
    this.#module.HEAPF32.set(numbers, this.call("News") >> 2);
    this.call("NewsCame");
  }

  #written(path, page) {
    const FS = this.#module.FS;
    const bytes = FS.readFile(path);
    if (!path.startsWith(`${kDownloads}/`)) return page.storeFile(path, bytes);
    FS.unlink(path);
    page.handOut(path.slice(kDownloads.length + 1), bytes);
  }
  putFile(path, bytes) {
    if (!path.startsWith(`${kSettings}/`)) return;
    this.#module.FS.mkdirTree(path.slice(0, path.lastIndexOf("/")));
    this.#module.FS.writeFile(path, bytes);
  }
}
