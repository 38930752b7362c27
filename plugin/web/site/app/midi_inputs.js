// MIDI keyboards, where the browser has them; they may come and go.

const kNone = "No MIDI keyboard is connected; it plays as soon as it is.";

// Plays what arrives, and calls `tell` with a sentence about the inputs whenever they change.
export async function openMidiInputs(play, tell) {
  if (!navigator.requestMIDIAccess) return tell("This browser does not reach MIDI keyboards.");
  let access = null;
  try {
    access = await navigator.requestMIDIAccess();
  } catch {
    return tell("MIDI keyboards are not allowed here; the browser's page settings can change that.");
  }
  const held = new Map();  // from an input to what it holds: status and key of each note

  function take(input, [status, data1 = 0, data2 = 0]) {
    if (!(status >= 0x80 && status < 0xF0)) return;  // clocks and the like
    const note = (status & 15) << 7 | data1;
    if (status >> 4 === 9 && data2 > 0) held.get(input).add(note);
    else if (status >> 4 === 8 || status >> 4 === 9) held.get(input).delete(note);
    play(status, data1, data2);
  }
  function release(input) {
    for (const note of held.get(input) ?? []) play(0x80 | note >> 7, note & 127, 0);
    if (held.delete(input)) play(0xB0, 64, 0);  // its pedal, too
  }
  function listen() {
    const inputs = [...access.inputs.values()].filter(({ state }) => state !== "disconnected");
    for (const input of [...held.keys()]) if (!inputs.includes(input)) release(input);
    for (const input of inputs) {
      if (held.has(input)) continue;
      held.set(input, new Set());
      input.onmidimessage = ({ data }) => { if (held.has(input)) take(input, data); };
    }
    tell(inputs.length ? `MIDI: ${inputs.map(({ name }) => name || "a keyboard").join(", ")}` : kNone);
  }
  access.onstatechange = listen;
  listen();
}
