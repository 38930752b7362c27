// Keeps the page for times without a network. Everything is fetched from the page's folder.
const kCache = "quarzel-@VERSION@";
const kFiles = [
@FILES@
];

addEventListener("install", (event) => {
  event.waitUntil(caches.open(kCache).then((cache) => cache.addAll(kFiles)).then(() => skipWaiting()));
});

addEventListener("activate", (event) => {
  const isOld = (name) => name.startsWith("quarzel-") && name !== kCache;
  event.waitUntil(caches.keys()
    .then((names) => Promise.all(names.filter(isOld).map((name) => caches.delete(name))))
    .then(() => clients.claim()));
});

// Previews and pieces are kept once they have been heard.
async function answer(request) {
  const cache = await caches.open(kCache);
  const kept = await cache.match(request, { ignoreSearch: true, ignoreVary: true });
  if (kept) return kept;
  const fresh = await fetch(request);
  if (fresh.status === 200) cache.put(request, fresh.clone());
  return fresh;
}

addEventListener("fetch", (event) => {
  const { request } = event;
  if (request.method === "GET" && request.url.startsWith(registration.scope)) {
    event.respondWith(answer(request));
  }
});
