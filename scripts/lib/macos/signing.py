"""What a signer has to know of a bundle for macOS. Needs no Mac.

signing.py code APP                 prints the files in the bundle that are code
signing.py order APP                prints what is signed, what lies inside first; APP comes last
signing.py entitlements BASE PROFILE IDENTIFIER
                                    prints the entitlements BASE as the holder of the provisioning
                                    profile signs a program of this identifier with them
signing.py granted ENTITLEMENTS PROFILE
                                    whether the profile grants the entitlements

PROFILE is the property list in a profile. Each problem is one line on standard error; any makes the
exit status 1.
"""

import datetime
import os
import pathlib
import plistlib
import sys

from bundle import CONTENT_FILTER, EXTENSION_FILTER, GROUPS, MACH_O, NETWORK_EXTENSION
from bundle import Problem, exit_status, property_list

BUNDLES = (".app", ".appex", ".bundle", ".framework", ".plugin", ".systemextension", ".xpc")
IDENTIFIER = "com.apple.application-identifier"
TEAM = "com.apple.developer.team-identifier"
# What a profile has to grant; the others everybody may have.
RESTRICTED = ("com.apple.developer.", GROUPS, IDENTIFIER)


def is_code(path):
    """Whether a file is code for macOS, a library or a program."""
    if path.is_symlink() or not path.is_file():
        return False
    with path.open("rb") as file:
        return file.read(4) in MACH_O


def main_code(bundle):
    """The program or library that is signed as a part of the bundle, where there is one."""
    if bundle.suffix == ".framework":
        # The name at the top is a link into the version in use.
        return (bundle / bundle.stem).resolve()
    information = bundle / "Contents/Info.plist"
    if not information.exists():
        return None
    return bundle / "Contents/MacOS" / property_list(information).get("CFBundleExecutable", "")


def code_files(app):
    """Every library and program in the bundle, each once."""
    return [path for folder, _, names in os.walk(app)
            for path in (pathlib.Path(folder, name) for name in names) if is_code(path)]


def bundles_in(app):
    """The bundle and every one in it, each once."""
    inside = [pathlib.Path(folder, name) for folder, names, _ in os.walk(app) for name in names]
    return [app] + [path for path in inside
                    if path.suffix in BUNDLES and not path.is_symlink()]


def signing_order(app):
    """Every piece of code in the bundle, files and bundles; what contains another comes after."""
    app = pathlib.Path(app).resolve()
    bundles = bundles_in(app)
    with_bundle = {main_code(bundle) for bundle in bundles}
    order = [path for path in code_files(app) if path not in with_bundle] + bundles
    return sorted(order, key=lambda path: (-len(path.parts), path))


def grants(granted, wanted):
    """Whether a profile's value allows a program's."""
    if isinstance(wanted, list):
        return isinstance(granted, list) and all(
            any(grants(one, value) for one in granted) for value in wanted)
    if isinstance(granted, str) and isinstance(wanted, str) and granted.endswith("*"):
        return wanted.startswith(granted[:-1])
    return granted == wanted


def signed_entitlements(base, profile, identifier):
    """The entitlements with the signer's team in them, and the filter named as the profile does."""
    entitlements, content = property_list(base), property_list(profile)
    teams = content.get("TeamIdentifier")
    if not isinstance(teams, list) or not teams:
        raise Problem(f"{profile}: the profile names no team")
    entitlements[IDENTIFIER] = f"{teams[0]}.{identifier}"
    entitlements[TEAM] = teams[0]
    granted = (content.get("Entitlements") or {}).get(NETWORK_EXTENSION) or []
    if EXTENSION_FILTER not in granted and CONTENT_FILTER in granted:
        # A profile for development knows the filter by the older name.
        entitlements[NETWORK_EXTENSION] = [CONTENT_FILTER]
    return entitlements


def profile_problems(entitlements, profile):
    """Why the system would not start a program with these entitlements and this profile."""
    content = property_list(profile)
    problems = []
    expires = content.get("ExpirationDate")
    now = datetime.datetime.now(datetime.timezone.utc).replace(tzinfo=None)
    if not isinstance(expires, datetime.datetime) or expires < now:
        problems.append(f"{profile}: the profile has run out ({expires})")
    granted = content.get("Entitlements") or {}
    problems += [
        f"{profile}: the profile grants {key} as {granted.get(key)!r}, not {value!r}"
        for key, value in property_list(entitlements).items()
        if key.startswith(RESTRICTED) and not grants(granted.get(key), value)]
    return problems


def run(arguments):
    """Does what the command line asks for; a problem a line."""
    command, *rest = arguments or [""]
    if command == "code" and len(rest) == 1:
        print(*code_files(rest[0]), sep="\n")
        return []
    if command == "order" and len(rest) == 1:
        print(*signing_order(rest[0]), sep="\n")
        return []
    if command == "entitlements" and len(rest) == 3:
        sys.stdout.buffer.write(plistlib.dumps(signed_entitlements(*rest)))
        return []
    if command == "granted" and len(rest) == 2:
        return profile_problems(*rest)
    return [__doc__]


if __name__ == "__main__":
    sys.exit(exit_status(run))
