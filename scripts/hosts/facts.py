"""What hosts meet before anything sounds: how long a look and a load take, turtle, symbols."""
import os
import pathlib
import re
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
SCAN_SECONDS, LOAD_SECONDS = 0.1, 0.3
RUNS = 5
BUNDLES = "Orvantesco.lv2", "Orvantesco-presets.lv2"

ENTRIES = {"Orvantesco.clap": ["clap_entry"],
           "Orvantesco.vst3/Contents/*/Orvantesco.so": ["GetPluginFactory", "ModuleEntry",
                                                        "ModuleExit"],
           "Orvantesco.lv2/Orvantesco_dsp.so": ["lv2_descriptor", "lv2_generate_ttl"]}


def seconds_told(text):
    """What a program says of its steps, each in a line "STEP in N us", by step."""
    return {step: int(us) / 1e6 for step, us in re.findall(r"^(\w+) in (\d+) us$", text, re.M)}


def quickest(*runs):
    """A machine has other work as well: the least that each step took."""
    steps = {step for run in runs for step in run}
    return {step: min(run[step] for run in runs if step in run) for step in steps}


def lv2_seconds(home):
    """The steps of a host that reads the turtle and makes an instance."""
    environment = dict(os.environ, LV2_PATH=str(home / ".lv2"),
                       XDG_DATA_HOME=str(home / ".local/share"))
    runs = [subprocess.run(["/usr/bin/python3", HERE / "lv2_load.py"], env=environment, check=True,
                           text=True, stdout=subprocess.PIPE, timeout=60) for _ in range(RUNS)]
    return quickest(*(seconds_told(run.stdout) for run in runs))


def lv2_errors(plugins):
    """Whether the turtle is valid, that of the presets too, and what the tool says in the end."""
    files = sorted(file for bundle in BUNDLES for file in (plugins / bundle).glob("*.ttl"))
    done = subprocess.run(["lv2_validate", *files], text=True, capture_output=True, timeout=120)
    said = done.stdout + done.stderr
    # Of a file that it cannot read the tool says so, and counts no error.
    fault = re.search("^(error:|Found [^0]).*", said, re.M)
    end = re.search("^Found .*", said, re.M)
    return end is not None and fault is None, (fault or end or [said.strip()])[0]


def exports(plugins, pattern):
    """Whether a library shows its entry points and no more, and what the look at it says."""
    library, = plugins.glob(pattern)
    done = subprocess.run([HERE.parent / "check-exports", library, *ENTRIES[pattern]], text=True,
                          capture_output=True, timeout=60)
    return done.returncode == 0, done.stdout.strip()
