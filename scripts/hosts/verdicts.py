"""Compares sounds and says what came of it."""
import os

import numpy as np

from hosts.cases import RATE

# Nothing that hosts are asked to do here makes up for the latency of 32 frames and 1 ms, which the
# program has taken off.
LATENCY = 32 + RATE // 1000
LIMIT_DB = -100
HEARD_DB = -60
LONGEST_SHIFT = 400  # frames, more than any latency


def aligned(got, expected):
    """How late a sound is, in frames, and both where they overlap then."""
    def left(shift):
        return np.mean((got[shift:] - expected[:len(got) - shift]) ** 2)

    shift = min(range(LONGEST_SHIFT), key=left)
    return shift, got[shift:], expected[:len(got) - shift]


def difference(got, expected):
    """dB of what is left where two sounds are laid upon each other, and the best shift."""
    shift, late, early = aligned(got, expected)
    return 10 * np.log10(np.mean((late - early) ** 2) / np.mean(early ** 2) + 1e-30), shift


class Verdicts:
    """Prints every comparison and remembers whether all were good."""

    good = True

    def take(self, good, what, figures):
        self.good = self.good and bool(good)
        self.say("good" if good else "BAD", what, figures)

    def say(self, verdict, what, figures):
        print(f"{verdict:4}  {what:55} {figures}", flush=True)

    def alike(self, what, got, expected):
        db, shift = difference(got, expected)
        self.take(db < LIMIT_DB and shift == LATENCY, what, f"{db:7.1f} dB, {shift} frames late")

    def identical(self, what, got, expected):
        shift, late, early = aligned(got, expected)
        unlike = np.count_nonzero(late != early)
        self.take(unlike == 0 and shift == LATENCY, what, f"{unlike:7d} of {early.size} numbers differ, "
                                     f"{shift} frames late")

    def heard(self, what, with_it, without):
        """What happens during a case has to be heard, or playing it alike proves nothing."""
        db = difference(with_it, without)[0]
        self.take(db > HEARD_DB, what, f"{db:7.1f} dB")

    def quick(self, what, seconds, limit):
        """Where more programs wait than there are processors, a long time is no verdict."""
        figures = f"{seconds * 1000:7.0f} ms"
        waiting = os.getloadavg()[0]
        if seconds >= limit and waiting > os.cpu_count():
            self.say("busy", what, f"{figures}, not judged while {waiting:.0f} programs run")
        else:
            self.take(seconds < limit, what, figures)

    def shown(self, what, seconds):
        self.say("", what, f"{seconds * 1000:7.0f} ms")
