#!/bin/sh
# Draws the icons (32 x 32) and pictures of the demonstration's stations with ImageMagick's convert.
# Not part of a build: the results are in the repository.
set -eu
cd "$(dirname "$0")"
mkdir -p RadioIco RadioJPG

# icon NAME GROUND WAVES: a mast that sends two waves to each side.
icon() {
    convert -size 128x128 xc:none -fill "$2" -draw 'roundrectangle 2,2 125,125 24,24' \
        -fill none -stroke "$3" -strokewidth 7 \
        -draw 'arc 44,24 84,64 125,235' -draw 'arc 44,24 84,64 -55,55' \
        -draw 'arc 26,6 102,82 130,230' -draw 'arc 26,6 102,82 -50,50' \
        -stroke white -strokewidth 8 -draw 'line 64,50 42,112' -draw 'line 64,50 86,112' \
        -draw 'line 50,88 78,88' -fill white -stroke none -draw 'circle 64,44 64,34' \
        -resize 32x32 -strip "RadioIco/$1.ico"
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

icon 'Radio Lichtung' '#2f6f4f' '#ffd166'
icon 'Küstenfunk Süd' '#1d4e79' '#9ad1f5'
picture 'Radio Lichtung' '#8ec5e8-#fbe3b5' '#7fb069' '#fff3c4' '#2f6f4f'
picture 'Küstenfunk Süd' '#27406b-#f3a683' '#3c6e91' '#ffe8c2' '#1c2f45'
