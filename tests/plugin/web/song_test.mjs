// A song through the worklet in an offline context equals the native render.
// Usage: node song_test.mjs SITE NATIVE.wav SONG.mid RATE
import fs from "node:fs";
import { Browser, check, kRenderOffline } from "./browser.mjs";

const [site, wav, song, rate] = process.argv.slice(2);
const kTolerance = 1e-6;  // of full scale

// Interleaved 32-bit floats after the header of the data chunk.
function samplesOf(file) {
  const bytes = fs.readFileSync(file);
  const at = bytes.indexOf("data") + 8;
  return new Float32Array(bytes.buffer.slice(bytes.byteOffset + at, bytes.byteOffset + bytes.length));
}

const native = samplesOf(wav);
const browser = await Browser.start(site);
await browser.test(async () => {
  await browser.open();
  const base64 = await browser.run(kRenderOffline + `
    const [name, rate, frames] = values;
    const fetched = async (file) => (await fetch(file)).arrayBuffer();
    const song = quarzel.model.song(await fetched("pieces/" + name), name, rate);
    const sound = await renderOffline(rate, frames, await fetched("default.fxb"), song);
    const both = new Float32Array(2 * frames);
    for (const channel of [0, 1]) {
      sound.getChannelData(channel).forEach((x, i) => { both[2 * i + channel] = x; });
    }
    const bytes = new Uint8Array(both.buffer);
    let text = "";
    for (let i = 0; i < bytes.length; i += 8192) {
      text += String.fromCharCode(...bytes.subarray(i, i + 8192));
    }
    return btoa(text);`, song, Number(rate), native.length / 2);
  const bytes = Buffer.from(base64, "base64");
  const rendered = new Float32Array(bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length));
  let most = 0, peak = 0, first = -1;
  native.forEach((x, i) => {
    if (first < 0 && Math.abs(x - rendered[i]) > kTolerance) first = Math.floor(i / 2);
    most = Math.max(most, Math.abs(x - rendered[i]));
    peak = Math.max(peak, Math.abs(x));
  });
  check(peak > 0.05, `the native render is heard: peak ${peak.toFixed(3)}`);
  check(rendered.length === native.length && most <= kTolerance,
        `${native.length / 2} frames differ by at most ${most}${first < 0 ? "" : `, first at ${first}`}`);
});
