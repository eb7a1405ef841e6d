"""The settings and the menu beside the main window, and the end of the program."""

from acceptance import AcceptanceTest, main, wait_for
from readings import MENU, SETTINGS
from windows import Window
import pointer


class Windows(AcceptanceTest):
    def start(self, **options):
        super().start(preferences={"protectionRequested": False}, **options)
        self.zorvane.screen.find("Protection off")
        self.zorvane.window.activate()

    def open_settings(self):
        pointer.key("ctrl+comma")
        self.settings = Window("Zorvane Settings")
        # Not over the main window.
        self.settings.place(100, 40)

    def assert_told(self, wanted, first, last):
        """What is told from one element to another."""
        told = []

        def tells():
            told[:] = [str(node) for node in self.zorvane.screen.showing()]
            if first in told and last in told:
                told[:] = told[told.index(first):told.index(last) + 1]
            return told == wanted.splitlines()

        try:
            wait_for(tells, "these elements", seconds=15)
        finally:
            self.assertEqual(told, wanted.splitlines())

    def test_the_settings_are_told_and_their_switch_works_for_both_windows(self):
        self.start()
        self.open_settings()
        self.assert_told(SETTINGS, "heading: Protection", "push button: Check for Updates")

        self.zorvane.screen.find("Enable network filter", "check box").press()
        switches = [
            self.zorvane.screen.find(name, "check box")
            for name in ("Enable network filter", "Protection")
        ]
        for switch in switches:
            wait_for(lambda: switch.has_state("checked"), f"{switch.name} to be checked")
        self.zorvane.screen.find("Protection on")

    def test_the_menu_is_told_and_checks_for_updates(self):
        self.start()
        pointer.key("F10")
        self.assert_told(MENU, "menu item: About Zorvane", "menu item: Quit Zorvane (Ctrl+Q)")
        self.open_settings()
        # Only a check that was asked for tells that it failed, and here there is no network. While
        # the one at launch is under way, asking does nothing.
        wait_for(lambda: self.failure_is_told() or self.ask_from_the_menu(), "the end of a check")

    def failure_is_told(self):
        return any(
            label.name.startswith("Zorvane could not check for updates.")
            for label in self.zorvane.screen.showing(role="label")
        )

    def ask_from_the_menu(self):
        self.zorvane.window.activate()
        # The menu stays open where its command does nothing.
        pointer.key("Escape")
        pointer.key("F10")
        self.zorvane.screen.find("Check for Updates\u2026", "menu item").press()

    def test_closing_the_main_window_ends_the_program_though_the_settings_are_open(self):
        self.start()
        self.open_settings()
        self.zorvane.window.close()
        self.assertEqual(self.zorvane.process.wait(timeout=15), 0)


if __name__ == "__main__":
    main()
