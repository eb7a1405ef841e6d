"""The settings and the menu beside the main window, and the end of the program."""

import pathlib
import socket

from acceptance import AcceptanceTest, main, wait_for
from readings import CHECK_FAILED, MENU, SETTINGS
from windows import Window
import pointer


def refuse(connection):
    """Answers a program that asks a proxy for the way to a server."""
    with connection:
        connection.recv(4096)
        connection.sendall(b"HTTP/1.1 502 Bad Gateway\r\nContent-Length: 0\r\n\r\n")


def parents_of_processes():
    """The process that started it, for each that runs or whose end nobody has heard of."""
    for file in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            # After the program's name, which may be anything, and the state.
            yield int(file.read_text().rpartition(")")[2].split()[1])
        except OSError:
            pass


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
        with socket.create_server(("127.0.0.1", 0)) as proxy:
            self.start(environment={"https_proxy": "http://127.0.0.1:%d" % proxy.getsockname()[1]})
            proxy.settimeout(30)
            refuse(proxy.accept()[0])
        # That was the check at the launch; until it has ended, asking for another does nothing.
        wait_for(
            lambda: self.zorvane.process.pid not in parents_of_processes(),
            "the end of the program that fetches",
        )
        self.open_settings()
        self.zorvane.window.activate()
        pointer.key("F10")
        self.assert_told(MENU, "menu item: About Zorvane", "menu item: Quit Zorvane (Ctrl+Q)")
        self.zorvane.screen.find("Check for Updates\u2026", "menu item").press()
        # Only a check that was asked for tells that it failed.
        self.zorvane.screen.find(CHECK_FAILED, "label")

    def test_closing_the_main_window_ends_the_program_though_the_settings_are_open(self):
        self.start()
        self.open_settings()
        self.zorvane.window.close()
        self.assertEqual(self.zorvane.process.wait(timeout=15), 0)


if __name__ == "__main__":
    main()
