"""The unattended check's announcement on a real notification service, and a click on it."""

import datetime
import json
import os
import pathlib
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
SERVICE = "org.freedesktop.Notifications"


def call(destination, path, method, *arguments):
    """What a program on the bus answers; nothing if it fails."""
    return output(
        "gdbus", "call", "--session", "--dest", destination, "--object-path", path,
        "--method", method, *arguments,
    )


def is_on_the_bus(name):
    bus = "org.freedesktop.DBus"
    return "true" in call(bus, "/org/freedesktop/DBus", f"{bus}.NameHasOwner", name)


class UpdateAgent(AcceptanceTest):
    def setUp(self):
        super().setUp()
        place = self.desktop.new_folder()
        self.system = place / "system"
        self.log = place / "agent.log"
        self.opened = place / "opened"
        self.opened.touch()
        self.note_what_is_opened(place / "bin")

    def start_service(self):
        settings = self.desktop.new_folder() / "dunstrc"
        settings.write_text("[urgency_normal]\ntimeout = 0\n")
        self.run_service("dunst", "-config", settings)

    def start_service_that_tells_everybody(self):
        """dunst tells of a click only the program that posted; most services tell the whole bus."""
        self.run_service(
            "/usr/bin/python3", "-m", "dbusmock", "--template", "notification_daemon",
            "--parameters", '{"capabilities": "body actions"}',
        )

    def run_service(self, *command):
        # Whoever called the service before it is there would have the bus start another one.
        wait_for(lambda: not is_on_the_bus(SERVICE), "the last service to leave")
        service = self.desktop.start(*command)
        self.addCleanup(self.desktop.stop, service)
        wait_for(lambda: is_on_the_bus(SERVICE), "the notification service")

    def tell_everybody(self, signal, number, text):
        call(
            SERVICE, "/org/freedesktop/Notifications", "org.freedesktop.DBus.Mock.EmitSignal",
            SERVICE, signal, "us", f"[<uint32 {number}>, <'{text}'>]",
        )

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

    def do_on_screen(self, what):
        wait_for(lambda: self.displayed() == "1", "the notification on the screen")
        output("dunstctl", what)

    def wait_for_announcement(self):
        wait_for(self.remembered_number, "the announcement")

    def remembered_number(self):
        file = self.system / "notifications.json"
        if not file.exists():
            return None
        return json.loads(file.read_bytes()).get("zorvane-update-available", {}).get("number")

    def test_a_click_starts_zorvane_and_opens_the_page_once(self):
        self.start_service()
        self.remember({**RELEASE, "hasCompletedOnboarding": True})
        agent = self.start_agent()
        self.wait_for_announcement()
        self.do_on_screen("action")
        window = Window("Zorvane")
        self.addCleanup(window.close)
        self.assertEqual(agent.wait(30), 0)
        wait_for(self.pages, "the page")
        self.assertEqual(self.pages(), [PAGE])
        self.assertIsNone(self.remembered_number())

    def test_a_click_brings_a_running_zorvane_to_the_front(self):
        self.start_service()
        self.start(preferences=RELEASE)
        self.system = self.zorvane.folder
        agent = self.start_agent()
        self.wait_for_announcement()
        minimize("Zorvane")
        self.do_on_screen("action")
        self.assertEqual(agent.wait(30), 0)
        wait_for(lambda: is_open("Zorvane"), "the window")
        wait_for(self.pages, "the page")
        self.assertEqual(self.pages(), [PAGE])

    def test_the_application_answers_when_the_agent_is_gone(self):
        self.start_service_that_tells_everybody()
        self.start(preferences=RELEASE)
        self.system = self.zorvane.folder
        agent = self.start_agent()
        self.wait_for_announcement()
        self.assertIsNone(agent.poll())
        agent.kill()
        agent.wait()
        number = self.remembered_number()
        for _ in range(2):
            self.tell_everybody("ActionInvoked", number, "default")
        wait_for(self.pages, "the page")
        wait_for(lambda: self.remembered_number() is None, "the notification to be forgotten")
        self.assertEqual(self.pages(), [PAGE])

    def test_zorvane_is_started_with_the_token_to_come_to_the_front(self):
        self.start_service_that_tells_everybody()
        self.remember({**RELEASE, "hasCompletedOnboarding": True})
        agent = self.start_agent()
        self.wait_for_announcement()
        number = self.remembered_number()
        self.tell_everybody("ActivationToken", number, "token-7")
        self.tell_everybody("ActionInvoked", number, "default")
        window = Window("Zorvane")
        self.addCleanup(window.close)
        process = output("xdotool", "getwindowpid", str(window.id)).strip()
        environment = pathlib.Path(f"/proc/{process}/environ").read_bytes().split(b"\0")
        self.assertIn(b"XDG_ACTIVATION_TOKEN=token-7", environment)
        self.assertEqual(agent.wait(30), 0)

    def test_a_dismissed_announcement_ends_the_agent_and_is_not_made_again(self):
        self.start_service()
        self.remember(RELEASE)
        agent = self.start_agent()
        self.wait_for_announcement()
        self.do_on_screen("close")
        self.assertEqual(agent.wait(30), 0)
        self.assertEqual(self.start_agent().wait(30), 0)
        self.assertEqual(self.displayed(), "0")
        self.assertEqual(self.pages(), [])

    def test_offline_it_ends_well_and_says_nothing(self):
        self.start_service()
        self.remember({})
        self.assertEqual(self.start_agent().wait(60), 0)
        self.assertEqual(self.displayed(), "0")
        self.assertEqual(plistlib.loads((self.system / PREFERENCES).read_bytes()), {})


if __name__ == "__main__":
    main()
