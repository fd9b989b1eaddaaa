#!/usr/bin/env python3
"""Makes assets/gun.wav, the start gun: 0.8 s, 22050 Hz, mono, 16 bit.

A gun heard over water is three things at once: the crack of the blast, a millisecond wide and full of treble;
the thump of the pressure wave, low and falling in pitch; and the echo from the shore, dull and late. The noise
comes from a seeded generator, so the same file comes out each time.
"""

import argparse
import math
import random
import struct
import wave
from pathlib import Path

RATE = 22050
SECONDS = 0.8


def low_pass(samples, cutoff):
    """One-pole low pass, cutoff in Hz."""
    share = 1.0 - math.exp(-2.0 * math.pi * cutoff / RATE)
    out, level = [], 0.0
    for sample in samples:
        level += share * (sample - level)
        out.append(level)
    return out


def decay(time, constant):
    """1 at time 0, 1/e after constant seconds; 0 before time 0."""
    return math.exp(-time / constant) if time >= 0 else 0.0


def thump(times):
    """A low sine that falls from 140 Hz to 45 Hz, with its octave to carry on small loudspeakers."""
    phase, out = 0.0, []
    for time in times:
        phase += 2.0 * math.pi * (45.0 + 95.0 * decay(time, 0.06)) / RATE
        out.append((math.sin(phase) + 0.35 * math.sin(2.0 * phase)) * decay(time, 0.16))
    return out


def gun_shot():
    chance = random.Random(7)
    times = [index / RATE for index in range(int(RATE * SECONDS))]
    noise = [chance.uniform(-1.0, 1.0) for _ in times]
    body_noise, echo_noise = low_pass(noise, 1800.0), low_pass(noise, 500.0)
    mixed = []
    for time, crack, body, boom, echo in zip(times, noise, body_noise, thump(times), echo_noise):
        blast = 1.6 * crack * decay(time, 0.007) + 2.2 * body * decay(time, 0.05)
        shore = 1.6 * echo * (decay(time - 0.12, 0.13) + 0.6 * decay(time - 0.27, 0.16))
        fade = min(1.0, (SECONDS - time) / 0.1)
        mixed.append(math.tanh(1.5 * (blast + 0.9 * boom + shore)) * fade)
    return mixed


def main():
    default = Path(__file__).resolve().parent.parent / "assets" / "gun.wav"
    parser = argparse.ArgumentParser(description="makes the start gun")
    parser.add_argument("output", nargs="?", type=Path, default=default)
    output = parser.parse_args().output
    shot = gun_shot()
    peak = max(abs(sample) for sample in shot)
    data = struct.pack(f"<{len(shot)}h", *(round(sample / peak * 32000) for sample in shot))
    with wave.open(str(output), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(data)


if __name__ == "__main__":
    main()
