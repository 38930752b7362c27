// What stays in the browser between visits: the bank with its program, the choice of latency, and the files
// of settings and library, each under its path. Several pages may be open at once.

const kState = "quarzel.state";
const kLatency = "quarzel.latency";
const kFile = "quarzel.file:";

const textOf = (bytes) => btoa(Array.from(bytes, (b) => String.fromCharCode(b)).join(""));
function bytesOf(text) {
  try {
    return Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
  } catch {
    return null;
  }
}

function read(key) {
  try { return localStorage.getItem(key); } catch { return null; }
}
// Returns false if the browser stores nothing.
function write(key, text) {
  try {
    localStorage.setItem(key, text);
    return true;
  } catch {
    return false;
  }
}

export function storedState() {
  const bytes = bytesOf(read(kState) ?? "");
  return bytes?.length ? bytes.buffer : null;
}
export const storeState = (bytes) => write(kState, textOf(bytes));

// Calls `act` with the bytes of a bank that another page has stored.
export function onStateStored(act) {
  addEventListener("storage", ({ key, newValue }) => {
    const bytes = key === kState ? bytesOf(newValue ?? "") : null;
    if (bytes?.length) act(bytes);
  });
}

export const storedLatency = () => read(kLatency);
export const storeLatency = (choice) => write(kLatency, choice);

const fileOf = (key, text) => key?.startsWith(kFile) && text ? [key.slice(kFile.length), bytesOf(text)] : [];

// Paths with their bytes.
export function storedFiles() {
  let keys = [];
  try { keys = Object.keys(localStorage); } catch { /* none */ }
  return keys.map((key) => fileOf(key, read(key))).filter(([, bytes]) => bytes);
}
export const storeFile = (path, bytes) => write(kFile + path, textOf(bytes));

// Calls `act` with path and bytes of a file that another page has stored.
export function onFileStored(act) {
  addEventListener("storage", ({ key, newValue }) => {
    const [path, bytes] = fileOf(key, newValue);
    if (bytes) act(path, bytes);
  });
}
