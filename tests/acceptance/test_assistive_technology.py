"""The windows as assistive technology reads them, and the program worked by nothing else."""

import datetime
import json

from acceptance import AcceptanceTest, bundles, key, main, wait_for
from readings import (
    ALERT, APPROVAL, DROP_ZONE, EMPTY_LIST, GUIDE, HEADER, INSTALLATION, MEADOW_PLAYER, QUILL_MAIL,
    UNFOLDED_QUILL_MAIL, UPDATE,
)
import pointer

RELEASE = {
    "updates.cachedManifest": json.dumps(
        {"version": "99.0", "downloadURL": "https://kestrelworks.dev/zorvane"}
    ).encode(),
    # The check at the launch is made all the same, and finds no network on this desktop.
    "updates.lastCheckedAt": datetime.datetime.utcnow(),
}


class AssistiveTechnology(AcceptanceTest):
    def start_at_rest(self, **options):
        """Starts with protection off, and waits until the filter's state has been read for the
        launch and for becoming active: it counts as of then, whatever has been done meanwhile."""
        self.start(preferences={"protectionRequested": False}, **options)
        wait_for(
            lambda: self.zorvane.log.read_text().count("Filter status refreshed") == 2,
            "the filter's state",
        )

    def content(self):
        """What is below the menu bar, as one reads."""
        nodes = self.zorvane.screen.showing()
        first = next((at for at, node in enumerate(nodes) if str(node) == "heading: Zorvane"), 0)
        return nodes[first:]

    def assert_reads(self, *parts):
        """What can be pressed, and nothing else, says so."""
        wanted = "".join(parts).splitlines()
        nodes = []

        def reads():
            nodes[:] = self.content()
            return [str(node) for node in nodes] == wanted

        try:
            wait_for(reads, "these elements", seconds=15)
        finally:
            self.assertEqual([str(node) for node in nodes], wanted)
        for node in nodes:
            self.assertEqual(
                "Press" in node.actions(), node.role in ("push button", "check box"), str(node)
            )

    def press(self, name, description=None):
        self.zorvane.screen.find(name, description=description).press()

    def wait_until_gone(self, role):
        wait_for(lambda: not self.zorvane.screen.showing(role=role), f"no {role}")

    def wait_until_completed(self):
        wait_for(
            lambda: self.zorvane.preferences()["hasCompletedOnboarding"], "the guide to be done with"
        )

    def test_the_window_is_told_as_one_reads_it(self):
        remembered = self.remembered(bundles.MEADOW_PLAYER, bundles.QUILL_MAIL)
        self.start(preferences={**remembered, **RELEASE})
        status = "label: Protection off\ncheck box: Protection\n"
        applications = "label: 2\nlist: Blocked apps\n"
        self.assert_reads(
            HEADER, status, UPDATE, DROP_ZONE, applications, MEADOW_PLAYER, QUILL_MAIL
        )

        self.press("2 network processes")
        self.assert_reads(
            HEADER, status, UPDATE, DROP_ZONE, applications, MEADOW_PLAYER, UNFOLDED_QUILL_MAIL
        )
        self.press("2 network processes")
        self.press("Remind me next time")
        self.assert_reads(HEADER, status, DROP_ZONE, applications, MEADOW_PLAYER, QUILL_MAIL)

    def test_the_switch_turns_the_filter_on_and_off(self):
        self.start(preferences=self.remembered(bundles.MEADOW_PLAYER))
        switch = self.zorvane.screen.find("Protection", "check box")
        for action in ("Toggle", "Press"):
            switch.do(action)
            self.wait_for_filter(True, key("Meadow Player"))
            self.zorvane.screen.find("Protection on")
            wait_for(lambda: switch.has_state("checked"), "the switch to be checked")
            switch.do(action)
            self.wait_for_filter(False, key("Meadow Player"))
            self.zorvane.screen.find("Protection off")
            wait_for(lambda: not switch.has_state("checked"), "the switch to be unchecked")

    def test_an_application_is_removed_by_its_own_button(self):
        self.start(preferences=self.remembered(bundles.MEADOW_PLAYER, bundles.QUILL_MAIL))
        self.press("Protection")
        self.wait_for_filter(True, key("Meadow Player"), key("Quill Mail"))
        self.press("Remove from list", "Quill Mail")
        self.zorvane.wait_for_blocked("Meadow Player")
        self.wait_for_filter(True, key("Meadow Player"))
        self.assert_reads(
            HEADER, "label: Protection on\ncheck box: Protection [checked]\n", DROP_ZONE,
            "label: 1\nlist: Blocked apps\n", MEADOW_PLAYER,
        )

    def test_the_guide_is_walked_to_its_end(self):
        self.start(preferences={"hasCompletedOnboarding": False})
        behind = (HEADER, "label: Protection off\ncheck box: Protection\n", DROP_ZONE, EMPTY_LIST)
        self.assert_reads(*behind, GUIDE[0])
        for page in GUIDE[1:]:
            self.press("Continue")
            self.assert_reads(*behind, page)
        self.press("Back")
        self.assert_reads(*behind, GUIDE[2])
        self.press("Continue")
        self.assertFalse(self.zorvane.preferences()["hasCompletedOnboarding"])
        self.press("Get Started")
        self.assert_reads(*behind)
        self.wait_until_completed()

    def test_the_guide_is_skipped_and_asked_for_again(self):
        self.start(preferences={"hasCompletedOnboarding": False})
        self.press("Skip", "Close the tutorial")
        self.wait_until_gone("dialog")
        self.wait_until_completed()
        self.press("Show getting started")
        self.zorvane.screen.find("Welcome to Zorvane", "dialog")

    def test_the_way_into_the_applications_folder_is_told(self):
        self.start(system={"bundlePath": "/tmp/Zorvane.app"})
        explainer = "push button: Explain why protection is unavailable\n"
        window = (
            HEADER, "label: Move to Applications\ncheck box: Protection\n", explainer,
            INSTALLATION, DROP_ZONE, EMPTY_LIST,
        )
        self.assert_reads(*window)
        self.press("Explain why protection is unavailable")
        self.assert_reads(*window, ALERT)
        self.press("OK")
        self.assert_reads(*window)

    def test_the_way_to_the_approval_is_told_and_retried(self):
        self.start_at_rest(system={"approval": "ask"})
        self.press("Protection")
        status = "label: Awaiting approval\ncheck box: Protection\n"
        self.assert_reads(HEADER, status, APPROVAL, DROP_ZONE, EMPTY_LIST)
        self.assertNotIn("already pending", self.zorvane.log.read_text())
        self.press("Retry Activation")
        wait_for(lambda: "already pending" in self.zorvane.log.read_text(), "another request")

    def test_a_failure_is_told_and_the_switch_still_works(self):
        fault = {"operation": "activate", "description": "No room.", "times": 1}
        self.start_at_rest(system={"faults": [fault]})
        self.press("Protection")
        self.assert_reads(
            HEADER, "label: Action required\ncheck box: Protection\n", DROP_ZONE, "label: 0\n",
            "label: No room.\n", EMPTY_LIST.removeprefix("label: 0\n"),
        )
        self.press("Protection")
        self.zorvane.screen.find("Protection on")

    def test_a_switch_that_is_being_turned_on_is_left_alone(self):
        self.start_at_rest(system={"activationDelay": 600})
        switch = self.zorvane.screen.find("Protection", "check box")
        switch.press()
        self.zorvane.screen.find("Turning on…")
        for action in ("Toggle", "Press"):
            switch.do(action)
        self.zorvane.screen.find("Turning on…")
        log = self.zorvane.log.read_text()
        self.assertEqual(log.count("Submitting activation request"), 1)
        self.assertNotIn("already pending", log)

    def test_a_switch_that_cannot_be_used_is_left_alone(self):
        self.start(
            preferences={"hasCompletedOnboarding": False}, system={"bundlePath": "/tmp/Zorvane.app"}
        )
        self.zorvane.screen.find("Welcome to Zorvane", "dialog")
        self.zorvane.window.activate()
        pointer.key("Escape")
        self.wait_until_gone("dialog")
        switch = self.zorvane.screen.find("Protection", "check box")
        for action in ("Toggle", "Press"):
            switch.do(action)
        self.assertFalse(switch.has_state("checked"))
        self.assertEqual(self.zorvane.screen.showing(role="alert"), [])
        # Whatever had been written by then comes before this.
        self.press("Show getting started")
        self.press("Skip")
        self.wait_until_completed()
        self.assertNotIn("protectionRequested", self.zorvane.preferences())

    def test_the_guide_has_no_page_before_the_first(self):
        self.start(preferences={"hasCompletedOnboarding": False})
        for _ in range(2):
            self.press("Back")
        self.press("Continue")
        self.zorvane.screen.find("Turn On Protection", "dialog")

    def test_what_is_behind_the_guide_is_left_alone_and_does_not_get_the_keyboard(self):
        remembered = self.remembered(bundles.MEADOW_PLAYER)
        self.start(preferences={**remembered, **RELEASE, "hasCompletedOnboarding": False})
        guide = self.zorvane.screen.find("Welcome to Zorvane", "dialog")
        self.zorvane.window.activate()
        behind = ("Protection", "1 network process", "Remove from list", "Remind me next time")
        for name in behind:
            self.press(name)
            self.zorvane.screen.find(name).take_focus()
            wait_for(lambda: guide.has_state("focused"), "the guide to have the focus again")
        pointer.key("Escape")
        self.wait_until_gone("dialog")
        self.assert_reads(
            HEADER, "label: Protection off\ncheck box: Protection\n", UPDATE, DROP_ZONE,
            "label: 1\nlist: Blocked apps\n", MEADOW_PLAYER,
        )
        self.assertFalse(self.zorvane.preferences()["protectionRequested"])

    def test_what_is_behind_the_alert_is_left_alone_and_does_not_get_the_keyboard(self):
        self.start(system={"bundlePath": "/tmp/Zorvane.app"})
        self.press("Explain why protection is unavailable")
        alert = self.zorvane.screen.find("Zorvane", "alert")
        self.zorvane.window.activate()
        for name in ("Show getting started", "Quit Zorvane"):
            self.press(name)
            self.zorvane.screen.find(name).take_focus()
            wait_for(lambda: alert.has_state("focused"), "the alert to have the focus again")
        pointer.key("Return")
        self.wait_until_gone("alert")
        self.assertEqual(self.zorvane.screen.showing(role="dialog"), [])
        self.assertIsNone(self.zorvane.process.poll())


if __name__ == "__main__":
    main()
