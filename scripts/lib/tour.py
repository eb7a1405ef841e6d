"""The tour: every state of the windows, reached by real input, as pictures.

tour.py PROGRAM FOLDER: PROGRAM is zorvane; the pictures and their index go to FOLDER.
"""

import hashlib
import html
import pathlib
import shutil
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tests/support"))

import bundles  # noqa: E402
import pointer  # noqa: E402
from accessibility import Program  # noqa: E402
from desktop import Desktop, TimedOut  # noqa: E402
from file_manager import FileManager  # noqa: E402
from tour_scenes import SCENES  # noqa: E402
from windows import Window  # noqa: E402
from zorvane import Zorvane  # noqa: E402

SCALE = 2


class Guest:
    """Does what a person would do, on one desktop."""

    def __init__(self, desktop, program, scene):
        self._desktop = desktop
        self._drag = None
        self._passing = None
        self.folder = desktop.new_folder() / "Downloads"
        self.folder.mkdir()
        for application in bundles.APPLICATIONS:
            bundles.build(application, self.folder)
        (self.folder / "letter.txt").write_text("Dear reader\n")
        environment = dark_colors(desktop.folder / "home") if scene.dark else {}
        self.zorvane = Zorvane(
            desktop, program, scene.preferences, scene.system, SCALE, environment
        )
        self.zorvane.window.place(1060, 60)
        self.files = FileManager(desktop, self.folder)
        self._shown = self.zorvane.window

    def look(self, *texts):
        """Waits until the main window shows all these texts."""
        self._shown = self.zorvane.window
        for text in texts:
            self.zorvane.screen.find(text)
        self._rest()

    def catch(self, text):
        """As look(), for what does not last: its picture is taken at once, as it moves."""
        self.look(text)
        self._passing = text

    def hover(self, item):
        self._drag = pointer.Drag(self.files.position(item))
        self._drag.carry(self.zorvane.drop_zone())

    def drop(self):
        self._drag.drop()
        self._drag = None
        self._rest()

    def add(self, *items):
        for item in items:
            self.hover(f"{item}.app")
            self.drop()
            self.zorvane.screen.find(item, "list item", seconds=120)

    def click(self, name, role=None):
        self._shown.activate()
        self.zorvane.click(name, role)
        self._rest()

    def press(self, *keys):
        self._shown.activate()
        pointer.key(*keys)

    def open_settings(self):
        """From here on the pictures show the settings, until look()."""
        self.press("ctrl+comma")
        self._turn_to(Window("Zorvane Settings"))

    def open_about(self):
        self.click("Zorvane", "menu item")
        self.click("About Zorvane", "menu item")
        self._turn_to(Window("About Zorvane"))

    def observe(self):
        """A helper of Atlas Notes, and a program that it has downloaded, reach the network."""
        programs = self.folder / "Atlas Notes.app/Contents"
        self.zorvane.observe(
            ("Atlas Sync", programs / "Helpers/Atlas Sync"),
            ("atlas-updater", programs / "Resources/Atlas Updater"),
        )

    def open_system_settings(self):
        """From here on the pictures show the system's settings, until look()."""
        self.click("Open System Settings", "push button")
        self._settings = Program("zorvane-system-settings", scale=SCALE)
        self._turn_to(Window("System Settings"))

    def allow(self):
        pointer.click(*self._settings.spot("Allow", "push button"))
        self._settings.find("Allowed and active")
        self._shown.close()

    def picture(self, file):
        """The window, once it has come to rest."""
        if not self._drag:
            self._shown.activate()
        if self._passing:
            self._shown.picture(file)
            self.zorvane.screen.find(self._passing, seconds=0)
            self._passing = None
            return
        before = None
        for _ in range(8):
            self._shown.picture(file)
            now = hashlib.sha256(pixels(file)).digest()
            if now == before:
                return
            before = now
            time.sleep(0.2)
        raise TimedOut(f"{file.name} shows a window that does not come to rest")

    def close(self):
        self.files.close()
        self.zorvane.close()

    def _turn_to(self, window):
        self._shown = window
        window.place(20, 60)
        self._rest()

    def _rest(self):
        """Takes the pointer where it makes nothing look hovered."""
        if not self._drag:
            pointer.move(5, 5)


def dark_colors(home):
    """A dark colour scheme as KDE's settings keep it, and the environment of a KDE desktop, on
    which Qt follows them."""
    settings = home / ".config/kdeglobals"
    settings.parent.mkdir(parents=True, exist_ok=True)
    settings.write_text(
        "".join(
            f"[Colors:{part}]\nBackgroundNormal=40,40,42\nForegroundNormal=235,235,235\n"
            for part in ("Window", "View", "Button", "Tooltip", "Selection")
        )
    )
    return {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}


def pixels(file):
    return subprocess.run(
        ["convert", str(file), "-depth", "8", "rgb:-"], stdout=subprocess.PIPE, check=True
    ).stdout


def take(program, folder, pictures):
    """Takes the whole tour; adds the pictures' names and accounts to pictures, one by one."""
    with Desktop(2600, 1500) as desktop:
        for scene in SCENES:
            guest = Guest(desktop, program, scene)
            try:
                for name, account, act in scene.steps:
                    act(guest)
                    name = f"{len(pictures) + 1:02}-{name}{'-dark' if scene.dark else ''}.png"
                    guest.picture(folder / name)
                    pictures.append((name, account))
                    print(f"{name}: {account}", flush=True)
            except Exception:
                print(guest.zorvane.log.read_text(), guest.zorvane.screen.describe(), sep="\n")
                raise
            finally:
                guest.close()


def write_index(pictures, folder):
    lines = [f"- ![{account}]({name})\n  {account}" for name, account in pictures]
    (folder / "index.md").write_text("# The tour\n\n" + "\n".join(lines) + "\n")
    figures = "\n".join(
        f'<figure><img src="{name}" alt=""><figcaption>{html.escape(account)}</figcaption></figure>'
        for name, account in pictures
    )
    (folder / "index.html").write_text(PAGE.replace("FIGURES", figures))


PAGE = """<!doctype html>
<html lang="en">
<meta charset="utf-8">
<title>The tour</title>
<style>
body { font: 15px/1.4 Inter, sans-serif; margin: 2em; display: grid; gap: 2em;
       grid-template-columns: repeat(auto-fill, minmax(420px, 1fr)); background: #ddd; }
figure { margin: 0 }
img { width: 100%; border-radius: 10px; box-shadow: 0 4px 20px #0004 }
</style>
FIGURES
</html>
"""


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: tour.py PROGRAM FOLDER")
    program, folder = map(pathlib.Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    pictures = []
    try:
        take(program, folder, pictures)
    finally:
        # Of a tour that was cut short too: it shows how far it came.
        write_index(pictures, folder)
    print(f"{len(pictures)} pictures in {folder}; {folder / 'index.html'} shows them all.")


if __name__ == "__main__":
    main()
