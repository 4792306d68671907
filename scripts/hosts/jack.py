"""The program for JACK, under a server of its own without a sound card."""
import os
import subprocess

import numpy as np

from hosts.cases import RATE, TEMPO, main_signal, side_signal

PERIOD = 256


def end(process):
    process.terminate()
    try:
        process.wait(timeout=5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Jack:
    """A server for as long as the block of `with` lasts."""

    def __init__(self, folder, plugins, player):
        self.folder = folder
        self.program = plugins / "orvantesco-jack"
        self.player = player
        self.name = f"orvantesco-check-{os.getpid()}"
        self.environment = dict(os.environ, JACK_DEFAULT_SERVER=self.name,
                                JACK_NO_AUDIO_RESERVATION="1", XDG_DATA_HOME=str(folder / "data"))
        self.input = folder / "in.raw"
        sound = np.column_stack([main_signal(), side_signal()])
        sound.astype(np.float32).tofile(self.input)

    def __enter__(self):
        with open(self.folder / "jackd.log", "w", encoding="utf-8") as log:
            self.server = subprocess.Popen(
                ["jackd", "-n", self.name, "--no-realtime", "-d", "dummy", "-r", str(RATE),
                 "-p", str(PERIOD)], env=self.environment, stdout=log, stderr=log)
        waiting = subprocess.run(["jack_wait", "--server", self.name, "-w", "-t", "10"],
                                 env=self.environment, capture_output=True, timeout=20)
        if waiting.returncode != 0:
            end(self.server)
            raise SystemExit((self.folder / "jackd.log").read_text())
        return self

    def __exit__(self, *_):
        end(self.server)

    def play(self, *begin):
        """What the effect sounds like that begins with a state or a preset."""
        out = self.folder / "out.raw"
        effect = subprocess.Popen([self.program, *begin], env=self.environment,
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            subprocess.run([self.player, self.name, "Orvantesco", str(TEMPO), self.input, out],
                           check=True, timeout=60)
        finally:
            end(effect)
        return np.fromfile(out, dtype=np.float32).reshape(-1, 2)
