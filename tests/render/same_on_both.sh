#!/usr/bin/env bash
# Renders a song and draws a skin with the programs for Windows, under Wine, and with those of the release build
# for this machine. Every name that they get holds letters outside ASCII.
# Usage: same_on_both.sh TREE quarzel-render.exe quarzel-skin.exe QuarzelStrings.dll
set -euo pipefail
tree=$1
native=$tree/build/release
for needed in render/quarzel-render editor/quarzel-skin plugin/QuarzelStrings.so plugin/skin/skin.xml; do
    [ -e "$native/$needed" ] && continue
    echo "SKIPPED: the release build has no $needed"
    exit 77
done
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
mkdir "$place/Üb 音"
cd "$place/Üb 音"
cp "$2" "$3" "$4" "$native/plugin/QuarzelStrings.so" .
cp "$tree/demo/lamplighter.mid" lied-ß.mid
cp -r "$native/plugin/skin" Häut
windows() { "$tree/scripts/wine" "$@"; }
linux=("$native/render/quarzel-render" --plugin ./QuarzelStrings.so --tail 0)

"${linux[@]}" --set Volume=0.25 --save-bank bänk.fxb
"${linux[@]}" --bank bänk.fxb --bits 32f --quiet lied-ß.mid linux.wav
windows ./quarzel-render.exe --bank bänk.fxb --bits 32f --tail 0 lied-ß.mid wínd.wav >log
grep -q 'wínd.wav' log
cmp linux.wav wínd.wav

mkdir Ørdner
windows ./quarzel-render.exe --quiet --tail 0 --rate 8000 --to Ørdner '*.mid'
[ -s Ørdner/lied-ß.wav ]

# A message of the instrument is printed: its box would wait for somebody.
echo damaged >default.fxb
windows ./quarzel-render.exe --list 2>&1 >/dev/null | grep -q '^Preset loader: '

"$native/editor/quarzel-skin" Häut linux.png >linux.txt
windows ./quarzel-skin.exe Häut wínd.png | tr -d '\r' >windows.txt
diff linux.txt windows.txt
cmp linux.png wínd.png

windows ./quarzel-render.exe --normalize LUFS lied-ß.mid nein.wav 2>log && exit 1
grep -q 'measures no loudness' log
rm linux.* windows.* wínd.* log
# Interrupted, it leaves no file.
"$tree/scripts/wine" ./quarzel-render.exe --tail 100 --rate 192000 lied-ß.mid lang.wav 2>/dev/null &
for _ in $(seq 600); do
    [ -e lang.wav.quarzel-part1 ] && break
    sleep 0.1
done
sleep 1
kill -INT $!
wait $! && exit 1
[ -z "$(ls lang.wav* 2>/dev/null)" ]
