"""The sounds of the harbour: 16-bit mono wav files made from sines and noise."""

import math
import struct

from .vector import Random

RATE = 16000


def save(path, samples):
    data = b"".join(struct.pack("<h", int(max(-1.0, min(1.0, x)) * 32000)) for x in samples)
    with open(path, "wb") as file:
        file.write(struct.pack("<4sI4s", b"RIFF", 36 + len(data), b"WAVE"))
        file.write(struct.pack("<4sIHHIIHH", b"fmt ", 16, 1, 1, RATE, RATE * 2, 2, 16))
        file.write(struct.pack("<4sI", b"data", len(data)) + data)


def silence(seconds):
    return [0.0] * int(seconds * RATE)


def surf(seconds=6.0):
    """Waves against the quay; the end runs into the start."""
    random, low, out = Random(7), 0.0, silence(seconds)
    count = len(out)
    for i in range(count):
        low += (random.between(-1, 1) - low) * (0.05 + 0.03 * math.sin(2 * math.pi * i / count * 2))
        swell = 0.45 + 0.35 * math.sin(2 * math.pi * i / count * 2) ** 2 + 0.2 * math.sin(2 * math.pi * i / count)
        out[i] = low * swell * 1.3
    fade = int(0.3 * RATE)
    for i in range(fade):
        out[i] = out[i] * (i / fade) + out[count - fade + i] * (1 - i / fade)
    return out[:count - fade]


def gull():
    out = silence(1.8)
    for start, pitch in ((0.0, 1250), (0.45, 1400), (0.8, 1350), (1.1, 1200)):
        phase = 0.0
        for i in range(int(0.3 * RATE)):
            u = i / (0.3 * RATE)
            phase += 2 * math.pi * pitch * (0.75 + 0.45 * math.sin(math.pi * u) - 0.2 * u) / RATE
            tone = math.sin(phase) + 0.45 * math.sin(2 * phase) + 0.3 * math.sin(3 * phase)
            out[int(start * RATE) + i] += 0.16 * tone * math.sin(math.pi * u) ** 0.7
    return out


def horn():
    out = silence(2.4)
    for i in range(len(out)):
        t = i / RATE
        level = min(t / 0.15, 1.0, (2.4 - t) / 0.5)
        out[i] = 0.13 * level * sum(math.sin(2 * math.pi * 98 * k * t + k * k) / k ** 0.6 for k in (1, 2, 3, 4, 5))
    return out


def bell():
    out = silence(2.0)
    for i in range(len(out)):
        t = i / RATE
        out[i] = 0.22 * sum(a * math.sin(2 * math.pi * f * t) * math.exp(-t * d)
                            for f, a, d in ((620, 1.0, 2.0), (1244, 0.6, 3.0), (1740, 0.5, 4.2), (2610, 0.3, 6.0)))
    return out


def steps():
    """Two steps, as the Walk clip takes them in its second."""
    random, low, out = Random(9), 0.0, silence(1.0)
    for start in (0.05, 0.55):
        for i in range(int(0.12 * RATE)):
            u = i / (0.12 * RATE)
            low += (random.between(-1, 1) - low) * 0.22
            knock = math.sin(2 * math.pi * 95 * i / RATE) * math.exp(-u * 9)
            out[int(start * RATE) + i] += low * 0.5 * math.exp(-u * 7) + knock * 0.35
    return out


def voice(seed, pitch, syllables):
    """Speech without words: a buzz through two moving resonances."""
    random, out = Random(seed), []
    phase = 0.0
    for n in range(syllables):
        length = int(random.between(0.13, 0.24) * RATE)
        first, second = random.between(300, 750), random.between(900, 2100)
        height = pitch * random.between(0.9, 1.18) * (1.0 - 0.12 * n / syllables)
        state = [0.0, 0.0, 0.0, 0.0]
        for i in range(length):
            u = i / length
            phase += height * (1.0 + 0.05 * math.sin(math.pi * u)) / RATE
            pulse = (phase % 1.0) * 2 - 1
            value = 0.0
            for k, (f, q) in enumerate(((first, 0.06), (second, 0.08))):
                w = 2 * math.sin(math.pi * f / RATE)
                state[2 * k] += w * state[2 * k + 1]
                state[2 * k + 1] += w * (pulse * q * 4 - state[2 * k] - q * 4 * state[2 * k + 1])
                value += state[2 * k + 1]
            out.append(0.32 * value * math.sin(math.pi * u) ** 0.5)
        out += silence(random.between(0.02, 0.10))
    return out


NOTES = {"C": 261.63, "D": 293.66, "E": 329.63, "F": 349.23, "G": 392.0, "A": 440.0, "B": 493.88, "c": 523.25,
         "d": 587.33, "e": 659.25}


def theme():
    """A short tune for the opening, in three-four time."""
    beat = 0.42
    tune = [("E", 2), ("G", 1), ("A", 2), ("G", 1), ("c", 2), ("B", 1), ("G", 3), ("A", 2), ("c", 1), ("B", 2),
            ("G", 1), ("E", 2), ("D", 1), ("C", 3)]
    chords = ("CEG", "FAc", "CEG", "GBd", "FAc", "GBd", "CEG", "CEG")
    total = sum(length for _, length in tune) * beat + 1.0
    out = silence(total)

    def play(frequency, start, seconds, level, attack):
        first, count = int(start * RATE), int(seconds * RATE)
        for i in range(min(count, len(out) - first)):
            t = i / RATE
            shape = min(t / attack, 1.0, (seconds - t) / 0.12) * math.exp(-t * 0.7)
            tremble = 1.0 + 0.004 * math.sin(2 * math.pi * 5.5 * t)
            w = 2 * math.pi * frequency * tremble * t
            out[first + i] += level * shape * (math.sin(w) + 0.45 * math.sin(2 * w + 0.3) + 0.22 * math.sin(3 * w))

    at = 0.0
    for name, length in tune:
        play(NOTES[name], at, length * beat + 0.1, 0.20, 0.03)
        at += length * beat
    for bar, chord in enumerate(chords):
        play(NOTES[chord[0]] / 2, bar * 3 * beat, beat * 1.2, 0.15, 0.01)
        for step in (1, 2):
            for name in chord:
                play(NOTES[name], (bar * 3 + step) * beat, beat * 0.6, 0.05, 0.01)
    return out


MAKERS = {"surf": surf, "gull": gull, "horn": horn, "bell": bell, "steps": steps, "theme": theme,
          "sailor_hello": lambda: voice(21, 128, 9), "master_reply": lambda: voice(33, 92, 11)}
