"""The tour: every state of the windows, reached by real input, as pictures.

tour.py PROGRAM FOLDER: PROGRAM is zorvane; the pictures and their index go to FOLDER.
"""

import hashlib
import html
import json
import pathlib
import shutil
import subprocess
import sys
import time
from dataclasses import dataclass, field

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tests/support"))

import bundles  # noqa: E402
import pointer  # noqa: E402
from accessibility import Program  # noqa: E402
from desktop import Desktop  # noqa: E402
from file_manager import FileManager  # noqa: E402
from windows import Window  # noqa: E402
from zorvane import Zorvane  # noqa: E402

SCALE = 2


@dataclass(frozen=True)
class Scene:
    """One start of the program, and what is done with it. A step is a picture's name, its account,
    and what leads to it."""

    steps: tuple
    preferences: dict = field(default_factory=dict)
    system: dict = field(default_factory=dict)
    dark: bool = False


class Guide:
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
        self.zorvane.window.activate()
        self.zorvane.click(name, role)
        self._rest()

    def observe(self):
        """A helper of Atlas Notes, and a program that it has downloaded, reach the network."""
        programs = self.folder / "Atlas Notes.app/Contents"
        self.zorvane.observe(
            ("Atlas Sync", programs / "Helpers/Atlas Sync"),
            ("atlas-updater", programs / "Resources/Atlas Updater"),
        )

    def open_settings(self):
        """From here on the pictures show the system's settings, until look()."""
        self.click("Open System Settings", "push button")
        self._settings = Program("zorvane-system-settings", scale=SCALE)
        self._shown = Window("System Settings")
        self._shown.place(20, 60)

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

    def close(self):
        self.files.close()
        self.zorvane.close()

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


def first_day(dark=False):
    """From the empty list to a full one, with the system's approval in between."""
    return Scene(
        system={"approval": "ask"},
        dark=dark,
        steps=(
            ("empty", "Nothing is blocked yet.", lambda guide: guide.look("No blocked apps")),
            ("hovering", "A bundle from the file manager hovers over the drop zone.",
             lambda guide: guide.hover("Atlas Notes.app")),
            ("awaiting-approval", "It is listed; the system asks for approval first.",
             lambda guide: (guide.drop(), guide.look("Finish enabling protection"))),
            ("system-settings", "The simulated system's settings, where the extension is allowed.",
             lambda guide: guide.open_settings()),
            ("protection-on", "Allowed: protection is on and the application is blocked.",
             lambda guide: (guide.allow(), guide.look("Protection on"))),
            ("adding", "A big bundle is being inspected; the window stays usable.",
             lambda guide: (bundles.fill(guide.folder / "Harbor Sync.app"),
                            guide.hover("Harbor Sync.app"), guide.drop(),
                            guide.catch("Adding application"))),
            ("list", "Several applications, sorted by name.",
             lambda guide: (guide.zorvane.screen.find("Harbor Sync", "list item", 120),
                            guide.add("Quill Mail", "Meadow Player"), guide.look("Quill Mail"))),
            ("unfolded", "What an application runs as: itself, its helpers, and what the filter saw.",
             lambda guide: (guide.observe(), guide.click("4 network processes"),
                            guide.look("Main app", "Bundled", "Observed"))),
            ("alert", "A dropped file that is no application is refused.",
             lambda guide: (guide.hover("letter.txt"), guide.drop(),
                            guide.look("Drop an application with the .app extension."))),
            ("protection-off", "The switch turns protection off; the list stays.",
             lambda guide: (guide.click("OK"), guide.click("4 network processes"),
                            guide.click("Protection", "check box"), guide.look("Protection off"))),
        ),
    )


NEWER_VERSION = json.dumps({
    "version": "1.3",
    "downloadURL": "https://kestrelworks.dev/zorvane",
    "releaseNotes": "Faster discovery of helpers and a calmer list.",
})


SCENES = (
    first_day(),
    Scene(
        preferences={"updates.cachedManifest": NEWER_VERSION.encode()},
        steps=(
            ("update", "There is a newer version; a click opens its page.",
             lambda guide: guide.look("Zorvane 1.3 is available")),
        ),
    ),
    Scene(
        system={"bundlePath": "/Users/me/Downloads/Zorvane.app"},
        steps=(
            ("installation-required", "Started from Downloads: it has to be moved first.",
             lambda guide: guide.look("Finish installing Zorvane")),
            ("explanation", "A tap on the switch that cannot be used says why.",
             lambda guide: (guide.click("Explain why protection is unavailable"),
                            guide.look("OK"))),
        ),
    ),
    Scene(
        system={"faults": [{"operation": "save", "domain": "NEFilterErrorDomain", "code": 4,
                            "description": "The configuration is invalid."}]},
        steps=(
            ("failed", "The filter could not be set up; the list says why.",
             lambda guide: (guide.add("Quill Mail"), guide.look("Action required"))),
        ),
    ),
    first_day(dark=True),
)


def take(program, folder, pictures):
    """Takes the whole tour; adds the pictures' names and accounts to pictures, one by one."""
    with Desktop(2600, 1500) as desktop:
        for scene in SCENES:
            guide = Guide(desktop, program, scene)
            try:
                for name, account, act in scene.steps:
                    act(guide)
                    name = f"{len(pictures) + 1:02}-{name}{'-dark' if scene.dark else ''}.png"
                    guide.picture(folder / name)
                    pictures.append((name, account))
                    print(f"{name}: {account}", flush=True)
            except Exception:
                print(guide.zorvane.log.read_text(), guide.zorvane.screen.describe(), sep="\n")
                raise
            guide.close()


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
