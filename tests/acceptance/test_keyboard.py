"""The program worked by real keys alone."""

from acceptance import AcceptanceTest, bundles, key, main, wait_for
import pointer


class Keyboard(AcceptanceTest):
    def start(self, **options):
        super().start(**options)
        self.zorvane.window.activate()

    def focused(self):
        """What has the keyboard, as assistive technology is told of it."""
        return [str(node) for node in self.zorvane.screen.showing() if "focused" in node.states]

    def assert_focused(self, element):
        focused = []

        def has_it():
            focused[:] = self.focused()
            return focused == [element]

        try:
            wait_for(has_it, f"{element} to have the focus", seconds=15)
        finally:
            self.assertEqual(focused, [element])

    def assert_goes_to(self, name, element):
        pointer.key(name)
        self.assert_focused(element)

    def wait_until_gone(self, role):
        wait_for(lambda: not self.zorvane.screen.showing(role=role), f"no {role}")

    def test_tab_goes_through_the_window_as_one_reads(self):
        self.start(preferences=self.remembered(bundles.MEADOW_PLAYER, bundles.QUILL_MAIL))
        self.zorvane.screen.find("2 network processes")
        stops = (
            "push button: Show getting started",
            "check box: Protection",
            "list item: Meadow Player (com.example.meadow-player)",
            "push button: 1 network process (Meadow Player)",
            "push button: Remove from list (Meadow Player)",
            "list item: Quill Mail (com.example.quill-mail)",
            "push button: 2 network processes (Quill Mail)",
            "push button: Remove from list (Quill Mail)",
        )
        for stop in stops:
            self.assert_goes_to("Tab", stop)
        for stop in reversed(stops[:-1]):
            self.assert_goes_to("shift+Tab", stop)

    def test_keys_switch_unfold_and_remove(self):
        self.start(preferences=self.remembered(bundles.MEADOW_PLAYER, bundles.QUILL_MAIL))
        pointer.key("Tab")
        self.assert_goes_to("Tab", "check box: Protection")
        pointer.key("space")
        self.wait_for_filter(True, key("Meadow Player"), key("Quill Mail"))
        self.assert_focused("check box: Protection [checked]")

        meadow_player = "list item: Meadow Player (com.example.meadow-player)"
        quill_mail = "list item: Quill Mail (com.example.quill-mail)"
        self.assert_goes_to("Tab", meadow_player)
        self.assert_goes_to("Down", quill_mail)
        self.assert_goes_to("Up", meadow_player)
        self.assert_goes_to("End", quill_mail)
        self.assert_goes_to("Tab", "push button: 2 network processes (Quill Mail)")
        pointer.key("Return")
        self.zorvane.screen.find("Quill Courier", "list item")
        self.assert_goes_to("Home", meadow_player)

        pointer.key("Delete")
        self.zorvane.wait_for_blocked("Quill Mail")
        self.wait_for_filter(True, key("Quill Mail"))
        self.assert_focused(quill_mail)

    def test_escape_closes_the_guide(self):
        self.start(preferences={"hasCompletedOnboarding": False})
        self.zorvane.screen.find("Welcome to Zorvane", "dialog")
        pointer.key("Return")
        self.zorvane.screen.find("Turn On Protection", "dialog")
        pointer.key("Escape")
        self.wait_until_gone("dialog")

        self.assert_goes_to("Tab", "push button: Show getting started")
        pointer.key("space")
        self.assert_focused("dialog: Welcome to Zorvane")
        pointer.key("Escape")
        self.assert_focused("push button: Show getting started")
        self.assertFalse(self.zorvane.preferences()["hasCompletedOnboarding"])

    def test_escape_closes_the_alert(self):
        self.start(system={"bundlePath": "/tmp/Zorvane.app"})
        self.zorvane.screen.find("Move to Applications")
        explainer = "push button: Explain why protection is unavailable"
        pointer.key("Tab")
        self.assert_goes_to("Tab", explainer)
        pointer.key("Return")
        self.zorvane.screen.find("OK", "push button")
        pointer.key("Escape")
        self.wait_until_gone("alert")
        self.assert_focused(explainer)


if __name__ == "__main__":
    main()
