"""The unattended check's announcement on a real notification service, answered by a real click."""

import datetime
import json
import os
import plistlib
import sys
import unittest.mock

from acceptance import AcceptanceTest, main, wait_for
from desktop import output
from windows import Window, is_open, minimize

PAGE = "https://kestrelworks.dev/zorvane"
MANIFEST = json.dumps({"version": "99.0", "downloadURL": PAGE, "releaseNotes": "All <b>new</b>."})
RELEASE = {
    "updates.cachedManifest": MANIFEST.encode(),
    # Of this moment, so that the agent does not go to the network.
    "updates.lastCheckedAt": datetime.datetime.utcnow(),
}
PREFERENCES = "preferences/dev.kestrelworks.Zorvane.plist"


class UpdateAgent(AcceptanceTest):
    def setUp(self):
        super().setUp()
        place = self.desktop.new_folder()
        self.system = place / "system"
        self.log = place / "agent.log"
        self.opened = place / "opened"
        self.opened.touch()
        self.note_what_is_opened(place / "bin")
        settings = place / "dunstrc"
        settings.write_text("[urgency_normal]\ntimeout = 0\n")
        service = self.desktop.start("dunst", "-config", settings)
        self.addCleanup(self.desktop.stop, service)
        wait_for(lambda: self.displayed() == "0", "the notification service")

    def note_what_is_opened(self, folder):
        """Puts an "xdg-open" on the path that only notes how it is called."""
        folder.mkdir()
        program = folder / "xdg-open"
        program.write_text(f'#!/bin/sh\necho "$*" >> "{self.opened}"\n')
        program.chmod(0o755)
        path = f"{folder}:{os.environ['PATH']}"
        self.enterContext(unittest.mock.patch.dict(os.environ, PATH=path))

    def pages(self):
        """What was opened, in order."""
        return self.opened.read_text().splitlines()

    def remember(self, preferences):
        file = self.system / PREFERENCES
        file.parent.mkdir(parents=True)
        file.write_bytes(plistlib.dumps(preferences))

    def start_agent(self):
        agent = self.desktop.start(
            os.environ["ZORVANE_UPDATE_AGENT"],
            log=self.log,
            environment={
                "ZORVANE_SYSTEM_DIR": str(self.system),
                "QT_QUICK_BACKEND": "software",
            },
        )
        self.addCleanup(lambda: print(self.log.read_text(), file=sys.stderr))
        return agent

    def displayed(self):
        """How many notifications the service shows."""
        return output("dunstctl", "count", "displayed").strip()

    def wait_for_announcement(self):
        wait_for(lambda: self.displayed() == "1", "the announcement")
        wait_for(self.remembered_number, "its number in the file")

    def remembered_number(self):
        file = self.system / "notifications.json"
        if not file.exists():
            return None
        return json.loads(file.read_bytes()).get("zorvane-update-available", {}).get("number")

    def test_a_click_starts_zorvane_and_opens_the_page_once(self):
        self.remember({**RELEASE, "hasCompletedOnboarding": True})
        agent = self.start_agent()
        self.wait_for_announcement()
        output("dunstctl", "action")
        window = Window("Zorvane")
        self.addCleanup(window.close)
        self.assertEqual(agent.wait(30), 0)
        wait_for(self.pages, "the page")
        self.assertEqual(self.pages(), [PAGE])
        self.assertIsNone(self.remembered_number())

    def test_a_click_brings_a_running_zorvane_to_the_front(self):
        self.start(preferences=RELEASE)
        self.system = self.zorvane.folder
        agent = self.start_agent()
        self.wait_for_announcement()
        minimize("Zorvane")
        output("dunstctl", "action")
        self.assertEqual(agent.wait(30), 0)
        wait_for(lambda: is_open("Zorvane"), "the window")
        wait_for(self.pages, "the page")
        self.assertEqual(self.pages(), [PAGE])

    def test_the_application_answers_when_the_agent_is_gone(self):
        self.start(preferences=RELEASE)
        self.system = self.zorvane.folder
        agent = self.start_agent()
        self.wait_for_announcement()
        agent.kill()
        agent.wait()
        output("dunstctl", "action")
        wait_for(self.pages, "the page")
        self.assertEqual(self.pages(), [PAGE])

    def test_a_dismissed_announcement_ends_the_agent_and_is_not_made_again(self):
        self.remember(RELEASE)
        agent = self.start_agent()
        self.wait_for_announcement()
        output("dunstctl", "close")
        self.assertEqual(agent.wait(30), 0)
        self.assertEqual(self.start_agent().wait(30), 0)
        self.assertEqual(self.displayed(), "0")
        self.assertEqual(self.pages(), [])

    def test_offline_it_ends_well_and_says_nothing(self):
        self.remember({})
        self.assertEqual(self.start_agent().wait(60), 0)
        self.assertEqual(self.displayed(), "0")
        self.assertEqual(plistlib.loads((self.system / PREFERENCES).read_bytes()), {})


if __name__ == "__main__":
    main()
