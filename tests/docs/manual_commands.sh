#!/usr/bin/env bash
# Runs the commands of the manual, with the names in it standing for real files. Each command must be
# known here, and each option must be one of a program.
# Usage: manual_commands.sh MANUAL PROGRAM... with the instrument, its bank and a skin among the programs.
set -euo pipefail
manual=$(realpath "$1")
shift
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cp -r "$@" "$place"
cp "$(dirname "$manual")/../demo/wachet_auf.mid" "$place/SONG.mid"
cd "$place"
cp default.fxb old.fxb
cp -r skin SKIN-FOLDER
mkdir FOLDER
export HOME=$place XDG_CONFIG_HOME=$place/settings PATH=$place:$PATH
unset DISPLAY
failed=0
fail() {
    echo "FAILED: $1"
    failed=1
}

# Why a command is not run here. Fails if it is to be run.
reason() {
    case $1 in
    'sudo apt '*) echo 'needs root and the package; scripts/try-package follows it' ;;
    'mkdir '* | 'tar '* | 'cd '* | './install.sh'*) echo 'needs the archive of a release' ;;
    quarzel | ./quarzel | 'quarzel SONG.mid') echo 'plays until it is closed; see standalone_tests' ;;
    'quarzel: command not found') echo 'is a message' ;;
    quarzel-render | quarzel-skin) echo 'is a name' ;;
    *) return 1 ;;
    esac
}

# What a command leaves behind. Fails if it is not known.
result() {
    case $1 in
    'quarzel-render SONG.mid OUT.wav') echo OUT.wav ;;
    'quarzel-render --to FOLDER *.mid') echo FOLDER/SONG.wav ;;
    'quarzel-render --bank old.fxb --program 5 --save-preset five.fxp') echo five.fxp ;;
    'quarzel-skin SKIN-FOLDER OUT.png') echo OUT.png ;;
    'quarzel --help' | 'quarzel-render --help' | 'quarzel --list-devices') echo log ;;
    *) return 1 ;;
    esac
}

# The spans of code in the text.
spans() {
    awk '/^```/ { inside = !inside; next } !inside' "$manual" | tr '\n' ' ' | grep -oE '`[^`]+`' | tr -d '`'
}

# Lines of blocks, and spans that begin like a command.
commands() {
    awk '/^```/ { inside = !inside; next } inside' "$manual"
    spans | grep -E '^(\./|(sudo|tar|cd|mkdir|quarzel|quarzel-render|quarzel-skin):?( |$))'
}

commands | sort -u >commands
while read -r command; do
    if why=$(reason "$command"); then
        echo "not run: $command ($why)"
    elif ! left=$(result "$command"); then
        fail "$command is not known to this test"
    elif ! eval "$command" >log 2>&1 || [ ! -s "$left" ]; then
        cat log
        fail "$command"
    else
        echo "run: $command"
    fi
done <commands

help=$(quarzel --help; quarzel-render --help)
spans | grep -v '^\./' | grep -oE -- '(^| )--[a-z-]+' | tr -d ' ' | sort -u >options
while read -r option; do
    grep -qE -- "(^|[ ,])$option( |$)" <<<"$help" || fail "no program has the option $option"
done <options
exit $failed
