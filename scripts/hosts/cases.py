"""What is played in the hosts, and the sound that goes in."""
from dataclasses import dataclass

import numpy as np

# A beat of 32768 frames: what hosts count in (1920 ticks of a beat in Ardour, binary fractions in
# CLAP) hits every block of 1024 without rounding.
RATE, SECONDS, TEMPO = 48000, 4, 87.890625
BLOCK = 1024


@dataclass(frozen=True)
class Move:
    """A parameter that jumps: its name, its largest value (the least is 0), and (frame, share)."""

    name: str
    most: float
    points: tuple


@dataclass(frozen=True)
class Case:
    """A preset, what is set on top of it, and what happens while it plays."""

    preset: str
    settings: tuple = ()
    sideChain: bool = False
    move: Move | None = None

    @property
    def label(self):
        return self.preset.replace("/", " ")


# A second voice that ducks the echoes.
DUCKED = ("ENV1 On=ON", "ENV1 Source=SIDECHAIN", "Level ModSource1=ENV1",
          "Level ModDepth 1=-25")
# Where blocks begin and in the midst of echoes, so that a point that comes late is heard; shares of
# the range that no rounding touches.
SWELL = Move("Feedback 1", 160, tuple((block * BLOCK, share) for block, share in (
    (0, 0.25), (28, 0.5), (52, 0.125), (75, 0.625), (98, 0.25), (122, 0.5))))

# What sounds alike whenever it begins: neither a modulator that runs free does, nor do grains.
CASES = (
    Case("Filter Delays/Telephone Echo"),
    Case("Multi Slot/Matrix Rain"),
    Case("Multi Slot/Swinging Twins"),
    Case("Rhythm Taps/Swung Ping Pong"),
    Case("Echo/Compressed Repeats", settings=DUCKED, sideChain=True),
    Case("Master FX Only/Only Loud And Limited"),
    Case("Rhythm Taps/Climbing Filter Taps"),
    Case("Echo/Tape Dotted Eighth", move=SWELL),
)

# Whose main modulator stands still as it is shipped.
SHIPPED = "Echo/Bright Digital Eighths"


def bursts(channel, sounding):
    """What scripts/hosts/signal.lua plays on a channel, counted from 1."""
    n = np.arange(SECONDS * RATE)
    x = (n * 16807 + channel * 7919) % 65536 / 131072 - 0.25
    x[n % 24000 >= sounding] = 0
    return x


def main_signal():
    return np.stack([bursts(1, 9000), bursts(2, 9000)], 1)


def side_signal():
    return bursts(1, 15000)


def write_raw_signal(file):
    """All three voices, frame by frame, for players without a reader of audio files."""
    np.column_stack([main_signal(), side_signal()]).astype(np.float32).tofile(file)
    return file
