"""Ardour without a screen, in a home of its own."""
import base64
import os
import pathlib
import re
import shutil
import struct
import subprocess
import time

import soundfile as sf

from hosts.cases import RATE, SECONDS, TEMPO
from hosts.facts import BUNDLES, RUNS, quickest, seconds_told

HERE = pathlib.Path(__file__).resolve().parent
ARDOUR = pathlib.Path("/usr/lib/ardour7")
ARDOUR_DATA = pathlib.Path("/usr/share/ardour7")
URI = "urn:qlm-works:orvantesco"
EXPORT_PRESET = "0b1d9b3c-6a7e-4c53-9a3e-5d3f0f6f8b11"
FLOAT_FORMAT = "20b4ab09-6452-4cb3-bd66-b921cdbd2942"
PREFIXES = "".join(f"@prefix {name}: <{uri}> .\n" for name, uri in (
    ("lv2", "http://lv2plug.in/ns/lv2core#"),
    ("pset", "http://lv2plug.in/ns/ext/presets#"),
    ("rdfs", "http://www.w3.org/2000/01/rdf-schema#"),
    ("state", "http://lv2plug.in/ns/ext/state#")))


def lua(value):
    if isinstance(value, dict):
        return "{" + ", ".join(f"{k} = {lua(v)}" for k, v in value.items()) + "}"
    if isinstance(value, (list, tuple)):
        return "{" + ", ".join(map(lua, value)) + "}"
    if isinstance(value, bool):
        return str(value).lower()
    return f'"{value}"' if isinstance(value, str) else str(value)


def plan_of(case):
    plan = {**bare_plan(case.label), "side": case.sideChain}
    if case.move:
        plan["move"] = {"name": case.move.name, "points": case.move.points}
    return plan


def bare_plan(label, file=None):
    """Of a preset that is only played, into a file of another name if asked."""
    return {"name": label, "file": file or label, "side": False}


class Ardour:
    """Plays one format of the plug-in. `offer` gives it states as presets."""

    def __init__(self, folder, plugins, kind):
        self.folder = folder
        self.kind = kind
        self.home = folder / "home"
        self.out = folder / "out"
        self.out.mkdir(parents=True)
        self.seconds = {}
        config = self.home / ".config/ardour7"
        (config / "export").mkdir(parents=True)
        (config / "scripts").mkdir()
        shutil.copy(HERE / "signal.lua", config / "scripts")
        preset = (ARDOUR_DATA / "export/wav.preset").read_text()
        ids = iter((EXPORT_PRESET, FLOAT_FORMAT))
        preset = re.sub(r'(<ExportPreset id=|<ExportFormat id=)"[^"]*"',
                        lambda m: f'{m[1]}"{next(ids)}"', preset)
        (config / "export/float.preset").write_text(preset)
        self.environment = dict(
            os.environ, HOME=str(self.home), XDG_DATA_HOME=str(self.home / ".local/share"),
            XDG_CONFIG_HOME=str(self.home / ".config"), XDG_CACHE_HOME=str(self.home / ".cache"),
            LV2_PATH=str(self.home / ".lv2"), LD_LIBRARY_PATH=str(ARDOUR),
            ARDOUR_DLL_PATH=str(ARDOUR), ARDOUR_DATA_PATH=str(ARDOUR_DATA),
            ARDOUR_CONFIG_PATH="/etc/ardour7")
        self.install(plugins)

    def run(self, **more):
        plan = {"exportPreset": EXPORT_PRESET, "folder": str(self.out), "plugin": self.plugin,
                "kind": self.kind, "session": str(self.folder / "session"),
                "frames": SECONDS * RATE, "rate": RATE, "tempo": TEMPO, **more}
        script = self.folder / "plan.lua"
        script.write_text(f"PLAN = {lua(plan)}\n" + (HERE / "session.lua").read_text())
        done = subprocess.run([ARDOUR / "luasession", script], env=self.environment, text=True,
                              capture_output=True, timeout=300)
        if done.returncode != 0 or "\nError:" in "\n" + done.stdout:
            raise SystemExit(done.stdout + done.stderr)
        self.seconds = quickest(self.seconds, seconds_told(done.stdout))

    def play(self, cases, shipped):
        """Cases, and a factory preset in front of them, as the host lists it."""
        plans = [bare_plan(self.listed(shipped), "shipped"), *map(plan_of, cases)]
        self.run(cases=plans)

    def reload(self, labels=()):
        """Plays the session as it was saved, and states with it."""
        self.run(reload="again", cases=[bare_plan(label) for label in labels])

    def sound(self, name):
        return sf.read(self.out / (name + ".wav"))[0]


class Lv2InArdour(Ardour):
    plugin = URI

    def __init__(self, folder, plugins):
        super().__init__(folder, plugins, "LV2")

    def install(self, plugins):
        for name in BUNDLES:
            shutil.copytree(plugins / name, self.home / ".lv2" / name)

    def listed(self, preset):
        return preset.replace("/", ": ")

    def offer(self, states):
        """States by label, as presets of the plug-in."""
        bundle = self.home / ".lv2/Check.lv2"
        bundle.mkdir(exist_ok=True)
        file = bundle / "manifest.ttl"
        manifest = file.read_text() if file.exists() else PREFIXES
        for label, state in states.items():
            number = len(list(bundle.iterdir()))
            about = (f'<urn:check:{number}> a pset:Preset ; lv2:appliesTo <{URI}> ;'
                     f' rdfs:label "{label}"')
            manifest += f"{about} ; rdfs:seeAlso <{number}.ttl> .\n"
            text = base64.b64encode(state).decode()
            (bundle / f"{number}.ttl").write_text(
                f'{PREFIXES}{about} ; state:state [ <{URI}#state> "{text}" ] .\n')
        file.write_text(manifest)

    def saved_state(self):
        """The state in the session, which is the only long text in its turtle."""
        for file in (self.folder / "session").rglob("*.ttl"):
            if found := re.search(r'"([A-Za-z0-9+/=]{1000,})"', file.read_text()):
                return base64.b64decode(found[1])
        raise SystemExit("no state in the session of the LV2")


class Vst3InArdour(Ardour):
    plugin = "Orvantesco"

    def __init__(self, folder, plugins):
        super().__init__(folder, plugins, "VST3")

    def install(self, plugins):
        bundle = self.home / ".vst3/Orvantesco.vst3"
        shutil.copytree(plugins / "Orvantesco.vst3", bundle)
        self.presets = self.home / ".vst3/presets/qlm-works/Orvantesco"
        shutil.copytree(plugins / "Orvantesco.vst3-presets", self.presets)
        self.seconds = quickest(*(self.scan(bundle) for _ in range(RUNS)))
        found = list((self.home / ".cache/ardour7").rglob("*.v3i"))
        if not found:
            raise SystemExit("Ardour's scanner finds no plug-in")
        self.classId = re.search(r'uid="([0-9A-F]{32})"', found[0].read_text())[1]

    def listed(self, preset):
        return preset.replace("/", " - ")

    def scan(self, bundle):
        began = time.monotonic()
        subprocess.run([ARDOUR / "ardour-vst3-scanner", "-f", bundle], env=self.environment,
                       capture_output=True, timeout=60)
        return {"scanned": time.monotonic() - began}

    def offer(self, states):
        """States by label, as files of presets: a header, what the plug-in reads, and an index."""
        for label, state in states.items():
            words = (b"__dpf_state_begin__", b"state", base64.b64encode(state),
                     b"__dpf_state_end__")
            content = b"".join(word + b"\0" for word in words) + b"\xfe"
            header = 4 + 4 + 32 + 8
            (self.presets / f"{label}.vstpreset").write_bytes(
                b"VST3" + struct.pack("<i", 1) + self.classId.encode()
                + struct.pack("<q", header + len(content)) + content
                + b"List" + struct.pack("<i", 1)
                + b"Comp" + struct.pack("<qq", header, len(content)))

    def saved_state(self):
        """The state in the session: Ardour keeps a file of a preset in there."""
        session = (self.folder / "session/check.ardour").read_text()
        chunk = base64.b64decode(re.search("<chunk>([^<]+)</chunk>", session)[1])
        return base64.b64decode(chunk.split(b"__dpf_state_begin__\0state\0")[1].split(b"\0")[0])
