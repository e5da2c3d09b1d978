#!/usr/bin/env python3
"""Measures what users notice, in a release build and beside other players, and prints a table. Without WHAT everything
but "windows" is measured, and the table is written to bench/results.md. No number makes it fail: the table shows which
goals were missed."""
import argparse
import importlib
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

from figures import table
from machine import description
from playing import Children, Failure

BENCH = pathlib.Path(__file__).resolve().parent
WHATS = {
    "start": "from the start to the window",
    "onset": "from a click to the sound",
    "cost": "processor and memory while playing",
    "comeback": "sound after a server's return",
    "recording": "the recording tool's speed",
    "titles": "the run over all titles",
    "catalogue": "loading, saving, sorting, importing",
    "frozen": "how long a silent server freezes the window",
}
# Measured only when it is named: it takes Wine, and what scripts/windows makes.
APART = {"windows": "the program for Windows under Wine, beside this one"}


def measured(what, arguments):
    children = Children(arguments.output)
    with tempfile.TemporaryDirectory(prefix="funkhaus-bench-") as scratch:
        scratch = pathlib.Path(scratch)
        scratch.chmod(0o711)  # a player that refuses to run as root runs as another user
        try:
            return importlib.import_module(what).measure(arguments, children, scratch)
        finally:
            children.end()


def write_results(lines, load):
    """The table, and below it what was written by hand about it."""
    parts = ["# What the program costs, and how fast it is", "",
             "Written by `scripts/bench`; [README.md](README.md) explains each row. Numbers are medians, behind them "
             "the range; ratios are medians of the ratios of the rounds.", "", description(load), "", table(lines), "",
             (BENCH / "reasons.md").read_text(encoding="utf-8")]
    (BENCH / "results.md").write_text("\n".join(parts), encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(
        prog="scripts/bench", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter,
        epilog="what:\n" + "\n".join(f"  {name:10} {meaning}" for name, meaning in (WHATS | APART).items()))
    parser.add_argument("build", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("output", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("what", nargs="*", metavar="WHAT", help="what to measure")
    parser.add_argument("--runs", type=int, default=5, help="rounds of each (5)")
    parser.add_argument("--seconds", type=float, default=60, help="of playing in each round of \"cost\" (60)")
    parser.add_argument("--details", action="store_true", help="print where the time goes, where that is known")
    parser.add_argument("--alone", action="store_true", help="\"cost\" without the other players")
    arguments = parser.parse_args()
    if unknown := set(arguments.what) - set(WHATS | APART):
        parser.error(f"unknown: {', '.join(sorted(unknown))}")
    arguments.output.mkdir(parents=True, exist_ok=True)
    # So what was started is ended also when the measurement itself is asked to end.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    load, lines, failed = os.getloadavg()[0], [], False
    for what in arguments.what or WHATS:
        began = time.monotonic()
        try:
            lines += measured(what, arguments)
        except (Failure, subprocess.SubprocessError) as failure:
            print(f"Not measured: {what}: {failure}", file=sys.stderr, flush=True)
            failed = True
        print(f"{what}: {time.monotonic() - began:.0f} s", file=sys.stderr, flush=True)
    print(table(lines), flush=True)
    if failed:
        return 2
    if not arguments.what:
        write_results(lines, load)
    return 0


if __name__ == "__main__":
    sys.exit(main())
