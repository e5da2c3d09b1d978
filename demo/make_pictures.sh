#!/bin/sh
# Draws the icons (32 x 32) and pictures of the demonstration's stations with ImageMagick's convert.
# Not part of a build: the results are in the repository.
set -eu
cd "$(dirname "$0")"
mkdir -p RadioIco RadioJPG

# icon NAME GROUND DRAWING...: what convert draws on a rounded square of 128 units.
icon() {
    name=$1
    ground=$2
    shift 2
    convert -size 128x128 xc:none -fill "$ground" -draw 'roundrectangle 2,2 125,125 24,24' "$@" \
        -resize 32x32 -strip "RadioIco/$name.ico"
}

# mast NAME GROUND WAVES: a mast that sends two waves to each side.
mast() {
    icon "$1" "$2" -fill none -stroke "$3" -strokewidth 7 \
        -draw 'arc 44,24 84,64 125,235' -draw 'arc 44,24 84,64 -55,55' \
        -draw 'arc 26,6 102,82 130,230' -draw 'arc 26,6 102,82 -50,50' \
        -stroke white -strokewidth 8 -draw 'line 64,50 42,112' -draw 'line 64,50 86,112' \
        -draw 'line 50,88 78,88' -fill white -stroke none -draw 'circle 64,44 64,34'
}

# picture NAME SKY GROUND LIGHT WOOD: a clearing between hills under a low sun.
picture() {
    convert -size 400x300 "gradient:$2" \
        -fill "$4" -draw 'circle 270,150 270,108' \
        -fill "$3" -draw 'path "M 0,210 C 90,150 170,190 230,200 C 300,212 340,170 400,190 L 400,300 L 0,300 Z"' \
        -fill "$5" -draw 'path "M 0,250 C 120,225 260,280 400,240 L 400,300 L 0,300 Z"' \
        -draw 'path "M 40,250 L 66,130 L 92,250 Z"' -draw 'path "M 84,256 L 104,170 L 124,256 Z"' \
        -draw 'path "M 330,256 L 352,150 L 374,256 Z"' \
        -strip -quality 85 "RadioJPG/$1.jpg"
}

mast 'Radio Lichtung' '#2f6f4f' '#ffd166'
mast 'Küstenfunk Süd' '#1d4e79' '#9ad1f5'
icon 'Blaue Stunde' '#273469' -fill '#f2d492' -draw 'circle 64,60 64,24' -fill '#273469' -draw 'circle 80,50 80,18' \
    -fill none -stroke '#8fa3e8' -strokewidth 7 -draw 'line 24,104 104,104'
icon 'Kupferwelle' '#6b2d1f' -fill none -stroke '#f0a36b' -strokewidth 10 \
    -draw 'path "M 14,64 C 30,10 48,10 64,64 C 80,118 98,118 114,64"'
icon 'Radio Mohnfeld' '#f4e9d8' -stroke '#3f6b3a' -strokewidth 7 -draw 'line 64,66 64,114' \
    -stroke none -fill '#d6322b' -draw 'circle 48,52 48,28' -draw 'circle 80,52 80,28' -draw 'circle 64,40 64,16' \
    -fill '#2b1b17' -draw 'circle 64,52 64,40'
icon 'Nachtkurier' '#16161d' -fill '#35e0c2' -draw 'rectangle 24,70 38,104' -draw 'rectangle 46,40 60,104' \
    -draw 'rectangle 68,56 82,104' -draw 'rectangle 90,26 104,104'
icon 'Studio Kiesel' '#8d99ae' -fill '#edf2f4' -draw 'ellipse 50,80 32,20 0,360' -fill '#2b2d42' \
    -draw 'ellipse 84,56 24,16 0,360'
icon 'Saal Orion' '#5a189a' -fill none -stroke '#e0aaff' -strokewidth 6 -draw 'path "M 30,100 L 44,38 L 84,30 L 100,92 Z"' \
    -stroke none -fill white -draw 'circle 30,100 30,92' -draw 'circle 44,38 44,28' -draw 'circle 84,30 84,22' \
    -draw 'circle 100,92 100,82'
icon 'Bergpfad' '#a7d3f0' -fill '#4a6f58' -draw 'path "M 6,112 L 50,34 L 78,84 L 92,62 L 122,112 Z"' \
    -fill white -draw 'path "M 50,34 L 38,56 L 50,64 L 60,52 Z"'
icon 'Wort am Fluss' '#e7edf2' -fill '#33658a' -draw 'roundrectangle 20,24 108,78 16,16' \
    -draw 'path "M 40,76 L 36,104 L 66,76 Z"' -fill none -stroke white -strokewidth 7 -draw 'line 38,44 90,44' \
    -draw 'line 38,60 74,60'
icon 'Radio Papierboot' '#bde0fe' -fill white -stroke '#3a6ea5' -strokewidth 5 \
    -draw 'path "M 14,70 L 114,70 L 92,100 L 36,100 Z"' -draw 'path "M 64,22 L 38,70 L 90,70 Z"'
icon 'Weite Prärie' '#f6bd60' -fill '#fff3d6' -draw 'circle 64,66 64,38' -fill '#9c5221' \
    -draw 'path "M 4,78 L 124,78 L 124,102 C 124,116 116,124 102,124 L 26,124 C 12,124 4,116 4,102 Z"'
picture 'Radio Lichtung' '#8ec5e8-#fbe3b5' '#7fb069' '#fff3c4' '#2f6f4f'
picture 'Küstenfunk Süd' '#27406b-#f3a683' '#3c6e91' '#ffe8c2' '#1c2f45'
