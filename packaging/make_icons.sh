#!/bin/sh
# Draws the icon in the sizes that desktops ask for, and the one of the programs for Windows with those that are used
# there at usual resolutions, from funkhausplayer.svg (packages librsvg2-bin and icoutils).
# Not part of a build: the results are in the repository.
set -eu
cd "$(dirname "$0")"
mkdir -p icons
draw() { rsvg-convert --width "$1" --height "$1" --output "$2/$1.png" funkhausplayer.svg; }
for size in 16 22 24 32 48 64 128 256; do
    draw "$size" icons
done

drawn=$(mktemp -d)
trap 'rm -r "$drawn"' EXIT
set --
for size in 16 20 24 32 40 48 64; do
    draw "$size" "$drawn"
    set -- "$@" "$drawn/$size.png"
done
draw 256 "$drawn"
icotool --create --output=../programs/windows/funkhausplayer.ico "$@" --raw="$drawn/256.png"
