"""What the acceptance tests share: a desktop, the program on it, and a folder of bundles."""

import base64
import json
import os
import pathlib
import sys
import unittest
import uuid

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))

import bundles  # noqa: E402
from desktop import Desktop, wait_for  # noqa: E402
from file_manager import FileManager  # noqa: E402
from zorvane import Zorvane  # noqa: E402
import pointer  # noqa: E402


class AcceptanceTest(unittest.TestCase):
    """Each test starts the program, named by ZORVANE_PROGRAM, on an empty system of its own."""

    desktop = None

    def setUp(self):
        self.folder = self.desktop.new_folder() / "Applications"
        self.folder.mkdir()

    def start(self, **options):
        # Nothing shows its tool tip because the last test ended above it.
        pointer.move(0, 0)
        self.zorvane = Zorvane(self.desktop, os.environ["ZORVANE_PROGRAM"], **options)
        self.zorvane.window.place(700, 40)
        self.addCleanup(self.zorvane.close)
        self.addCleanup(self._show_what_happened)

    def open_file_manager(self):
        self.files = FileManager(self.desktop, self.folder)
        self.addCleanup(self.files.close)

    def build(self, *applications):
        for application in applications:
            bundles.build(application, self.folder)

    def remembered(self, *applications):
        """Builds bundles, and the preferences of a program that lists them; its protection is off."""
        self.build(*applications)
        records = [
            {"id": str(uuid.uuid4()), "name": each.name, "bundleIdentifier": each.identifier,
             "signingIdentifier": each.name, "path": str(self.folder / f"{each.name}.app")}
            for each in applications
        ]
        return {"blockedApplications": json.dumps(records).encode(), "protectionRequested": False}

    def drag(self, name):
        """Drags an item from the file manager onto the drop zone."""
        self.files.drag(name, self.zorvane.drop_zone())

    def wait_for_filter(self, enabled, *keys):
        """Waits until the filter is on or off with these identity keys."""
        wait_for(
            lambda: self.zorvane.filter_configuration().get("isEnabled") == enabled
            and self.zorvane.rules().get("blockedCodeIdentities") == list(keys),
            f"the filter to be {'on' if enabled else 'off'} with the keys {keys}",
        )

    def _show_what_happened(self):
        print(self.zorvane.log.read_text(), file=sys.stderr)
        print(self.zorvane.screen.describe(), file=sys.stderr)


def key(signing_identifier, team=""):
    """The text that stands for an identity in the filter's rules."""
    return ".".join(base64.b64encode(part.encode()).decode() for part in (team, signing_identifier))


def main():
    with Desktop() as AcceptanceTest.desktop:
        unittest.main(verbosity=2, warnings="ignore")
