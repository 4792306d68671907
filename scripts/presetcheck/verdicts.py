"""What a preset must keep to."""

import itertools

import numpy

from presetcheck.listening import MUSIC, RATE, TAIL_SECONDS, decibels, distance

PEAK_LIMIT_DB = -1.0
QUIETEST_WET_DB = -14.0   # wet against dry energy: below it is hardly heard
LOUDEST_WET_DB = 12.0
TAIL_FALL_DB = 10.0       # from the first to the last second of the tail
SILENCE_DB = -60.0
SMALLEST_DISTANCE_DB = 5.0


def peak_db(samples):
    return float(20.0 * numpy.log10(max(numpy.abs(samples).max(), 1e-6)))


def second_db(samples, start):
    return float(decibels((samples[start:start + RATE] ** 2).mean(), -120.0))


def wet_share_db(heard, sounds):
    """Energy of what the preset adds against that of a sound at the default dry level."""
    shares = [decibels((heard.wet[sound] ** 2).sum() / (0.5625 * (sounds[sound] ** 2).sum()), -90.0)
              for sound in MUSIC]
    return float(numpy.mean(shares))


def level_faults(heard, sounds):
    for sound in ("drums", "pink"):
        peak = peak_db(heard.output[sound])
        if not peak <= PEAK_LIMIT_DB:
            yield f"{sound} peak at {peak:.1f} dBFS, above {PEAK_LIMIT_DB:g}"
    share = wet_share_db(heard, sounds)
    if not QUIETEST_WET_DB <= share <= LOUDEST_WET_DB:
        yield f"what it adds has {share:.1f} dB of the dry sound, not " \
              f"{QUIETEST_WET_DB:g} to {LOUDEST_WET_DB:g}"


def tail_faults(heard):
    for sound in MUSIC:
        samples = heard.output[sound]
        first = second_db(samples, len(samples) - TAIL_SECONDS * RATE)
        last = second_db(samples, len(samples) - RATE)
        if last > max(first - TAIL_FALL_DB, SILENCE_DB):
            yield f"{sound} still sound at {last:.0f} dB after {TAIL_SECONDS} s, {first:.0f} at first"


def faults_of(preset, heard, sounds):
    """One line for each thing that is wrong with a preset."""
    if not all(numpy.isfinite(samples).all() for samples in heard.output.values()):
        return ["some samples are no numbers"]
    faults = list(level_faults(heard, sounds))
    if not preset.may_sound_for_ever:
        faults += tail_faults(heard)
    return faults


def closest_pairs(heard):
    """All pairs of titles with their distance, the most alike first."""
    pairs = [(distance(heard[one], heard[other]), one, other)
             for one, other in itertools.combinations(heard, 2)]
    return sorted(pairs)


def list_faults(presets, listed):
    """Presets that the page leaves out, and entries that no file stands for."""
    titles = {preset.title for preset in presets}
    return ([f"{title}: is not on the page" for title in sorted(titles - listed.keys())]
            + [f"{title}: is on the page, but no file" for title in sorted(listed.keys() - titles)])
