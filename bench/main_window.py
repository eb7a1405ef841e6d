"""Measures the main window from outside, against a program that shows an empty Qt Quick window.

main_window.py BUILD: the folder of the release build. Prints lines of the form that scripts/bench
reads. Both programs run under Xvfb with the software renderer, one after the other.
"""

import base64
import json
import pathlib
import plistlib
import re
import statistics
import subprocess
import sys
import tempfile
import time
import uuid

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "tests/support"))

import bundles  # noqa: E402
from desktop import Desktop, wait_for  # noqa: E402
from windows import Window  # noqa: E402

FRAME_ROUNDS = 10
MEMORY_ROUNDS = 3
IDLE_SECONDS = 60
# A program that waits may use a thousandth of one processor.
IDLE_SHARE = 0.001
LISTED = 20


def as_written(values):
    """Preferences in the form in which programs keep them."""
    return plistlib.dumps(values, fmt=plistlib.FMT_BINARY)


# The preferences of a person who has read the guide and blocks nothing yet.
NOTHING_LISTED = as_written({"hasCompletedOnboarding": True})


def saved_list():
    """The preferences of a person who blocks twenty applications."""
    icons = [icon(each.icon) for each in bundles.APPLICATIONS]
    records = [
        {
            "id": str(uuid.uuid5(uuid.NAMESPACE_OID, str(number))).upper(),
            "name": f"Application {number:02}",
            "bundleIdentifier": f"com.example.application{number}",
            "signingIdentifier": f"com.example.application{number}",
            "teamIdentifier": "ABCDE12345",
            "auxiliaryCodeIdentities": [
                {"signingIdentifier": f"com.example.application{number}.helper{each}",
                 "teamIdentifier": "ABCDE12345"}
                for each in range(5)
            ],
            "inspectionVersion": 5,
            "path": f"/Applications/Application {number:02}.app",
            "iconData": icons[number % len(icons)],
        }
        for number in range(LISTED)
    ]
    return as_written({
        "hasCompletedOnboarding": True,
        "protectionRequested": True,
        "blockedApplications": json.dumps(records).encode(),
    })


def observed():
    """What the filter has recorded of these applications."""
    now = time.time() - 978307200
    return as_written({"discoveredNetworkProcesses.v2": json.dumps([
        {
            "signingIdentifier": f"com.example.application{number % LISTED}.helper{number}",
            "executablePath": f"/Applications/Application {number % LISTED:02}.app/tool{number}",
            "firstSeenAt": now - 100, "lastSeenAt": now, "connectionCount": 1,
        }
        for number in range(500)
    ]).encode()})


def icon(name):
    drawing = pathlib.Path(bundles.__file__).parent / f"icons/{name}.svg"
    image = subprocess.run(
        ["rsvg-convert", "-w", "128", "-h", "128", drawing], stdout=subprocess.PIPE, check=True
    ).stdout
    return base64.b64encode(image).decode()


class Program:
    def __init__(self, desktop, path, title, preferences=None):
        self._desktop = desktop
        self._path = path
        self._title = title
        self._preferences = preferences

    def first_frame(self, probe):
        """Milliseconds from before the start of the process to its first frame."""
        with tempfile.TemporaryDirectory() as folder:
            stamp = pathlib.Path(folder) / "first-frame"
            environment = {"LD_PRELOAD": str(probe), "ZORVANE_FIRST_FRAME": str(stamp)}
            begin = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
            process = self._start(folder, environment)
            wait_for(lambda: stamp.exists() and stamp.read_text(), "the first frame")
            self._end(process)
            return (int(stamp.read_text()) - begin) / 1e6

    def memory(self):
        """Resident megabytes once the program has nothing to do."""
        with tempfile.TemporaryDirectory() as folder:
            process = self._start(folder, {})
            Window(self._title)
            wait_for(lambda: self._is_idle(process), "the program to be idle")
            rollup = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text()
            self._end(process)
            return int(re.search(r"Rss:\s+(\d+) kB", rollup).group(1)) / 1024

    def idle_time(self):
        """Milliseconds of processor time that it uses in IDLE_SECONDS in which nothing happens."""
        with tempfile.TemporaryDirectory() as folder:
            write_preferences(folder, "group.dev.kestrelworks.Zorvane", observed())
            process = self._start(folder, {})
            Window(self._title)
            wait_for(lambda: self._is_idle(process), "the program to be idle")
            before = processor_time(process)
            time.sleep(IDLE_SECONDS)
            used = processor_time(process) - before
            self._end(process)
            return used

    def _start(self, folder, environment):
        if self._preferences:
            write_preferences(folder, "dev.kestrelworks.Zorvane", self._preferences)
        return self._desktop.start(self._path, environment={
            "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software",
            "ZORVANE_SYSTEM_DIR": folder, **environment,
        })

    def _is_idle(self, process):
        """True after a second in which the program used next to no time."""
        before = processor_ticks(process)
        time.sleep(1)
        return processor_ticks(process) - before <= 1

    def _end(self, process):
        process.terminate()
        process.wait(10)


def write_preferences(folder, domain, content):
    file = pathlib.Path(folder) / f"preferences/{domain}.plist"
    file.parent.mkdir(exist_ok=True)
    file.write_bytes(content)


def processor_ticks(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])


def processor_time(process):
    """Milliseconds that all threads of the process have run, as the scheduler counts."""
    threads = pathlib.Path(f"/proc/{process.pid}/task").glob("*/schedstat")
    return sum(int(each.read_text().split()[0]) for each in threads) / 1e6


def in_turns(rounds, measured, reference):
    """The medians of two measures that are taken alternately."""
    values = [(measured(), reference()) for _ in range(rounds)]
    return tuple(statistics.median(column) for column in zip(*values))


def report(what, against, pair, unit, goal):
    print(what, against, f"{pair[0]:.4g}", f"{pair[1]:.4g}", unit, f"{goal:.2f}", sep="\t")


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    probe = build / "bench/libfirst_frame_probe.so"
    with Desktop() as desktop:
        program = build / "app/zorvane"
        fresh = Program(desktop, program, "Zorvane", NOTHING_LISTED)
        full = Program(desktop, program, "Zorvane", saved_list())
        empty = Program(desktop, build / "bench/empty_window", "Empty")
        full.memory(), empty.memory()
        for window, state in ((fresh, "nothing"), (full, f"{LISTED} applications")):
            frames = in_turns(
                FRAME_ROUNDS,
                lambda: window.first_frame(probe),
                lambda: empty.first_frame(probe),
            )
            report(f"first frame of the main window, cold process, {state} listed",
                   "an empty QQuickWindow", frames, "ms", 2.0)
        memory = in_turns(MEMORY_ROUNDS, full.memory, empty.memory)
        report(f"resident memory, idle, {LISTED} applications listed", "an empty QQuickWindow",
               memory, "MB", 1.7)
        report(f"processor time, idle, {IDLE_SECONDS} s, nothing new observed",
               "a thousandth of one", (full.idle_time(), IDLE_SECONDS * 1000 * IDLE_SHARE),
               "ms", 1.0)


if __name__ == "__main__":
    main()
