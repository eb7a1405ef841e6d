"""The real program on a private desktop, with a system folder of its own."""

import json
import plistlib
import time

from accessibility import PROGRAM_ENVIRONMENT, Program
from desktop import wait_for
from windows import Window
import pointer

_PREFERENCES = "preferences/dev.kestrelworks.Zorvane.plist"
_SHARED = "preferences/group.dev.kestrelworks.Zorvane.plist"
# Dates are stored as seconds since the first day of 2001.
_REFERENCE = 978307200


class Zorvane:
    """Starts build/.../zorvane, whose path is program, and shows what it does from outside."""

    def __init__(
        self, desktop, program, preferences=None, system=None, scale=1, environment=None
    ):
        self.folder = desktop.new_folder()
        self.log = self.folder / "zorvane.log"
        self._desktop = desktop
        self._write_preferences({"hasCompletedOnboarding": True, **(preferences or {})})
        self.change_system(**(system or {}))
        surroundings = {
            **PROGRAM_ENVIRONMENT,
            "QT_QUICK_BACKEND": "software",
            "QT_SCALE_FACTOR": str(scale),
            "ZORVANE_SYSTEM_DIR": str(self.folder),
            **(environment or {}),
        }
        self.process = desktop.start(program, environment=surroundings, log=self.log)
        self.window = Window("Zorvane")
        self.screen = Program("Zorvane", scale=scale)

    def change_system(self, **behaviour):
        """Replaces what the simulated system is told to do; the program may be running."""
        _replace(self.folder / "system.json", json.dumps(behaviour).encode())

    def observe(self, *processes):
        """Replaces what the filter extension has recorded; each process is its signing identifier
        and the path of its program."""
        now = time.time() - _REFERENCE
        records = [
            {"signingIdentifier": identifier, "executablePath": str(path), "connectionCount": 1,
             "firstSeenAt": now, "lastSeenAt": now}
            for identifier, path in processes
        ]
        _replace(self.folder / _SHARED, plistlib.dumps(
            {"discoveredNetworkProcesses.v2": json.dumps(records).encode()}
        ))

    def preferences(self):
        file = self.folder / _PREFERENCES
        return plistlib.loads(file.read_bytes()) if file.exists() else {}

    def blocked_applications(self):
        """The saved list, as decoded JSON."""
        return json.loads(self.preferences().get("blockedApplications", b"[]"))

    def filter_configuration(self):
        """What the filter extension would read; empty before the first save."""
        file = self.folder / "filter-configuration.json"
        return json.loads(file.read_bytes()) if file.exists() else {}

    def rules(self):
        return self.filter_configuration().get("providerConfiguration", {}).get(
            "vendorConfiguration", {}
        )

    def wait_for_blocked(self, *names, seconds=30):
        """The saved list, once it holds exactly these applications."""
        wait_for(
            lambda: [each["name"] for each in self.blocked_applications()] == list(names),
            f"the list to be {list(names)}", seconds,
        )
        return self.blocked_applications()

    def drop_zone(self):
        """The middle of the drop zone, in pixels of the screen."""
        return self.screen.spot("Drop zone for an application")

    def click(self, name, role=None):
        pointer.click(*self.screen.spot(name, role))

    def close(self):
        self._desktop.stop(self.process)

    def _write_preferences(self, values):
        _replace(self.folder / _PREFERENCES, plistlib.dumps(values))


def _replace(file, content):
    file.parent.mkdir(parents=True, exist_ok=True)
    fresh = file.with_name(f"{file.name}.{time.monotonic_ns()}")
    fresh.write_bytes(content)
    fresh.replace(file)
