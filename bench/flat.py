#!/usr/bin/env python3
"""Plays a station for some minutes and checks whether the program's memory stays flat.

Usage: flat.py BUILD_FOLDER OUTPUT_FOLDER [--minutes N]

Prints the resident memory once a minute. The first minute is the program's start; over the rest a straight line is
laid through the samples. Flat means that this line rises by less than MOST_GROWTH in all. The exit code says
whether it was flat and the station was heard at every look.
"""
import argparse
import pathlib
import sys
import time

from playing import AUDIBLE, Meter, Stage, measure, memory_megabytes
from desktop import Failure

MOST_GROWTH = 1.0  # MB
STEP = 5.0         # seconds between samples


def slope(samples):
    """MB a second, by least squares over (seconds, MB)."""
    mean_time = sum(when for when, _ in samples) / len(samples)
    mean_size = sum(size for _, size in samples) / len(samples)
    spread = sum((when - mean_time) ** 2 for when, _ in samples)
    return sum((when - mean_time) * (size - mean_size) for when, size in samples) / spread


def watch(stage, program, seconds):
    """(seconds since the start, MB) every few seconds; prints a line a minute."""
    samples, started, told = [], time.monotonic(), -1
    while time.monotonic() - started < seconds:
        if program.poll() is not None:
            raise Failure(f"the program ended with {program.returncode}")
        now = time.monotonic() - started
        samples.append((now, memory_megabytes(program.pid)))
        if int(now // 60) > told:
            told = int(now // 60)
            loudness = stage.sink.loudness()
            print(f"{told:4d} min  {samples[-1][1]:7.2f} MB  {loudness:6.1f} dB", flush=True)
            if loudness < AUDIBLE:
                raise Failure("the stream fell silent")
        time.sleep(STEP)
    return samples


def run(arguments, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    program = stage.start_program()
    meter = Meter(program.pid)
    samples = watch(stage, program, arguments.minutes * 60)
    settled = [sample for sample in samples if sample[0] >= 60]
    growth = slope(settled) * (settled[-1][0] - settled[0][0])
    flat = growth < MOST_GROWTH
    print(f"{arguments.minutes:g} min: {min(size for _, size in settled):.2f} to "
          f"{max(size for _, size in settled):.2f} MB after the first minute, the line through them changes by "
          f"{growth:+.2f} MB: {'flat' if flat else 'NOT flat'} (at most {MOST_GROWTH} MB)")
    print(f"processor {meter.seconds():.1f} s, titles served {len(stage.station.lines('title '))}")
    return 0 if flat else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs")
    parser.add_argument("--minutes", type=float, default=10)
    arguments = parser.parse_args()
    if arguments.minutes < 2:
        parser.error("less than two minutes tell nothing")
    return measure(run, arguments)


if __name__ == "__main__":
    sys.exit(main())
