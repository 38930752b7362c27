// MIDI keyboards, where the browser has them.

// Returns a sentence if there will be none.
export async function openMidiInputs(play) {
  if (!navigator.requestMIDIAccess) return "This browser does not reach MIDI keyboards.";
  try {
    const access = await navigator.requestMIDIAccess();
    const listen = () => {
      for (const input of access.inputs.values()) {
        input.onmidimessage = ({ data }) => {
          if (data[0] >= 0x80 && data[0] < 0xF0) play(data[0], data[1] ?? 0, data[2] ?? 0);
        };
      }
    };
    access.onstatechange = listen;
    listen();
    return "";
  } catch {
    return "MIDI keyboards are not allowed here; the browser's page settings can change that.";
  }
}
