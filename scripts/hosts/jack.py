"""The program for JACK, under a server of its own without a sound card."""
import os
import subprocess
import time

import numpy as np

from hosts.cases import RATE, TEMPO, write_raw_signal

PERIOD = 256
CLIENT, PORTS = "Orvantesco", 5


def end(process):
    process.terminate()
    try:
        process.wait(timeout=5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Jack:
    """A server for as long as the block of `with` lasts."""

    kind = "JACK"

    def __init__(self, folder, plugins, player):
        folder.mkdir()
        self.folder = folder
        self.program = plugins / "orvantesco-jack"
        self.player = player
        self.name = f"orvantesco-check-{os.getpid()}"
        self.environment = dict(os.environ, JACK_DEFAULT_SERVER=self.name,
                                JACK_NO_AUDIO_RESERVATION="1", XDG_DATA_HOME=str(folder / "data"))
        self.input = write_raw_signal(folder / "in.raw")

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

    def start(self, *begin):
        return subprocess.Popen([self.program, *begin], env=self.environment,
                                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def play(self, *begin):
        """What the effect sounds like that begins with a state or a preset."""
        out = self.folder / "out.raw"
        effect = self.start(*begin)
        try:
            subprocess.run([self.player, self.name, CLIENT, str(TEMPO), self.input, out],
                           check=True, timeout=60)
        finally:
            end(effect)
        return np.fromfile(out, dtype=np.float32).reshape(-1, 2)

    def load_seconds(self):
        """The time from the start of the program until its ports are there."""
        began = time.monotonic()
        effect = self.start()
        try:
            while self.ports() < PORTS:
                if time.monotonic() > began + 10:
                    raise SystemExit("the JACK program does not start")
            return time.monotonic() - began
        finally:
            end(effect)

    def ports(self):
        listed = subprocess.run(["jack_lsp", "-s", self.name, CLIENT], env=self.environment,
                                text=True, capture_output=True, timeout=20)
        return listed.stdout.count(CLIENT + ":")
