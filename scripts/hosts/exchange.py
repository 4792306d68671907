"""States that one format saved, on their way through a preset file into the others."""
from hosts.cases import CASES


class Exchange:
    """What each host saved at the end of the last case, as a state block and as a preset file."""

    def __init__(self, folder, program, hosts):
        self.program = program
        self.files = {}
        for host in hosts:
            label = f"state of {host.kind}"
            state = folder / f"{label}.state"
            state.write_bytes(host.saved_state())
            self.files[label] = state, program.preset_of(state, folder / f"{label}.txt")

    def presets_for(self, host):
        """Preset files by label, of every format but its own."""
        return {label: preset for label, (_, preset) in self.files.items()
                if not label.endswith(host.kind)}

    def states_for(self, host):
        """The same for a host that takes no file: state blocks made of the preset files."""
        return {label: self.program.state_of(preset, preset.with_suffix(".again")).read_bytes()
                for label, preset in self.presets_for(host).items()}

    def expected(self, label):
        """What the program makes of the state block itself."""
        return self.program.render(CASES[-1], state=self.files[label][0], moves=False)
