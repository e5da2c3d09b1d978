#!/usr/bin/env python3
"""Processor time and memory of the program while it plays, against gst-play-1.0 at the same address.

Usage: cost.py BUILD_FOLDER OUTPUT_FOLDER [--seconds N] [--threads]

Both play a stream of 128 kbit/s MP3 at the same time, so the machine's load is the same for both, but on a sound
card each; the program has its window open on a virtual screen and its bars move. A second measurement follows with the window hidden. The
exit code says whether the program kept within its limits.
"""
import argparse
import pathlib
import sys
import time

from playing import AUDIBLE, Meter, Stage, measure, memory_megabytes
from desktop import Failure

MOST_RATIO = 1.5
MOST_MEGABYTES = 120


def compare(program, reference, seconds):
    meters = [Meter(process) for process in (program, reference)]
    time.sleep(seconds)
    return [meter.seconds() for meter in meters], meters[0].by_thread()


def run(arguments, children, scratch):
    stage = Stage(children, arguments.build, scratch, arguments.output)
    program = stage.start_program()
    reference = stage.start_reference()
    time.sleep(5)  # what a player does once, at its start, is not what it costs
    (own, other), by_thread = compare(program, reference, arguments.seconds)
    memory, other_memory = memory_megabytes(program.pid), memory_megabytes(reference.pid)
    stage.hide(program)
    (hidden, other_meanwhile), hidden_by_thread = compare(program, reference, arguments.seconds)
    for process, name in ((program, "the program"), (reference, "gst-play-1.0")):
        if process.poll() is not None:
            raise Failure(f"{name} ended with {process.returncode}")
    if min(stage.sink.loudness(), stage.reference_sink.loudness()) < AUDIBLE:
        raise Failure("a stream fell silent")
    print(f"{arguments.seconds:.0f} s of 128 kbit/s MP3     processor      memory")
    print(f"the program, window open    {own:8.2f} s  {memory:8.1f} MB")
    print(f"gst-play-1.0                {other:8.2f} s  {other_memory:8.1f} MB")
    print(f"ratio {own / other:.2f} (at most {MOST_RATIO}), memory at most {MOST_MEGABYTES} MB "
          f"(highest {memory_megabytes(program.pid, 'VmHWM'):.1f} MB)")
    print(f"window hidden               {hidden:8.2f} s, gst-play-1.0 meanwhile {other_meanwhile:.2f} s: "
          f"ratio {hidden / other_meanwhile:.2f}")
    if arguments.threads:
        for title, used in (("window open", by_thread), ("window hidden", hidden_by_thread)):
            print(f"{title}: " + ", ".join(f"{name} {spent:.2f}" for name, spent in used if spent >= 0.01))
    return 0 if own / other <= MOST_RATIO and memory <= MOST_MEGABYTES else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="folder of the build")
    parser.add_argument("output", type=pathlib.Path, help="folder for logs")
    parser.add_argument("--seconds", type=float, default=30)
    parser.add_argument("--threads", action="store_true", help="also the time of each thread of the program")
    arguments = parser.parse_args()
    return measure(run, arguments)


if __name__ == "__main__":
    sys.exit(main())
