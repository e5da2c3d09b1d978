#!/usr/bin/env python3
"""Makes one HTML page of the user's guide, for systems that do not show Markdown: guide_html.py GUIDE.md OUTPUT.html

Fails when the page refers to a place or a picture that is not there."""
import pathlib
import re
import subprocess
import sys
from urllib.parse import unquote

PAGE = """<!DOCTYPE html>
<html lang="de">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{title}</title>
<style>
body {{ font: 1rem/1.5 system-ui, sans-serif; max-width: 48rem; margin: 2rem auto; padding: 0 1rem }}
img {{ max-width: 100% }}
table {{ border-collapse: collapse }}
th, td {{ border: 1px solid #8888; padding: .3rem .6rem; text-align: left; vertical-align: top }}
pre {{ overflow-x: auto; padding: .6rem; background: #8882 }}
</style>
{body}
</html>
"""


def with_place(heading):
    """A heading that can be referred to by its text, in small letters, with hyphens for blanks, as in Markdown."""
    level, text = heading.groups()
    place = re.sub(r"[^\w -]", "", text.lower()).strip().replace(" ", "-")
    return f'<h{level} id="{place}">{text}</h{level}>'


def main():
    guide, output = map(pathlib.Path, sys.argv[1:])
    body = subprocess.run(["cmark-gfm", "--extension", "table", guide], check=True, capture_output=True).stdout.decode()
    body = re.sub(r"<h(\d)>(.*?)</h\d>", with_place, body)
    title = re.search("<h1[^>]*>(.*?)</h1>", body)[1]
    places = set(re.findall(' id="([^"]*)"', body))
    lost = [place for place in re.findall(' href="#([^"]*)"', body) if unquote(place) not in places]
    lost += [picture for picture in re.findall(' src="([^"]*)"', body) if not (guide.parent / picture).is_file()]
    if lost:
        sys.exit(f"{guide}: refers to what is not there: {', '.join(lost)}")
    output.write_text(PAGE.format(title=title, body=body), encoding="utf-8")


if __name__ == "__main__":
    main()
