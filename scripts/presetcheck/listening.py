"""Renders presets, and measures what is heard."""

import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path

import numpy
import soundfile

RATE = 48000
TEMPO = 96
TAIL_SECONDS = 6
MUSIC = ("drums", "voice", "chord")
SOUNDS = (*MUSIC, "pink")

FRAME = RATE // 20          # an envelope has twenty values a second
BAND_FLOOR_DB = -75.0       # what is below is not heard beside the dry sound
FRAME_FLOOR_DB = -60.0
BAND_CENTRES_HZ = 1000.0 * 2.0 ** (numpy.arange(-14, 13) / 3.0)  # 39 Hz to 16 kHz


def decibels(power, floor):
    return 10.0 * numpy.log10(numpy.maximum(power, 10.0 ** (floor / 10.0)))


@dataclass
class Heard:
    """What one preset does to the sounds: WET is the output without the dry part."""

    output: dict
    wet: dict
    bands: numpy.ndarray      # dB, sound by channel by third octave
    envelopes: numpy.ndarray  # dB, sound by channel by frame


def sounds_in(folder):
    return {sound: soundfile.read(Path(folder, f"{sound}.wav"), always_2d=True)[0]
            for sound in SOUNDS}


def third_octaves(samples):
    """Power in each third octave: one value for each band and channel."""
    power = numpy.abs(numpy.fft.rfft(samples, axis=0)) ** 2 / len(samples) ** 2 * 2.0
    hertz = numpy.fft.rfftfreq(len(samples), 1.0 / RATE)
    edges = numpy.searchsorted(hertz, [centre * 2.0 ** (side / 6.0)
                                       for centre in BAND_CENTRES_HZ for side in (-1, 1)])
    sums = numpy.concatenate([numpy.zeros((1, 2)), numpy.cumsum(power, axis=0)])
    return (sums[edges[1::2]] - sums[edges[::2]]).T


def envelope(samples):
    """Mean power of each frame and channel."""
    whole = samples[: len(samples) // FRAME * FRAME]
    return (whole.reshape(-1, FRAME, 2) ** 2).mean(axis=1).T


def render(program, preset, folder):
    """The output of every sound of FOLDER through the preset."""
    with tempfile.TemporaryDirectory() as work:
        subprocess.run(
            [program, "render", *[str(Path(folder, f"{sound}.wav")) for sound in SOUNDS],
             "--output-dir", work, "--preset", str(preset.path), "--tempo", str(TEMPO),
             "--tail", str(TAIL_SECONDS), "--jobs", "1", "--format", "float", "--quiet"],
            check=True, stdout=subprocess.DEVNULL)
        return {sound: soundfile.read(Path(work, f"{sound}.wav"), always_2d=True)[0]
                for sound in SOUNDS}


def without_dry(output, dry, gain):
    wet = output.copy()
    wet[: len(dry)] -= dry * gain
    return wet


def listen(program, preset, folder, sounds):
    output = render(program, preset, folder)
    wet = {sound: without_dry(output[sound], sounds[sound], preset.dry_gain) for sound in SOUNDS}
    frames = min(len(wet[sound]) for sound in MUSIC) // FRAME
    return Heard(
        output, wet,
        numpy.array([decibels(third_octaves(wet[sound]), BAND_FLOOR_DB) for sound in MUSIC]),
        numpy.array([decibels(envelope(wet[sound])[:, :frames], FRAME_FLOOR_DB)
                     for sound in MUSIC]))


def distance(one, other):
    """How far apart two presets sound, in dB: difference of spectra plus that of envelopes, RMS."""
    return sum(float(numpy.sqrt(((a - b) ** 2).mean()))
               for a, b in ((one.bands, other.bands), (one.envelopes, other.envelopes)))
