"""The CLAP file in a host of our own, build/bin/clap-player: 64 bits, events at their frames."""
import os
import subprocess

import numpy as np

from hosts.cases import TEMPO, write_raw_signal
from hosts.facts import quickest, seconds_told


class Clap:
    kind = "CLAP"

    def __init__(self, folder, plugins, player):
        folder.mkdir()
        self.folder = folder
        self.plugin = plugins / "Orvantesco.clap"
        self.player = player
        self.environment = dict(os.environ, XDG_DATA_HOME=str(folder / "data"))
        self.input = write_raw_signal(folder / "in.raw")
        self.state = folder / "saved.state"
        self.seconds = {}

    def play(self, *begin, move=None):
        """What the effect sounds like that begins with a state or a preset, and is moved."""
        out = self.folder / "out.raw"
        more = ["--moves", self.moves_file(move)] if move else []
        done = subprocess.run(
            [self.player, self.plugin, self.input, out, "--tempo", str(TEMPO), "--save", self.state,
             *more, *begin], env=self.environment, text=True, capture_output=True, timeout=60)
        if done.returncode != 0:
            raise SystemExit(done.stderr)
        self.seconds = quickest(self.seconds, seconds_told(done.stdout))
        return np.fromfile(out, dtype=np.float64).reshape(-1, 2)

    def moves_file(self, move):
        file = self.folder / "moves.csv"
        file.write_text("".join(f"{frame},{move.name},{share}\n" for frame, share in move.points))
        return file

    def saved_state(self):
        """What the plug-in was asked to save after it played."""
        return self.state.read_bytes()
