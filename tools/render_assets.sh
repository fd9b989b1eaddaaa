#!/usr/bin/env bash
# Renders the drawings of assets/source into the pictures of assets, at the size of the drawing and at twice
# that size (name@2x.png). The results are committed; this runs again only when a drawing has changed.
# Needs rsvg-convert (Debian: librsvg2-bin), imagemagick and the fonts fonts-liberation and fonts-vlgothic.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../assets"

for drawing in source/*.svg; do
    name=$(basename "$drawing" .svg)
    rsvg-convert --zoom 1 -o "$name.png" "$drawing"
    rsvg-convert --zoom 2 -o "$name@2x.png" "$drawing"
done
for side in 32 48 128; do
    rsvg-convert --width "$side" --height "$side" -o "icon$side.png" source/icon.svg
done
rsvg-convert --width 256 --height 256 -o icon256.png source/icon.svg
# The icon of Windows, of all its sizes.
convert icon256.png -define icon:auto-resize=256,128,64,48,32,24,16 icon.ico
rm icon256.png
