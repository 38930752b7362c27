#!/bin/sh
# Links the instrument and its programs from this folder to where sequencers, shell and desktop look.
# "install.sh --remove" removes these links again.
set -eu
cd "$(dirname "$0")"
here=$(pwd)
data=${XDG_DATA_HOME:-$HOME/.local/share}
case $#${1-} in
0 | 1--remove) remove=${1-} ;;
*) echo "Usage: install.sh [--remove]" >&2 && exit 2 ;;
esac

# link FOLDER FILE: links FILE, if it is here, into FOLDER.
link() {
    place=$1/$(basename "$2")
    if [ "$remove" ]; then
        [ "$(readlink "$place")" != "$here/$2" ] || rm "$place"
    elif [ -e "$place" ] && [ ! -L "$place" ]; then
        echo "$place is in the way, perhaps an older copy. Move it away first." >&2
        exit 1
    elif [ -e "$2" ]; then
        mkdir -p "$1"
        ln -sfn "$here/$2" "$place"
        echo "$place"
    fi
}

link "$HOME/.vst" QuarzelStrings.so
link "$HOME/.vst3" QuarzelStrings.vst3
link "$HOME/.clap" QuarzelStrings.clap
link "$HOME/.lv2" QuarzelStrings.lv2
for program in quarzel quarzel-render quarzel-skin; do
    link "$HOME/.local/bin" $program
done
link "$data/icons/hicolor/scalable/apps" menu/quarzel.svg

# The desktop may not search ~/.local/bin, so its entry names the program's whole path.
entry=$data/applications/quarzel.desktop
if [ "$remove" ]; then
    ! grep -qsF "Exec=\"$here/quarzel\"" "$entry" || rm "$entry"
elif [ -e menu/quarzel.desktop ]; then
    mkdir -p "$data/applications"
    sed "s|^Exec=quarzel|Exec=\"$here/quarzel\"|" menu/quarzel.desktop >"$entry"
    echo "$entry"
    case :$PATH: in
    *":$HOME/.local/bin:"*) ;;
    *) echo "Your shell does not search ~/.local/bin yet; it may after the next login." ;;
    esac
fi
