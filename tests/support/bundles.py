"""Small application bundles, genuinely signed: their programs are linked for macOS by lld, which
signs what it links. The applications are invented.

As a program: bundles.py FOLDER builds all of them there.
"""

import os
import pathlib
import plistlib
import struct
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field

_ICONS = pathlib.Path(__file__).parent / "icons"

# Sizes of an .icns file that hold PNG images, by their types.
_ICON_TYPES = {b"ic07": 128, b"ic08": 256, b"ic09": 512}


@dataclass(frozen=True)
class Application:
    name: str
    identifier: str
    icon: str
    # Names of programs below Contents/Helpers.
    helpers: tuple = field(default=())


ATLAS_NOTES = Application(
    "Atlas Notes", "com.example.atlas-notes", "atlas-notes", ("Atlas Indexer", "Atlas Sync")
)
MEADOW_PLAYER = Application("Meadow Player", "com.example.meadow-player", "meadow-player")
QUILL_MAIL = Application("Quill Mail", "com.example.quill-mail", "quill-mail", ("Quill Courier",))
HARBOR_SYNC = Application("Harbor Sync", "com.example.harbor-sync", "harbor-sync")
APPLICATIONS = (ATLAS_NOTES, MEADOW_PLAYER, QUILL_MAIL, HARBOR_SYNC)


def build(application, folder):
    """Lays the bundle out in a folder and returns its path."""
    bundle = pathlib.Path(folder) / f"{application.name}.app"
    contents = bundle / "Contents"
    for part in ("MacOS", "Resources", "Helpers"):
        (contents / part).mkdir(parents=True)
    information = {
        "CFBundleExecutable": application.name,
        "CFBundleIconFile": "AppIcon",
        "CFBundleIdentifier": application.identifier,
        "CFBundleName": application.name,
        "CFBundlePackageType": "APPL",
        "CFBundleShortVersionString": "1.0",
        "CFBundleVersion": "1",
    }
    (contents / "Info.plist").write_bytes(plistlib.dumps(information))
    link_program(contents / "MacOS" / application.name)
    for helper in application.helpers:
        link_program(contents / "Helpers" / helper)
    _write_icon(_ICONS / f"{application.icon}.svg", contents / "Resources/AppIcon.icns")
    return bundle


def link_program(path):
    """A program for macOS on Arm. Its signing identifier is its file name; it has no team."""
    with tempfile.TemporaryDirectory() as folder:
        compiled = pathlib.Path(folder) / "main.o"
        subprocess.run(
            ["clang", "--target=arm64-apple-macos11", "-ffreestanding", "-xc", "-c", "-",
             "-o", compiled],
            input=b"int main(void) { return 0; }\n", check=True,
        )
        subprocess.run(
            ["lld", "-flavor", "darwin", "-arch", "arm64", "-platform_version", "macos", "11.0",
             "11.0", "-e", "_main", "-o", path, compiled],
            check=True,
        )


def fill(bundle, programs=200_000):
    """Fills a bundle with programs that an inspection has to read, as hard links to a few, so that
    inspecting it takes a while."""
    helpers = bundle / "Contents/Helpers"
    original = None
    for number in range(programs):
        if number % 20_000 == 0:
            original = helpers / f"{bundle.stem} Worker {number // 20_000}"
            link_program(original)
        else:
            os.link(original, helpers / f"{number}")


def _write_icon(drawing, path):
    entries = b""
    for kind, size in _ICON_TYPES.items():
        image = subprocess.run(
            ["rsvg-convert", "-w", str(size), "-h", str(size), drawing],
            stdout=subprocess.PIPE, check=True,
        ).stdout
        entries += kind + struct.pack(">I", len(image) + 8) + image
    path.write_bytes(b"icns" + struct.pack(">I", len(entries) + 8) + entries)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: bundles.py FOLDER")
    for each in APPLICATIONS:
        print(build(each, sys.argv[1]))
