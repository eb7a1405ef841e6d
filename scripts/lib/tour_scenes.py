"""What the tour shows: each start of the program, what is done with it, and the pictures of that."""

import json
from dataclasses import dataclass, field

import bundles

MISPLACED = {"bundlePath": "/Users/me/Downloads/Zorvane.app"}
NEWER_VERSION = json.dumps({
    "version": "1.3",
    "downloadURL": "https://kestrelworks.dev/zorvane",
    "releaseNotes": "Faster discovery of helpers and a calmer list.",
})


@dataclass(frozen=True)
class Scene:
    """One start of the program, and what is done with it. A step is a picture's name, its account,
    and what leads to it."""

    steps: tuple
    preferences: dict = field(default_factory=dict)
    system: dict = field(default_factory=dict)
    dark: bool = False


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
             lambda guide: guide.open_system_settings()),
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


def first_start(dark=False):
    """The guide of a fresh installation, page by page, and what it leaves behind."""
    pages = (
        ("Welcome to Zorvane", "The guide opens by itself at the first start."),
        ("Move to Applications", "It tells to move the program, where that is to be done."),
        ("Turn On Protection", "It tells of the switch, while protection is off."),
        ("Drop In an App", "It tells how applications are added."),
        ("You're Ready", "Its last page."),
    )
    return Scene(
        preferences={"hasCompletedOnboarding": False},
        system=MISPLACED,
        dark=dark,
        steps=tuple(
            (f"guide-{number}", account, lambda guide, number=number, title=title: (
                number > 1 and guide.click("Continue"), guide.look(title)))
            for number, (title, account) in enumerate(pages, 1)
        ) + (
            ("installation-required", "Started from Downloads: it has to be moved first.",
             lambda guide: (guide.click("Get Started"), guide.look("Finish installing Zorvane"))),
            ("explanation", "A tap on the switch that cannot be used says why.",
             lambda guide: (guide.click("Explain why protection is unavailable"),
                            guide.look("OK"))),
            ("settings-explanation", "The settings show the same alert; one OK closes both.",
             lambda guide: guide.open_settings()),
            ("settings-misplaced", "The settings of a program that has to be moved.",
             lambda guide: guide.click("OK")),
        ),
    )


def newer_version(dark=False):
    return Scene(
        preferences={"updates.cachedManifest": NEWER_VERSION.encode()},
        dark=dark,
        steps=(
            ("update", "There is a newer version; a click opens its page.",
             lambda guide: guide.look("Zorvane 1.3 is available")),
            ("settings-update", "The settings name it too.",
             lambda guide: guide.open_settings()),
        ),
    )


SCENES = (
    first_start(),
    first_day(),
    newer_version(),
    Scene(
        steps=(
            ("menu", "The application's menu, in a menu bar of the window's own.",
             lambda guide: (guide.look("No blocked apps"), guide.click("Zorvane", "menu item"),
                            guide.look("Quit Zorvane"))),
            ("about", "What there is to say about the program.",
             lambda guide: (guide.press("Escape"), guide.open_about())),
            ("settings", "The settings, opened by Ctrl and the comma.",
             lambda guide: guide.open_settings()),
            ("settings-checked", "A check for updates that could not be made says so.",
             lambda guide: (guide.click("Check for Updates"),
                            guide.zorvane.screen.find("Zorvane could not check for updates. "
                                                      "Check your internet connection and try "
                                                      "again."))),
        ),
    ),
    Scene(
        system={"activationDelay": 60},
        steps=(
            ("activating", "The extension is being activated.",
             lambda guide: (guide.look("Protection off"), guide.click("Protection", "check box"),
                            guide.catch("Turning on\u2026"))),
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
    first_start(dark=True),
    first_day(dark=True),
    newer_version(dark=True),
)
