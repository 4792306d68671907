"""The command line, which the formats are compared with."""
import subprocess

import soundfile as sf

from hosts.cases import BLOCK, RATE, TEMPO, main_signal, side_signal


class Program:
    """Writes states and renders cases into a folder."""

    def __init__(self, folder, program):
        self.folder = folder
        self.program = program
        self.input = folder / "in.wav"
        self.side = folder / "side.wav"
        sf.write(self.input, main_signal(), RATE, subtype="FLOAT")
        sf.write(self.side, side_signal(), RATE, subtype="FLOAT")

    def state_file(self, case):
        return self.folder / (case.label + ".state")

    def write_state(self, case):
        """A host's state block. The main modulator wanders, so it stands still."""
        wishes = [word for wish in (*case.settings, "Main ModDepth=0") for word in ("--set", wish)]
        subprocess.run([self.program, "state", "save", "-o", self.state_file(case), "--preset",
                        case.preset, *wishes], check=True, stdout=subprocess.DEVNULL)

    def render(self, case, state=None, moves=True, side=True):
        """The sound of a case, of its own state or another's; without what happens, if asked."""
        file = self.folder / "render.wav"
        more = []
        if case.sideChain and side:
            more += ["--sidechain", self.side]
        if case.move and moves:
            more += ["--automation", self.automation(case)]
        subprocess.run([self.program, "render", self.input, "-o", file, "--state",
                        state or self.state_file(case), "--tempo", str(TEMPO), "--format", "double",
                        "--tail", "0", "--block", str(BLOCK), "--quiet", *more], check=True)
        return sf.read(file)[0]

    def automation(self, case):
        file = self.folder / "moves.csv"
        file.write_text("".join(f"{frame / RATE!r},{case.move.name},{share * case.move.most}\n"
                                for frame, share in case.move.points))
        return file

    def preset_of(self, state, file):
        """A preset file with the settings of a state."""
        return self.convert("preset", file, "--state", state)

    def state_of(self, preset, file):
        """A state block with the settings of a preset file."""
        return self.convert("state", file, "--preset", preset)

    def convert(self, kind, file, *source):
        subprocess.run([self.program, kind, "save", "-o", file, *source], check=True,
                       stdout=subprocess.DEVNULL)
        return file
