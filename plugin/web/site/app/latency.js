// The output's latency: the player's choice, and a change for the steadier when buffers come late.
//
// The sound of a short buffer follows the keys at once, but a busy machine fills one too late now and then
// (an underrun), which clicks. "automatic" begins with the shortest buffers and turns into "steady" by itself.
// Only the player turns it back, so the page never goes to and fro.
import { onChosen } from "./choices.js";
import { storedLatency, storeLatency } from "./storage.js";

const kHints = { automatic: "interactive", shortest: "interactive", steady: 0.06 };  // of an AudioContext
// In milliseconds:
const kLookEvery = 50;
const kWindow = 1000;  // late buffers within one count once
const kWarmUp = 3000;  // until all code is compiled
const kPause = 2000;   // between two looks: timers stood still, and nothing is known about the time
const kWithin = 60000;
const kBehind = 15;    // more than a clock steps by, or drifts within a minute
const kMostWindows = 2;  // with late buffers that a player may hear within kWithin

// Tells whether buffers come late again and again. Silence, a page in the background, an output that is
// suspended and a machine that slept say nothing about that.
export class UnderrunWatch {
  #looked = -Infinity;
  #windowEnd = 0;
  #lag = Infinity;  // of the output's clock, the least of this window
  #isHeard = false;
  #before = null;   // what the window before has shown
  #late = [];       // ends of windows with late buffers

  // Call this every kLookEvery milliseconds; `now` is the time. Returns true if they have come late too often.
  look({ state, currentTime, playbackStats }, isHeard, now) {
    const pause = now - this.#looked > kPause;
    this.#looked = now;
    if (pause || state !== "running" || document.hidden) {
      this.#windowEnd = now + kWarmUp;
      this.#lag = Infinity;
      this.#before = null;
    }
    this.#lag = Math.min(this.#lag, now - 1000 * currentTime);
    this.#isHeard ||= isHeard;
    if (now < this.#windowEnd) return false;
    if (this.#isLate(playbackStats?.underrunEvents) && this.#isHeard) this.#late.push(now);
    this.#windowEnd = now + kWindow;
    this.#lag = Infinity;
    this.#isHeard = false;
    this.#late = this.#late.filter((end) => now - end < kWithin);
    return this.#late.length > kMostWindows;
  }

  // Where a browser does not count underruns (Firefox), its clock of played time falls behind with each, for
  // good. That clock goes in steps, so the least of many looks is what counts.
  #isLate(underruns) {
    const before = this.#before;
    const hasFallenBehind = this.#lag > before?.lag + kBehind;
    this.#before = { underruns, lag: before && !hasFallenBehind ? Math.min(before.lag, this.#lag) : this.#lag };
    return underruns === undefined ? hasFallenBehind : underruns > before?.underruns;
  }
}

// Joins the control and the sound. `tell` gets a sentence for the player.
export function followLatency(select, sound, tell) {
  const keep = (choice) => {
    select.value = choice;
    storeLatency(choice);
  };
  const stored = storedLatency();
  select.value = stored in kHints ? stored : "automatic";
  sound.setLatency(kHints[select.value]);
  select.disabled = false;
  let watch = new UnderrunWatch();
  onChosen(select, async () => {
    watch = new UnderrunWatch();
    keep(select.value);
    const isOther = await sound.setLatency(kHints[select.value]).catch(() => false);
    if (!isOther) tell("This browser has no other latency.");
  });
  setInterval(async () => {
    if (select.value !== "automatic" || !sound.context) return;
    if (!watch?.look(sound.context, sound.isHeard, performance.now())) return;
    watch = null;
    const isOther = await sound.setLatency(kHints.steady).catch(() => false);
    if (isOther) keep("steady");
    tell(isOther ? "The sound came late several times, so the latency is now “Steady”."
      : "The sound came late several times. This browser has no steadier output; fewer programs at once may help.");
  }, kLookEvery);
}
