#!/bin/sh
# Draws the icon in the sizes that desktops ask for, from funkhausplayer.svg (package librsvg2-bin).
# Not part of a build: the results are in the repository.
set -eu
cd "$(dirname "$0")"
mkdir -p icons
for size in 16 22 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" --output "icons/$size.png" funkhausplayer.svg
done
