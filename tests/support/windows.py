"""Windows of the desktop, found by their titles."""

import re
import subprocess

from desktop import output, wait_for
import pointer


class Window:
    def __init__(self, title, seconds=30):
        self.title = title
        self.id = wait_for(lambda: _newest(title), f'a window "{title}"', seconds)

    def geometry(self):
        """Left, top, width and height of its content, in pixels of the screen."""
        text = output("xwininfo", "-id", self.id)
        return tuple(
            int(re.search(rf"{label}:\s+(-?\d+)", text).group(1))
            for label in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        )

    def center(self):
        left, top, width, height = self.geometry()
        return left + width // 2, top + height // 2

    def place(self, left, top):
        subprocess.run(["xdotool", "windowmove", self.id, str(left), str(top)], check=True)
        wait_for(lambda: abs(self.geometry()[0] - left) < 40, f'"{self.title}" to move')

    def resize(self, width, height):
        subprocess.run(["xdotool", "windowsize", self.id, str(width), str(height)], check=True)

    def activate(self):
        # While nothing is active yet, xdotool complains of that and goes on waiting.
        subprocess.run(
            ["xdotool", "windowactivate", "--sync", self.id], check=True, stderr=subprocess.DEVNULL
        )

    def close(self):
        """As its close button does."""
        self.activate()
        pointer.key("alt+F4")
        wait_for(lambda: not is_open(self.title), f'"{self.title}" to close')

    def picture(self, file):
        """Writes what the window shows as a PNG."""
        subprocess.run(["import", "-window", self.id, str(file)], check=True)

    def color(self, x, y):
        """Red, green and blue, to 255, of what it shows at a place of the screen."""
        left, top, *_ = self.geometry()
        pixels = subprocess.run(
            ["import", "-window", str(self.id), "-crop", f"1x1+{x - left}+{y - top}", "-depth", "8",
             "rgb:-"],
            stdout=subprocess.PIPE, check=True,
        ).stdout
        return tuple(pixels[:3])


def minimize(title):
    subprocess.run(["xdotool", "windowminimize", "--sync", _newest(title)], check=True)
    wait_for(lambda: not is_open(title), f'"{title}" to be minimised')


def is_open(title):
    return bool(_newest(title))


def _newest(title):
    found = output("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$")
    return found.split()[-1] if found.split() else None
