"""A program's windows as assistive technology sees them. Usable once a desktop runs."""

import os

from desktop import wait_for

# Wanted by the programs that are to be read: Qt and GTK 2 stay silent otherwise.
PROGRAM_ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "GTK_MODULES": "gail:atk-bridge"}


class Node:
    """One element: its name, role, description and states as they stood when it was found."""

    def __init__(self, accessible, scale=1):
        self._accessible = accessible
        self._scale = scale
        self.name = accessible.name or ""
        self.description = accessible.description or ""
        self.role = accessible.getRoleName()
        self.states = self._read_states()

    def children(self):
        for index in range(self._accessible.childCount):
            child = self._accessible.getChildAtIndex(index)
            if child:
                yield Node(child, self._scale)

    def walk(self):
        """This element and everything below it, in reading order."""
        yield self
        for child in self.children():
            yield from child.walk()

    def has_state(self, state):
        """Whether it has it now; as AT-SPI names it: "showing", "checked", "focused" ..."""
        return state in self._read_states()

    def extents(self):
        """Left, top, width and height in pixels of the screen."""
        box = self._accessible.queryComponent().getExtents(_pyatspi().DESKTOP_COORDS)
        return tuple(round(self._scale * each) for each in (box.x, box.y, box.width, box.height))

    def center(self):
        left, top, width, height = self.extents()
        return left + width // 2, top + height // 2

    def actions(self):
        """What can be done to it, as AT-SPI names it: "Press", "Toggle" ..."""
        try:
            action = self._accessible.queryAction()
        except NotImplementedError:
            return []
        return [action.getName(index) for index in range(action.nActions)]

    def do(self, action):
        """Returns when the program has done it."""
        self._accessible.queryAction().doAction(self.actions().index(action))

    def press(self):
        self.do("Press")

    def take_focus(self):
        self._accessible.queryComponent().grabFocus()

    def __str__(self):
        description = f" ({self.description})" if self.description else ""
        checked = " [checked]" if "checked" in self.states else ""
        return f"{self.role}: {self.name}{description}{checked}"

    def _read_states(self):
        states = self._accessible.getState().getStates()
        return {_pyatspi().stateToString(each) for each in states}


class Program:
    """A running program, by the name that it gives to assistive technology.

    A program that runs under QT_SCALE_FACTOR tells its extents in its own points; scale makes
    pixels of them.
    """

    def __init__(self, name, seconds=30, scale=1):
        self.name = name
        self._scale = scale
        wait_for(self._root, f"{name} on the accessibility bus", seconds)

    def showing(self, name=None, role=None, description=None):
        """All visible elements of which this holds; none while the window is being rebuilt."""
        try:
            root = self._root()
            return [
                node
                for node in (root.walk() if root else ())
                if (name is None or node.name == name)
                and (role is None or node.role == role)
                and (description is None or node.description == description)
                and "showing" in node.states
            ]
        except _glib_error():
            return []

    def find(self, name=None, role=None, seconds=30, description=None):
        """The first of them, waited for."""
        what = f'"{name}" ({role or "any role"}) in {self.name}'
        return wait_for(lambda: self.showing(name, role, description), what, seconds)[0]

    def spot(self, name=None, role=None, seconds=30):
        """The middle of that element in pixels of the screen, once it stands still."""
        seen = []

        def rests():
            found = self.showing(name, role)
            seen.append(found[0].extents() if found else None)
            return found and seen[-2:-1] == seen[-1:] and found[0]

        return wait_for(rests, f'"{name}" in {self.name} to stand still', seconds).center()

    def describe(self):
        """What is visible, as text, for reports of failures."""
        return "\n".join(map(str, self.showing()))

    def _root(self):
        try:
            desktop = _pyatspi().Registry.getDesktop(0)
            desktop.clear_cache()
            for node in Node(desktop, self._scale).children():
                if node.name == self.name:
                    return node
        except _glib_error():
            pass
        return None


def _glib_error():
    """What reading an element raises that is no more."""
    from gi.repository import GLib

    return GLib.Error


def _pyatspi():
    # Importing it connects to the bus of that moment, which must be the private desktop's.
    assert "DBUS_SESSION_BUS_ADDRESS" in os.environ
    import pyatspi

    return pyatspi
