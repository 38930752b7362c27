// Keeps the page for times without a network. Everything is fetched from the page's folder.
//
// A new release is kept beside the one that plays and takes its place when the page asks for it, or
// when no page is open: one page never mixes two releases.
const kName = `quarzel ${registration.scope} `;
const kCache = `${kName}@VERSION@`;
const kFiles = [
@FILES@
];

async function keepFiles() {
  const cache = await caches.open(kCache);
  // Browsers may hold older copies of their own.
  await cache.addAll(kFiles.map((file) => new Request(file, { cache: "reload" })));
}

async function dropOldReleases() {
  const isOld = (name) => name.startsWith(kName) && name !== kCache;
  await Promise.all((await caches.keys()).filter(isOld).map((name) => caches.delete(name)));
  await clients.claim();
}

addEventListener("install", (event) => event.waitUntil(keepFiles()));
addEventListener("activate", (event) => event.waitUntil(dropOldReleases()));
addEventListener("message", (event) => { if (event.data === "take over") event.waitUntil(skipWaiting()); });

// Players ask for parts of a piece, but only the whole can be kept.
async function partOf(response, range) {
  const [, first, last] = /^bytes=(\d+)-(\d*)$/.exec(range) ?? [];
  if (first === undefined || response.status !== 200) return response;
  const bytes = await response.blob();
  const end = last ? Math.min(Number(last) + 1, bytes.size) : bytes.size;
  return new Response(bytes.slice(first, end, bytes.type), { status: 206, headers: {
    "Content-Type": bytes.type, "Content-Range": `bytes ${first}-${end - 1}/${bytes.size}` } });
}

// Previews and pieces are kept once they have been heard.
async function answer(event) {
  const { request } = event;
  const range = request.headers.get("Range");
  const cache = await caches.open(kCache);
  let response = await cache.match(request.url, { ignoreSearch: true, ignoreVary: true });
  if (!response) {
    response = await fetch(range ? request.url : request);
    if (response.status === 200) {
      event.waitUntil(cache.put(request.url, response.clone()).catch(() => {}));  // storage may be full
    }
  } else if (response.redirected) {
    response = new Response(response.body, { headers: response.headers });  // as browsers want it
  }
  return range ? partOf(response, range) : response;
}

addEventListener("fetch", (event) => {
  const { method, url } = event.request;
  const isOurs = method === "GET" && url.startsWith(registration.scope);
  if (isOurs && !url.startsWith(`${registration.scope}packages/`)) event.respondWith(answer(event));
});
