"""Real mouse and keyboard input, by xdotool, in pixels of the screen."""

import subprocess
import time


def move(x, y):
    _run("mousemove", x, y)


def click(x, y):
    move(x, y)
    _run("click", 1)


def key(*names):
    _run("key", *names)


class Drag:
    """A drag under way: pressed at one place, carried to another, and dropped there.

    File managers want small steps before they believe that it is a drag, and targets want to have
    seen the pointer rest above them.
    """

    def __init__(self, start):
        x, y = start
        move(x, y)
        time.sleep(0.15)
        _run("mousedown", 1)
        time.sleep(0.25)
        for _ in range(8):
            _run("mousemove_relative", "--", 4, 2)
            time.sleep(0.03)
        self._at = (x + 32, y + 16)

    def carry(self, target, steps=15):
        (x, y), (to_x, to_y) = self._at, target
        for step in range(1, steps + 1):
            move(x + (to_x - x) * step // steps, y + (to_y - y) * step // steps)
            time.sleep(0.02)
        self._at = target
        self.rest()

    def rest(self):
        """Shows the target below that something is still above it."""
        for offset in (3, -3):
            _run("mousemove_relative", "--", offset, offset)
            time.sleep(0.15)

    def drop(self):
        time.sleep(0.2)
        _run("mouseup", 1)


def drag(start, target):
    movement = Drag(start)
    movement.carry(target)
    movement.drop()


def _run(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)
