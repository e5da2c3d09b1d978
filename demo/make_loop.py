#!/usr/bin/env python3
"""Makes demo/loop.mp3, the music of the demonstration's station: a soft arpeggio over four chords.

Usage: make_loop.py [OUTPUT]     (needs ffmpeg)

The loop is a whole number of MPEG frames long and is written as the middle one of three rounds, encoded
without a bit reservoir. So its last frame fits its first one, every frame stands alone, and a server may send
the file again and again without a click or a decoder error at the seam.
"""
import array
import math
import pathlib
import subprocess
import sys
import tempfile
import wave

RATE = 48000
FRAME = 1152           # Samples of an MPEG-1 layer III frame.
FRAME_BYTES = 384      # At 128 kbit/s and 48 kHz, without a rest, so that no frame needs padding.
FRAMES = 600           # 14.4 seconds: 8 bars of 8 notes of 0.225 s.
LENGTH = FRAME * FRAMES
STEP = LENGTH // 64
PEAK = 0.6

# Notes as semitones from A4. Each chord: bass, pad and the eight notes of its arpeggio.
CHORDS = [
    (-24, (-9, -5, 0, 2), (-9, -5, 0, 3, 7, 3, 0, -5)),      # A minor with a ninth
    (-28, (-12, -9, -4, 0), (-12, -4, 0, 3, 5, 3, 0, -4)),   # F major seventh
    (-21, (-9, -5, -2, 2), (-9, -2, 3, 7, 10, 7, 3, -2)),    # C major, open
    (-26, (-14, -10, -7, -2), (-14, -7, -2, 2, 5, 2, -2, -7)),  # G with its sixth
]


def frequency(semitones):
    return 440.0 * 2.0 ** (semitones / 12.0)


def pluck(semitones, seconds=1.6):
    """A soft plucked tone: three harmonics that fade the faster the higher they are."""
    step = 2.0 * math.pi * frequency(semitones) / RATE
    tone = []
    for n in range(int(seconds * RATE)):
        t = n / RATE
        attack = min(1.0, t / 0.008)
        release = min(1.0, (seconds - t) / 0.05)
        tone.append(attack * release * (math.exp(-3.0 * t) * math.sin(step * n)
                                        + 0.35 * math.exp(-5.0 * t) * math.sin(2.0 * step * n)
                                        + 0.12 * math.exp(-9.0 * t) * math.sin(3.0 * step * n)))
    return tone


def pad(semitones, seconds):
    """A tone of two slightly mistuned voices that swells and fades."""
    low = 2.0 * math.pi * frequency(semitones) * 0.9985 / RATE
    high = 2.0 * math.pi * frequency(semitones) * 1.0015 / RATE
    count = int(seconds * RATE)
    return [math.sin(math.pi * n / count) ** 2 * (math.sin(low * n) + math.sin(high * n)) for n in range(count)]


def add(track, start, tone, gain):
    """Adds a tone; what reaches beyond the end continues at the beginning."""
    for n, value in enumerate(tone):
        track[(start + n) % LENGTH] += gain * value


def compose():
    left, right = [0.0] * LENGTH, [0.0] * LENGTH
    plucks = {}
    for bar in range(8):
        bass, chord, notes = CHORDS[bar // 2]
        for position, note in enumerate(notes):
            if note not in plucks:
                plucks[note] = pluck(note)
            start = (bar * 8 + position) * STEP
            side = 0.5 + 0.35 * math.sin(position * math.pi / 4.0)
            add(left, start, plucks[note], 0.5 * (1.0 - side))
            add(right, start, plucks[note], 0.5 * side)
        if bar % 2 == 0:
            for voice, note in enumerate(chord):
                tone = pad(note, 20 * STEP / RATE)
                add(left, bar * 8 * STEP, tone, 0.06 if voice % 2 else 0.04)
                add(right, bar * 8 * STEP, tone, 0.04 if voice % 2 else 0.06)
        for beat in (0, 5):
            tone = pluck(bass, 1.2)
            add(left, (bar * 8 + beat) * STEP, tone, 0.3)
            add(right, (bar * 8 + beat) * STEP, tone, 0.3)
    # A crossed echo of three notes' length; the index wraps by itself for negative positions.
    delay = 3 * STEP
    return ([left[n] + 0.25 * right[n - delay] for n in range(LENGTH)],
            [right[n] + 0.25 * left[n - delay] for n in range(LENGTH)])


def write_wave(path, left, right, rounds):
    scale = PEAK * 32767.0 / max(max(map(abs, left)), max(map(abs, right)))
    samples = array.array("h")
    for n in range(LENGTH):
        samples.append(round(scale * left[n]))
        samples.append(round(scale * right[n]))
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples.tobytes() * rounds)


def main():
    output = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).with_name("loop.mp3"))
    with tempfile.TemporaryDirectory() as folder:
        sound, encoded = pathlib.Path(folder, "loop.wav"), pathlib.Path(folder, "rounds.mp3")
        write_wave(sound, *compose(), rounds=3)
        subprocess.run(["ffmpeg", "-loglevel", "error", "-i", sound, "-codec:a", "libmp3lame", "-b:a", "128k",
                        "-reservoir", "0", "-write_xing", "0", "-id3v2_version", "0", "-map_metadata", "-1",
                        encoded], check=True)
        frames = encoded.read_bytes()
    loop = frames[FRAMES * FRAME_BYTES:2 * FRAMES * FRAME_BYTES]
    if any(loop[n:n + 2] != b"\xff\xfb" for n in range(0, len(loop), FRAME_BYTES)):
        raise SystemExit("the encoder did not write frames of the expected size")
    output.write_bytes(loop)
    print(f"{output}: {FRAMES} frames, {len(loop)} bytes")


if __name__ == "__main__":
    main()
