#!/usr/bin/env python3
"""Prints the changelog of the repository in the form that Debian packages use.

Usage: debian_changelog.py CHANGELOG.md PACKAGE MAINTAINER
       debian_changelog.py --date CHANGELOG.md VERSION

The second form prints the date of one version, and fails when it is not the newest.
"""
import datetime
import re
import sys
import textwrap

WIDTH = 78


def versions(text):
    """(version, date, entries) of each version, newest first; an entry is the text of one list item."""
    found = []
    for line in text.split("\n"):
        heading = re.fullmatch(r"## \[(\d+(?:\.\d+)*)\] - (\d{4}-\d\d-\d\d)", line)
        if heading:
            found.append((heading[1], datetime.date.fromisoformat(heading[2]), []))
        elif line.startswith("## "):
            raise ValueError(f'no version with its date: "{line}"')
        elif line.startswith("- ") and found:
            found[-1][2].append(line[2:])
        elif line.startswith("  ") and found and found[-1][2]:
            found[-1][2][-1] += " " + line.strip()
    if not found:
        raise ValueError("no version")
    return found


def debian(text, package, maintainer):
    """The whole changelog. The dates have no time, so noon in Greenwich is used."""
    pieces = []
    for version, date, entries in versions(text):
        items = "\n".join(textwrap.fill(entry.replace("`", ""), WIDTH, initial_indent="  * ", subsequent_indent="    ",
                                        break_long_words=False, break_on_hyphens=False) for entry in entries)
        day = f"{'Mon Tue Wed Thu Fri Sat Sun'.split()[date.weekday()]}, {date.day:02}"
        month = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()[date.month - 1]
        pieces.append(f"{package} ({version}) unstable; urgency=medium\n\n{items}\n\n"
                      f" -- {maintainer}  {day} {month} {date.year} 12:00:00 +0000\n")
    return "\n".join(pieces)


def main():
    arguments = sys.argv[1:]
    try:
        if len(arguments) == 3 and arguments[0] == "--date":
            with open(arguments[1], encoding="utf-8") as file:
                version, date, _ = versions(file.read())[0]
            if version != arguments[2]:
                raise ValueError(f"the newest version is {version} and not {arguments[2]}")
            print(date.isoformat(), end="")
        elif len(arguments) == 3:
            with open(arguments[0], encoding="utf-8") as file:
                print(debian(file.read(), *arguments[1:]), end="")
        else:
            sys.exit(__doc__)
    except ValueError as error:
        sys.exit(f"changelog: {error}")


if __name__ == "__main__":
    main()
