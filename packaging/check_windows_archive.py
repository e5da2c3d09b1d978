#!/usr/bin/env python3
"""Checks the archive for Windows: check_windows_archive.py ARCHIVE FOLDER

Unpacks it into FOLDER, which is made anew, and fails unless everything is there, the texts say how to pass the system's
warning about unsigned programs, each program is small and names the holder of the licence, and none needs another library
than the system's own."""
import html
import pathlib
import re
import shutil
import subprocess
import sys
import zipfile

LARGEST = 4 * 1024 * 1024
PROGRAMS = ("Funkhausplayer.exe", "OZRecordFunkhaus.exe")
FILES = PROGRAMS + ("Handbuch.html", "LiesMich.txt", "images/window.png", "Languages/English.lng", "RadioIco/LiesMich.txt",
                    "RadioJPG/LiesMich.txt", "Lizenzen/Funkhausplayer.txt", "Lizenzen/GCC.txt", "Lizenzen/mingw-w64.txt")
# What the system shows to whoever starts a program from the internet that nobody signed, and how to prevent that.
WARNED = ("nicht signiert", "eigenen, leeren Ordner", "Eigenschaften", "Zulassen", "Weitere Informationen",
          "Trotzdem ausführen")
# Part of every Windows since 10; "mf" and "mfplat" are not, as its "N" editions may lack them.
SYSTEM = {"advapi32", "avrt", "bcrypt", "comctl32", "comdlg32", "dwmapi", "gdi32", "gdiplus", "kernel32", "msimg32",
          "msvcrt", "normaliz", "ole32", "oleacc", "oleaut32", "propsys", "shell32", "shlwapi", "user32", "uxtheme",
          "version", "windowscodecs", "wininet", "winmm"}


def libraries(program):
    """What the system's loader must find for a program, in small letters and without endings."""
    text = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", program], check=True, capture_output=True, text=True).stdout
    return {line.split(":", 1)[1].strip().lower().removesuffix(".dll") for line in text.splitlines() if "DLL Name:" in line}


def words(file):
    """The text of a file or page, with single blanks."""
    text = file.read_text(encoding="utf-8-sig")
    if file.suffix == ".html":
        text = html.unescape(re.sub("<[^>]*>", "", text))
    return " ".join(text.split())


def main():
    archive, folder = map(pathlib.Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(folder)
    [top] = folder.iterdir()
    if top.name != archive.stem:
        sys.exit(f"{archive}: its folder is {top.name}")
    for file in FILES:
        if not (top / file).is_file():
            sys.exit(f"{archive}: lacks {file}")
    for name in ("LiesMich.txt", "Handbuch.html"):
        text = words(top / name)
        for part in WARNED:
            if part not in text:
                sys.exit(f'{name} does not say "{part}"')
    [holder] = [line.strip() for line in (top / "Lizenzen/Funkhausplayer.txt").read_text().splitlines()
                if line.startswith("Copyright")]
    for name in PROGRAMS:
        program = top / name
        if holder.encode("utf-16-le") not in program.read_bytes():
            sys.exit(f'{name} does not say "{holder}"')
        size = program.stat().st_size
        needed = libraries(program)
        print(f"{name}: {size} bytes, needs {', '.join(sorted(needed))}")
        if size > LARGEST:
            sys.exit(f"{name} is larger than {LARGEST} bytes")
        if needed - SYSTEM:
            sys.exit(f"{name} needs what no system has: {', '.join(sorted(needed - SYSTEM))}")


if __name__ == "__main__":
    main()
