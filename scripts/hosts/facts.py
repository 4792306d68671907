"""What hosts meet before anything sounds: the time that a look at a bundle takes, and its turtle."""
import os
import subprocess
import time

SCAN_SECONDS, LOAD_SECONDS = 0.1, 0.3


def lv2_scan_seconds(lv2_path):
    """The time in which everything that the turtle of the plug-in says is read."""
    environment = dict(os.environ, LV2_PATH=str(lv2_path))
    began = time.monotonic()
    subprocess.run(["lv2info", "urn:qlm-works:orvantesco"], env=environment, check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60)
    return time.monotonic() - began


def lv2_errors(bundle):
    """Whether the turtle is valid, and the last line that the tool says."""
    done = subprocess.run(["lv2_validate", *sorted(bundle.glob("*.ttl"))], text=True,
                          capture_output=True, timeout=120)
    lines = (done.stdout + done.stderr).strip().splitlines()
    return done.returncode == 0, lines[-1] if lines else ""
