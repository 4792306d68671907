"""The preset files of a folder tree, and the page that lists them."""

import re
from dataclasses import dataclass
from pathlib import Path

DEFAULT_LEVEL_PERCENT = 75.0
FOLDER = re.compile(r"## (.+)")
ENTRY = re.compile(r"\| ([^|]+?) \| ([^|]+?) \|")


@dataclass(frozen=True)
class PresetFile:
    """One preset: its folder, its name, and where it lies."""

    folder: str
    name: str
    path: Path

    @property
    def title(self):
        return f"{self.folder}/{self.name}"

    @property
    def may_sound_for_ever(self):
        return "Endless" in self.name

    def value(self, key, default):
        """What the file sets a parameter to; KEY is its name without blanks."""
        for line in self.path.read_text().partition("EParams:")[2].splitlines():
            name, _, value = line.partition(" ")
            if name == key:
                return float(value)
        return default

    @property
    def dry_gain(self):
        """Linear gain of the untreated sound at the output."""
        return (self.value("DryLevel", DEFAULT_LEVEL_PERCENT) / 100.0
                * 10.0 ** (self.value("OutputLevel", 0.0) / 20.0))


def presets_in(root):
    """All presets below ROOT, FOLDER/NAME.txt, in the order of their titles."""
    found = [PresetFile(path.parent.name, path.stem, path) for path in Path(root).glob("*/*.txt")]
    return sorted(found, key=lambda preset: preset.title.upper())


def listed_in(page):
    """Titles and descriptions of a page with a heading for each folder and a table below it."""
    folder, listed = None, {}
    for line in Path(page).read_text().splitlines():
        if heading := FOLDER.fullmatch(line):
            folder = heading[1]
        elif (entry := ENTRY.fullmatch(line)) and folder and entry[1] not in ("preset", "---"):
            listed[f"{folder}/{entry[1]}"] = entry[2]
    return listed
