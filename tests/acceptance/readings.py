"""What assistive technology reads of each part of the windows."""

HEADER = """\
heading: Zorvane
label: Control which apps can access the network
push button: Show getting started
"""

UPDATE = """\
heading: Zorvane 99.0 is available
label: A new version is ready to download.
push button: Download Update
push button: Remind me next time
"""

INSTALLATION = """\
heading: Finish installing Zorvane
label: macOS can only enable Zorvane's network extension when the app is in the Applications \
folder. Quit this copy, drag Zorvane from Downloads into Applications, then open it there.
push button: Open Finder Folders
push button: Quit Zorvane
"""

APPROVAL = """\
heading: Finish enabling protection
label: macOS is waiting for you to approve Zorvane.
label: 1. Open System Settings.
label: 2. Scroll to Extensions and choose By Category.
label: 3. If Network Extensions is listed, open it and enable Zorvane.
label: 4. If it is not listed yet, return here and retry activation.
push button: Open System Settings
push button: Retry Activation
"""

DROP_ZONE = """\
panel: Drop zone for an application
label: Drop an app here
label: Choose an app in Finder to block its new network connections.
heading: Blocked apps
"""

EMPTY_LIST = """\
label: 0
label: No blocked apps
label: Apps you add will appear here.
"""

EXPLANATION = (
    "Move Zorvane to your Mac's Applications folder, quit this copy, and open it again from"
    " Applications before turning on protection."
)

ALERT = f"""\
alert: Zorvane ({EXPLANATION})
label: Zorvane
label: {EXPLANATION}
push button: OK
"""


def row(name, identifier, processes, unfolded=False, lines=""):
    return f"""\
list item: {name} ({identifier})
label: {name}
label: {identifier}
label: Blocked
push button: {processes} ({name}){" [checked]" if unfolded else ""}
push button: Remove from list ({name})
{lines}"""


MEADOW_PLAYER = row("Meadow Player", "com.example.meadow-player", "1 network process")
QUILL_MAIL = row("Quill Mail", "com.example.quill-mail", "2 network processes")
UNFOLDED_QUILL_MAIL = row(
    "Quill Mail", "com.example.quill-mail", "2 network processes", unfolded=True, lines="""\
list: Network processes
list item: Quill Mail (Main app)
label: Quill Mail
label: Main app
list item: Quill Courier (Bundled)
label: Quill Courier
label: Bundled
""",
)


def page(number, title, message, forward="Continue"):
    return f"""\
dialog: {title}
heading: {title}
label: {message}
push button: Skip (Close the tutorial)
push button: Back
image: Page {number} of 4
push button: {forward}
"""


GUIDE = (
    page(
        1, "Welcome to Zorvane",
        "A simple, private way to stop selected apps from accessing the internet. Network"
        " decisions happen locally on your Mac.",
    ),
    page(
        2, "Turn On Protection",
        "Use the switch in the top-right corner. If macOS needs approval, Zorvane will show the"
        " exact steps and a button to open System Settings.",
    ),
    page(
        3, "Drop In an App",
        "Drag any .app from Finder into Zorvane. Its embedded helpers are added automatically."
        " Expand the app's network-process list to see helpers and background services as they are"
        " detected.",
    ),
    page(
        4, "You're Ready",
        "Remove an app from the list whenever you want to restore access. Use the question mark in"
        " the header to view this guide again.",
        forward="Get Started",
    ),
)

SETTINGS = """\
heading: Protection
check box: Enable network filter
label: macOS asks for permission before enabling the extension for the first time.
heading: Updates
label: Current version (1.0.0 (1))
push button: Check for Updates
"""

CHECK_FAILED = (
    "Zorvane could not check for updates. Check your internet connection and try again."
)

SEPARATOR = "separator: "

MENU = f"""\
menu item: About Zorvane
menu item: Check for Updates…
{SEPARATOR}
menu item: Settings… (Ctrl+,)
{SEPARATOR}
menu item: Quit Zorvane (Ctrl+Q)
"""
