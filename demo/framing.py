"""Puts pictures of windows into a drawn frame, as a desktop would, and makes them small. Not taking them."""
import subprocess

BAR = 36
EDGE = 1
SHADOW = 18
COLORS = {"light": ("#e3e3e3", "#303030", "#b4b4b4"), "dark": ("#2a2a2a", "#e6e6e6", "#111111")}
MOST_COLORS = 192


def size_of(picture):
    shown = subprocess.run(["identify", "-format", "%w %h", str(picture)], stdout=subprocess.PIPE, check=True)
    return tuple(map(int, shown.stdout.split()))


def frame(picture, title, colors, target):
    """A bar with the title and the button that closes, round corners above, a thin edge and a shadow."""
    width, height = size_of(picture)
    bar, ink, edge = COLORS[colors]
    cross = width - BAR // 2
    middle = BAR // 2
    subprocess.run(
        ["convert", "-size", f"{width + 2 * EDGE}x{height + BAR + EDGE}", "xc:none", "-fill", bar, "-stroke", edge,
         "-draw", f"roundrectangle 0,0 {width + 2 * EDGE - 1},{height + BAR + 20} 9,9",
         "-draw", f"line 0,{height + BAR} {width + 2 * EDGE},{height + BAR}", "-stroke", "none",
         "(", str(picture), ")", "-gravity", "NorthWest", "-geometry", f"+{EDGE}+{BAR}", "-composite",
         "-gravity", "North", "-font", "DejaVu-Sans-Bold", "-pointsize", "13", "-fill", ink,
         "-annotate", f"+0+{BAR // 2 - 8}", title, "-gravity", "NorthWest", "-stroke", ink, "-strokewidth", "1.6",
         "-draw", f"line {cross - 5},{middle - 5} {cross + 5},{middle + 5}",
         "-draw", f"line {cross + 5},{middle - 5} {cross - 5},{middle + 5}",
         "(", "+clone", "-background", "black", "-shadow", f"45x{SHADOW // 3}+0+4", ")", "+swap",
         "-background", "white", "-layers", "merge", "+repage", "-bordercolor", "white", "-border", "4", str(target)],
        check=True)


def side_by_side(left, right, target):
    subprocess.run(["convert", str(left), str(right), "-background", "white", "-gravity", "North", "+append",
                    str(target)], check=True)


def make_small(picture):
    subprocess.run(["pngquant", "--force", "--strip", "--skip-if-larger", "--output", str(picture), str(MOST_COLORS),
                    str(picture)], check=False)  # 98 and 99 mean that the picture stays as it is
    subprocess.run(["optipng", "-quiet", "-o3", str(picture)], check=True)


def write_documents(output, documents):
    """From the pictures document-*.png in `output`."""
    documents.mkdir(parents=True, exist_ok=True)
    framed = {}
    for name, title, colors in (("light", "Funkhausplayer", "light"), ("dark", "Funkhausplayer", "dark"),
                                ("recording-light", "OZRecordFunkhaus", "light"),
                                ("recording-dark", "OZRecordFunkhaus", "dark"),
                                ("new-station", "Neue Radiostation einfügen", "light"),
                                ("genre", "Funkhausplayer", "light")):
        framed[name] = output / f"framed-{name}.png"
        frame(output / f"document-{name}.png", title, colors, framed[name])
    side_by_side(framed["light"], framed["dark"], documents / "light-and-dark.png")
    side_by_side(framed["recording-light"], framed["recording-dark"], documents / "recording.png")
    for name, target in (("light", "window"), ("new-station", "new-station"), ("genre", "genre")):
        subprocess.run(["cp", str(framed[name]), str(documents / f"{target}.png")], check=True)
    for picture in ("light-and-dark", "recording", "window", "new-station", "genre"):
        make_small(documents / f"{picture}.png")
