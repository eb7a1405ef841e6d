"""Bundles for macOS, made of a few bytes in a folder of their own, and what signs them."""

import datetime
import pathlib
import plistlib
import shutil
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(SOURCE / "scripts/lib/macos"))

IDENTIFIER = "dev.kestrelworks.Zorvane"
EXTENSION = IDENTIFIER + ".FilterExtension"
ENTITLEMENTS = SOURCE / "packaging/macos/Zorvane.entitlements"
AGENT = SOURCE / f"packaging/macos/{IDENTIFIER}.update-agent.plist"
CODE = b"\xcf\xfa\xed\xfe code"


def write(path, content, mode=0o644):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)
    path.chmod(mode)


def write_list(path, content):
    write(path, plistlib.dumps(content))


def change_list(path, **changes):
    """Sets keys of a property list; None takes one away."""
    content = plistlib.loads(path.read_bytes())
    content.update(changes)
    write_list(path, {key: value for key, value in content.items() if value is not None})


def write_profile(path, filters=("content-filter-provider-systemextension",), days=30, **more):
    """The property list of a provisioning profile for so many days; more is granted by name."""
    expires = datetime.datetime.now().replace(microsecond=0) + datetime.timedelta(days)
    granted = {
        "com.apple.application-identifier": f"ABCDE12345.{IDENTIFIER}",
        "com.apple.developer.networking.networkextension": [
            "packet-tunnel-provider-systemextension", *filters],
        "com.apple.developer.system-extension.install": True,
        "com.apple.developer.team-identifier": "ABCDE12345",
        "com.apple.security.application-groups": [f"group.{IDENTIFIER}", "ABCDE12345.*"],
    }
    write_list(path, {"TeamIdentifier": ["ABCDE12345"], "ExpirationDate": expires,
                      "Entitlements": granted | more})


class MadeBundles(unittest.TestCase):
    """A folder with the application's bundle in it, whole but for Qt and the extension."""

    def setUp(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        self.folder = pathlib.Path(folder).resolve()
        self.app = self.folder / "Zorvane.app"
        self.contents = self.app / "Contents"
        self.information = self.contents / "Info.plist"
        self.agent = self.contents / "Library/LaunchAgents" / AGENT.name
        text = (SOURCE / "packaging/macos/Info.plist.in").read_text()
        for name, value in {"identifier": IDENTIFIER, "PROJECT_VERSION": "1.2.3",
                            "ZORVANE_BUILD": "7", "CMAKE_OSX_DEPLOYMENT_TARGET": "13.0"}.items():
            text = text.replace(f"@{name}@", value)
        write(self.information, text.encode())
        write(self.contents / "MacOS/Zorvane", CODE, 0o755)
        write(self.contents / "MacOS/zorvane-update-agent", CODE, 0o755)
        write(self.contents / "Resources/Zorvane.icns", b"icns\0\0\0\x08")
        write(self.agent, AGENT.read_bytes())

    def make_extension(self, folder):
        """A filter extension in the folder."""
        extension = folder / f"{EXTENSION}.systemextension"
        write(extension / "Contents/MacOS/Filter", CODE, 0o755)
        write_list(extension / "Contents/Info.plist", {
            "CFBundleIdentifier": EXTENSION,
            "CFBundlePackageType": "SYSX",
            "CFBundleExecutable": "Filter",
            "CFBundleShortVersionString": "1.2.3",
            "CFBundleVersion": "7",
            "NSSystemExtensionUsageDescription": "It filters.",
            "NetworkExtension": {
                "NEMachServiceName": f"group.{IDENTIFIER}.filter",
                "NEProviderClasses": {"com.apple.networkextension.filter-data": "Filter.Provider"},
            },
        })
        return extension

    def embed_extension(self):
        return self.make_extension(self.contents / "Library/SystemExtensions")
