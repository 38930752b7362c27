// Files of the sound browser, what stays in the browser, and the copy for times without a network.
// Usage: node files_test.mjs SITE
import fs from "node:fs";
import path from "node:path";
import { Browser, check, wait } from "./browser.mjs";

const kControl = 2, kShift = 8;
const [site] = process.argv.slice(2);
const browser = await Browser.start(site);
const downloads = path.join(browser.profile, "downloads");
const control = (key, more = 0) => browser.key(key, `Key${key.toUpperCase()}`, kControl | more);
const bytesOf = async (what) => Buffer.from(await browser.run(`return Array.from(quarzel.model.bytes(values[0]))`, what));
const nameOf = (program) => browser.run(`return quarzel.model.text("ProgramName", values[0])`, program);
const choose = (program) => browser.run(`quarzel.model.call("SetProgram", values[0])`, program);

async function openBrowser() {
  await browser.run(`document.getElementById("canvas").focus()`);
  await control("f");
}
async function downloaded(name) {
  const file = path.join(downloads, name);
  for (let i = 0; i < 100 && !fs.existsSync(file); ++i) await wait(50);
  return fs.existsSync(file) ? fs.readFileSync(file) : Buffer.of();
}

await browser.test(async () => {
  await browser.call("Page.setDownloadBehavior", { behavior: "allow", downloadPath: downloads });
  await browser.open();
  await choose(3);
  await openBrowser();
  await browser.until("return !quarzel.storing");  // nothing but the library is to be stored
  await control("k");
  await browser.open();
  await choose(7);
  await openBrowser();
  await browser.key("Tab");
  await browser.key("Home");
  check(await nameOf(7) === await nameOf(3), `the library has ${await nameOf(3)} after a reload`);

  // Another page of this browser keeps another sound, which comes first by its name.
  await choose(5);
  await browser.run(`
    const frame = document.body.appendChild(document.createElement("iframe"));
    const key = Object.keys(localStorage).find((name) => name.endsWith(".fxp"));
    const sound = String.fromCharCode(...quarzel.model.bytes("PresetFile"));
    const told = new Promise((done) => addEventListener("storage", done));
    frame.contentWindow.localStorage.setItem(key.replace(/[^/]*$/, "A.fxp"), btoa(sound));
    await told;`);
  await choose(8);
  await browser.key("Tab", "Tab", kShift);
  await browser.key("Tab");
  await browser.key("Home");
  check(await nameOf(8) === await nameOf(5), `the library has ${await nameOf(5)} from another page`);

  await control("s");
  await browser.key("Enter");
  const sound = await downloaded(`${await nameOf(8)}.fxp`);
  check(sound.equals(await bytesOf("PresetFile")), "a sound is saved as a download");
  await control("s", kShift);
  await browser.key("Enter");
  const bank = await downloaded("Bank.fxb");
  check(bank.equals(await bytesOf("BankFile")), "a bank is saved as a download");
  await browser.run(`quarzel.model.call("SetParameter", 0, 0.123)`);
  await browser.call("Page.setInterceptFileChooserDialog", { enabled: true });
  const asked = browser.event("Page.fileChooserOpened");
  await browser.key("Enter");
  const { backendNodeId } = await asked;
  await browser.call("DOM.setFileInputFiles", { backendNodeId, files: [path.join(downloads, "Bank.fxb")] });
  await wait(300);
  check(bank.equals(await bytesOf("BankFile")), "the sound browser loads by the picker");
  await browser.key("Escape");
  await browser.run(`document.activeElement.blur()`);
  const shown = () => browser.run(`return document.getElementById("program").selectedOptions[0].text.slice(4)`);
  const own = await nameOf(8);
  await choose(3);
  const before = await nameOf(3);
  await browser.pickFile(path.join(downloads, `${own}.fxp`));
  check(await browser.until(`return document.getElementById("status").textContent.includes(values[0])`, own) &&
        await shown() === own && before !== own, `the page loads ${await shown()}, and its list says so`);
  await control("z");
  check(await nameOf(3) === before && await shown() === before, `Ctrl+Z brings ${await shown()} back`);
  await control("z");
  check(Math.abs(await browser.run(`return quarzel.model.call("Parameter", 0)`) - 0.123) < 1e-6, "and again the bank");

  // Another page of this browser stores its bank.
  const [mine, others] = await browser.run(`
    const mine = Array.from(quarzel.model.bytes("State"));
    quarzel.model.call("SetParameter", 0, 0.321);
    const others = Array.from(quarzel.model.bytes("State"));
    quarzel.model.call("SetParameter", 0, values[0]);
    return [mine, others];`, 0.123);
  await browser.until("return !quarzel.storing");
  await browser.run(`frames[0].localStorage.setItem("quarzel.state", btoa(String.fromCharCode(...values[0])))`, others);
  const stateIs = async (bytes) => (await bytesOf("State")).equals(Buffer.from(bytes));
  check(await browser.until(`return !document.getElementById("others").hidden`) && await stateIs(mine),
        "another page's bank is offered");
  await browser.click("#others-take");
  check(await stateIs(others) && await browser.run(`return document.getElementById("others").hidden`), "and taken");
  await control("z");
  check(await stateIs(mine), "which Ctrl+Z takes back");

  // A player asks for a part of a piece; the whole is kept. A new release waits until it is wanted.
  const song = "pieces/largo.mid";
  await browser.run(`await navigator.serviceWorker.ready`);
  check(await browser.open() && await browser.run(`
    const { status } = await fetch(values[0], { headers: { Range: "bytes=0-3" } });
    return status`, song) === 206, "a part of a piece is a part");
  const worker = fs.readFileSync(path.join(site, "sw.js"), "utf8");
  browser.replaced["/sw.js"] = Buffer.from(worker.replace(/@?[0-9a-f]{16}`/, "new`"));
  browser.replaced["/style.css"] = Buffer.from(":root { --release: new; }");
  const release = `return getComputedStyle(document.documentElement).getPropertyValue("--release")`;
  await browser.open();
  check(await browser.until(`return !document.getElementById("update").hidden`) &&
        !await browser.run(release), "a new release is offered, the old one plays on");
  await browser.click("#update-now");
  check(await browser.until(release) && await browser.until(`return window.quarzel.ready`) &&
        (await browser.run(`return caches.keys()`)).length === 1, "the new release replaces the old");

  await browser.run(`await (await fetch(values[0], { headers: { Range: "bytes=0-3" } })).arrayBuffer()`, song);
  browser.server.close();
  browser.server.closeAllConnections();
  await browser.call("Network.emulateNetworkConditions",
    { offline: true, latency: 0, downloadThroughput: 0, uploadThroughput: 0 });
  check(await browser.open("/?again"), "the page works offline once loaded");
  await browser.run(`quarzel.sound.onNews = (news) => { window.heard ||= news[0] > 1e-4; }`);
  const [x, y] = await browser.placeOf("#keys [data-note='60']");
  await browser.mouse("mousePressed", x, y);
  check(await browser.until("return window.heard"), "a key sounds offline");
  check(await browser.run(`return (await (await fetch(values[0])).arrayBuffer()).byteLength`, song) ===
        fs.statSync(path.join(site, song)).size, "a piece once heard is there offline");
  const outside = browser.requests.filter((name) => !name.startsWith("/strings/"));
  check(browser.outside.length + outside.length === 0, `nothing leaves the page's folder ${browser.outside} ${outside}`);
});
