"""What is played in the hosts, and the sound that goes in."""
from dataclasses import dataclass

import numpy as np

RATE, SECONDS, TEMPO = 48000, 4, 100


@dataclass(frozen=True)
class Move:
    """A parameter that jumps: its name, its largest value above 0, and (frame, share of it)."""

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
# At the end of a block of 1024; shares of the range that no rounding touches. One jump only: what
# lies between the first and the last point of a list Ardour takes up a block late.
SWELL = Move("Feedback 1", 160, ((0, 0.25), (47 * 1024, 0.5)))

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
