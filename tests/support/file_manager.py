"""A real file manager's window, to drag from."""

from accessibility import PROGRAM_ENVIRONMENT, Program
from desktop import wait_for
from windows import Window
import pointer

_LOOK = "[ui]\nwin_width=620\nwin_height=420\nview_mode=icon\nshow_hidden=0\n"


class FileManager:
    """pcmanfm showing one folder."""

    def __init__(self, desktop, folder, left=20, top=40):
        settings = desktop.folder / "home/.config/pcmanfm/default"
        settings.mkdir(parents=True, exist_ok=True)
        (settings / "pcmanfm.conf").write_text(_LOOK)
        self._desktop = desktop
        self._process = desktop.start(
            "pcmanfm", "--no-desktop", folder, environment=PROGRAM_ENVIRONMENT
        )
        self._folder = folder
        self.window = Window(folder.name)
        self.window.place(left, top)
        self._program = Program("pcmanfm")

    def position(self, name):
        """The middle of an item's picture, in pixels of the screen."""
        names = self._names()
        icons = wait_for(lambda: self._icons(len(names)), f"{len(names)} items in pcmanfm")
        left, top, width, _ = icons[names.index(name)].extents()
        return left + width // 2, top + 24

    def drag(self, name, target):
        pointer.drag(self.position(name), target)

    def select_all(self):
        self.window.activate()
        pointer.key("ctrl+a")

    def close(self):
        self._desktop.stop(self._process)

    def _names(self):
        """The folder's items in the order in which they are shown."""
        items = [item for item in self._folder.iterdir() if not item.name.startswith(".")]
        return [item.name for item in sorted(items, key=lambda i: (not i.is_dir(), i.name.lower()))]

    def _icons(self, count):
        panes = self._program.showing(role="layered pane")
        icons = list(panes[0].children()) if panes else []
        return icons if len(icons) == count else None
