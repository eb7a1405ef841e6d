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
            ("empty", "Nothing is blocked yet.", lambda guest: guest.look("No blocked apps")),
            ("hovering", "A bundle from the file manager hovers over the drop zone.",
             lambda guest: guest.hover("Atlas Notes.app")),
            ("awaiting-approval", "It is listed; the system asks for approval first.",
             lambda guest: (guest.drop(), guest.look("Finish enabling protection"))),
            ("system-settings", "The simulated system's settings, where the extension is allowed.",
             lambda guest: guest.open_system_settings()),
            ("protection-on", "Allowed: protection is on and the application is blocked.",
             lambda guest: (guest.allow(), guest.look("Protection on"))),
            ("adding", "A big bundle is being inspected; the window stays usable.",
             lambda guest: (bundles.fill(guest.folder / "Harbor Sync.app"),
                            guest.hover("Harbor Sync.app"), guest.drop(),
                            guest.catch("Adding application"))),
            ("list", "Several applications, sorted by name.",
             lambda guest: (guest.zorvane.screen.find("Harbor Sync", "list item", 120),
                            guest.add("Quill Mail", "Meadow Player"), guest.look("Quill Mail"))),
            ("unfolded", "What an application runs as: itself, its helpers, and what the filter saw.",
             lambda guest: (guest.observe(), guest.click("4 network processes"),
                            guest.look("Main app", "Bundled", "Observed"))),
            ("alert", "A dropped file that is no application is refused.",
             lambda guest: (guest.hover("letter.txt"), guest.drop(),
                            guest.look("Drop an application with the .app extension."))),
            ("protection-off", "The switch turns protection off; the list stays.",
             lambda guest: (guest.click("OK"), guest.click("4 network processes"),
                            guest.click("Protection", "check box"), guest.look("Protection off"))),
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
            (f"guide-{number}", account, lambda guest, number=number, title=title: (
                number > 1 and guest.click("Continue"), guest.look(title)))
            for number, (title, account) in enumerate(pages, 1)
        ) + (
            ("installation-required", "Started from Downloads: it has to be moved first.",
             lambda guest: (guest.click("Get Started"), guest.look("Finish installing Zorvane"))),
            ("explanation", "A tap on the switch that cannot be used says why.",
             lambda guest: (guest.click("Explain why protection is unavailable"),
                            guest.look("OK"))),
            ("settings-explanation", "The settings show the same alert; one OK closes both.",
             lambda guest: guest.open_settings()),
            ("settings-misplaced", "The settings of a program that has to be moved.",
             lambda guest: guest.click("OK")),
        ),
    )


def newer_version(dark=False):
    return Scene(
        preferences={"updates.cachedManifest": NEWER_VERSION.encode()},
        dark=dark,
        steps=(
            ("update", "There is a newer version; a click opens its page.",
             lambda guest: guest.look("Zorvane 1.3 is available")),
            ("settings-update", "The settings name it too.",
             lambda guest: guest.open_settings()),
        ),
    )


def rarely_seen(dark=False):
    """What no other scene comes by: menu, about window, settings as they mostly are."""
    return Scene(
        dark=dark,
        steps=(
            ("menu", "The application's menu, in a menu bar of the window's own.",
             lambda guest: (guest.look("No blocked apps"), guest.click("Zorvane", "menu item"),
                            guest.look("Quit Zorvane"))),
            ("about", "What there is to say about the program.",
             lambda guest: (guest.press("Escape"), guest.open_about())),
            ("settings", "The settings, opened by Ctrl and the comma.",
             lambda guest: guest.open_settings()),
            ("settings-checked", "A check for updates that could not be made says so.",
             lambda guest: (guest.click("Check for Updates"),
                            guest.zorvane.screen.find("Zorvane could not check for updates. "
                                                      "Check your internet connection and try "
                                                      "again."))),
        ),
    )


def slow_activation(dark=False):
    return Scene(
        system={"activationDelay": 60},
        dark=dark,
        steps=(
            ("activating", "The extension is being activated.",
             lambda guest: (guest.look("Protection off"), guest.click("Protection", "check box"),
                            guest.catch("Turning on\u2026"))),
        ),
    )


def failure(dark=False):
    return Scene(
        system={"faults": [{"operation": "save", "domain": "NEFilterErrorDomain", "code": 4,
                            "description": "The configuration is invalid."}]},
        dark=dark,
        steps=(
            ("failed", "The filter could not be set up; the list says why.",
             lambda guest: (guest.add("Quill Mail"), guest.look("Action required"))),
        ),
    )


SCENES = tuple(
    scene(dark)
    for dark in (False, True)
    for scene in (first_start, first_day, newer_version, rarely_seen, slow_activation, failure)
)
