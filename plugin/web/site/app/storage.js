// What stays in the browser between visits: the bank with its program, and the settings.

const kState = "quarzel.state";
const kSettings = "quarzel.settings";

const read = (key) => {
  try { return localStorage.getItem(key); } catch { return null; }
};

export function storedState() {
  const text = read(kState);
  try {
    return text && Uint8Array.from(atob(text), (c) => c.charCodeAt(0)).buffer;
  } catch {
    return null;
  }
}

export function storedSettings() {
  try {
    return JSON.parse(read(kSettings)) ?? {};
  } catch {
    return {};
  }
}

// Returns false if the browser stores nothing.
export function store(state, settings) {
  try {
    localStorage.setItem(kState, btoa(Array.from(state, (b) => String.fromCharCode(b)).join("")));
    localStorage.setItem(kSettings, JSON.stringify(settings));
    return true;
  } catch {
    return false;
  }
}
