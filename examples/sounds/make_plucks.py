#!/usr/bin/env python3
"""Makes the sound of this folder: plucked strings with a rumble at the start and a hiss at the end, and clicks in it.

Usage: make_plucks.py FILE.wav
"""
import array
import math
import random
import sys
import wave

rate = 22050
seconds = 4.2
frames = int(rate * seconds)
pitches = ((220, 277.2, 329.6, 440, 554.4, 659.3), (164.8, 138.6, 110, 329.6, 277.2, 220))   # left, right


def pluck(time, pitch):
    """A string struck at time 0: four partials, the higher the shorter."""
    if time < 0:
        return 0.0
    onset = min(1.0, time / 0.004)
    return onset * sum(0.3 / partial ** 1.5 * math.exp(-2.5 * partial * time) *
                       math.sin(2 * math.pi * partial * pitch * time)
                       for partial in range(1, 5))


def hiss(noise, count):
    """Noise that swells and fades from 3.3 s on, its high frequencies taken off twice."""
    result, once, twice = [0.0] * count, 0.0, 0.0
    for frame in range(int(3.3 * rate), int(4.1 * rate)):
        once += 0.3 * (noise.uniform(-1, 1) - once)
        twice += 0.3 * (once - twice)
        result[frame] = 0.25 * math.sin(math.pi * (frame / rate - 3.3) / 0.8) * twice
    return result


def clean():
    """Both channels without clicks, as 16-bit samples."""
    noise = random.Random(1)
    channels = []
    for notes, loudness in zip(pitches, (1.0, 0.6)):
        hissing = hiss(noise, frames)
        samples = []
        for frame in range(frames):
            time = frame / rate
            value = 0.15 * math.sin(2 * math.pi * 4 * time) * math.exp(-5 * time) + hissing[frame]
            value += sum(pluck(time - 0.4 - 0.45 * place, pitch) for place, pitch in enumerate(notes)
                         if time - 0.4 - 0.45 * place < 1.2)
            samples.append(round(32767 * loudness * value))
        channels.append(samples)
    return channels


def clicks(channels):
    """For each channel its clicks: the first frame and the samples that stand there, one to three."""
    chance = random.Random(2)
    result = []
    for samples in channels:
        found, frame = [], 0
        while True:
            frame += int(rate * chance.uniform(0.06, 0.28))
            if frame > frames - rate // 20:
                break
            height = chance.uniform(0.6, 0.95)
            sign = -1 if samples[frame] > 0 else 1
            found.append((frame, [round(32767 * sign * height * share)
                                  for share in ((1.0,), (1.0, 0.9), (0.8, 1.0, 0.8))[chance.randrange(3)]]))
        result.append(found)
    return result


def clicking():
    """Both channels with their clicks."""
    channels = clean()
    for samples, found in zip(channels, clicks(channels)):
        for frame, values in found:
            samples[frame:frame + len(values)] = values
    return channels


def main():
    interleaved = array.array("h", [sample for pair in zip(*clicking()) for sample in pair])
    if sys.byteorder == "big":
        interleaved.byteswap()
    with wave.open(sys.argv[1], "wb") as file:
        file.setparams((2, 2, rate, frames, "NONE", ""))
        file.writeframes(interleaved.tobytes())


if __name__ == "__main__":
    main()
