"""Looks whether a bundle for macOS is whole and consistent. Needs no Mac.

bundle.py lint FILE...             every file is a property list that can be read
bundle.py extension PATH ID        PATH is a filter extension with this identifier
bundle.py check APP ENTITLEMENTS [--qt]
                                   APP, signed with these entitlements, is all that the system
                                   looks at; --qt: with Qt's parts

Each problem is one line on standard error; any makes the exit status 1.
"""

import pathlib
import plistlib
import sys

MACH_O = (b"\xcf\xfa\xed\xfe", b"\xca\xfe\xba\xbe")
CONTENT_FILTER = "content-filter-provider"
EXTENSION_FILTER = "content-filter-provider-systemextension"
FILTER_DATA = "com.apple.networkextension.filter-data"
NETWORK_EXTENSION = "com.apple.developer.networking.networkextension"
INSTALLS_EXTENSIONS = "com.apple.developer.system-extension.install"
GROUPS = "com.apple.security.application-groups"
SANDBOX = "com.apple.security.app-sandbox"


class Problem(Exception):
    """What is wrong, for a person."""


def property_list(path):
    """The dictionary in a property list."""
    try:
        content = plistlib.loads(pathlib.Path(path).read_bytes())
    except OSError as error:
        raise Problem(f"{path}: {error.strerror}") from error
    except Exception as error:  # plistlib lets the errors of its parsers through
        raise Problem(f"{path}: not a property list ({error})") from error
    if not isinstance(content, dict):
        raise Problem(f"{path}: not a property list of a dictionary")
    return content


def is_program(path):
    """Whether a file is code for macOS that may be run."""
    if path.is_symlink() or not path.is_file() or not path.stat().st_mode & 0o100:
        return False
    with path.open("rb") as file:
        return file.read(4) in MACH_O


def unequal(path, content, wanted):
    """A problem for each key whose value is not the wanted one."""
    return [f"{path}: {key} is {content.get(key)!r}, not {value!r}"
            for key, value in wanted.items() if content.get(key) != value]


def missing_texts(path, content, keys):
    """A problem for each key without a text."""
    return [f"{path}: {key} is missing" for key in keys
            if not isinstance(content.get(key), str) or not content[key]]


def main_program_problems(bundle, information):
    """Whether the program that Info.plist names is there."""
    name = information.get("CFBundleExecutable")
    if not isinstance(name, str) or not name or "/" in name:
        return [f"{bundle}/Contents/Info.plist: CFBundleExecutable names no program"]
    program = bundle / "Contents/MacOS" / name
    return [] if is_program(program) else [f"{program}: not a program for macOS"]


def extension_problems(path, identifier):
    """What the system would refuse an embedded filter extension for."""
    name = f"{identifier}.systemextension"
    if not path.is_dir():
        return [f"{path}: there is no such folder"]
    problems = []
    if path.name != name:
        problems.append(f"{path}: has to be called {name}")
    information_path = path / "Contents/Info.plist"
    information = property_list(information_path)
    problems += unequal(information_path, information,
                        {"CFBundleIdentifier": identifier, "CFBundlePackageType": "SYSX"})
    problems += missing_texts(information_path, information, [
        "CFBundleShortVersionString", "CFBundleVersion", "NSSystemExtensionUsageDescription"])
    problems += provider_problems(information_path, information, group_of_extension(identifier))
    return problems + main_program_problems(path, information)


def group_of_extension(identifier):
    """The application group that a filter extension of this identifier shares with its program."""
    return "group." + identifier.rpartition(".")[0]


def provider_problems(path, information, group):
    """Whether the filter is said to be one, and can be reached under a name that is the group's."""
    network = information.get("NetworkExtension")
    if not isinstance(network, dict):
        return [f"{path}: NetworkExtension is missing"]
    problems = []
    providers = network.get("NEProviderClasses")
    provider = providers.get(FILTER_DATA) if isinstance(providers, dict) else None
    if not isinstance(provider, str) or not provider:
        problems.append(f"{path}: NetworkExtension names no filter-data provider")
    service = network.get("NEMachServiceName")
    if not isinstance(service, str) or not f"{service}.".startswith(f"{group}."):
        problems.append(f"{path}: NEMachServiceName of NetworkExtension is {service!r}; "
                        f"it has to begin with {group}")
    return problems


def information_problems(path, information):
    """Whether the program's Info.plist says all that it has to."""
    problems = unequal(path, information, {
        "CFBundlePackageType": "APPL",
        "NSHighResolutionCapable": True,
        "NSPrincipalClass": "NSApplication",
    })
    problems += missing_texts(path, information, [
        "CFBundleIdentifier", "CFBundleName", "CFBundleShortVersionString", "CFBundleVersion",
        "LSApplicationCategoryType", "LSMinimumSystemVersion", "NSSystemExtensionUsageDescription",
    ])
    build = information.get("CFBundleVersion", "")
    if build and not (build.isascii() and build.isdigit()):
        problems.append(f"{path}: CFBundleVersion is {build!r}, not a whole number")
    return problems


def icon_problems(app, information):
    """Whether the icon that Info.plist names is an icon family of the length that it tells."""
    name = information.get("CFBundleIconFile")
    if not isinstance(name, str) or not name:
        return [f"{app}/Contents/Info.plist: CFBundleIconFile is missing"]
    path = app / "Contents/Resources" / name
    if not path.is_file():
        return [f"{path}: there is no icon"]
    content = path.read_bytes()
    if content[:4] != b"icns" or int.from_bytes(content[4:8], "big") != len(content):
        return [f"{path}: not an icon family"]
    return []


def agent_problems(app, identifier):
    """Whether each agent in the bundle is one that the system starts as part of it."""
    agents = sorted((app / "Contents/Library/LaunchAgents").glob("*"))
    if not agents:
        return [f"{app}/Contents/Library/LaunchAgents: there is no update agent"]
    problems = []
    for path in agents:
        agent = property_list(path)
        label = path.name.removesuffix(".plist")
        problems += unequal(path, agent, {
            "Label": label, "AssociatedBundleIdentifiers": [identifier], "ProcessType": "Background"})
        if not label.startswith(identifier + "."):
            problems.append(f"{path}: its name has to begin with {identifier}.")
        if not {"StartInterval", "StartCalendarInterval"} & agent.keys():
            problems.append(f"{path}: nothing says when it runs")
        program = agent.get("BundleProgram")
        if not isinstance(program, str) or not is_program(app / program):
            problems.append(f"{path}: BundleProgram {program!r} is no program in the bundle")
    return problems


def embedded_extension_problems(app, identifier):
    """Whether what lies among the system extensions is our filter."""
    found = sorted((app / "Contents/Library/SystemExtensions").glob("*"))
    if len(found) > 1:
        return [f"{found[1]}: one system extension is enough"]
    return [line for path in found
            for line in extension_problems(path, f"{identifier}.FilterExtension")]


def entitlement_problems(path, identifier):
    """Whether the entitlements are those that the program's work takes, and no sandbox."""
    entitlements = property_list(path)
    problems = unequal(path, entitlements, {INSTALLS_EXTENSIONS: True})
    if entitlements.get(NETWORK_EXTENSION) not in ([EXTENSION_FILTER], [CONTENT_FILTER]):
        problems.append(f"{path}: {NETWORK_EXTENSION} does not name the content filter alone")
    group = f"group.{identifier}"
    if group not in (entitlements.get(GROUPS) or []):
        problems.append(f"{path}: {group} is not among the application groups")
    if SANDBOX in entitlements:
        problems.append(f"{path}: a sandbox would keep the program from reading other apps")
    return problems


def qt_problems(app):
    """Whether Qt's deployment tool has brought what a window takes."""
    wanted = ["Frameworks/QtCore.framework", "Frameworks/QtQuick.framework",
              "PlugIns/platforms/libqcocoa.dylib", "Resources/qml/QtQuick/qmldir",
              "Resources/qt.conf"]
    return [f"{app}/Contents/{place}: missing; Qt's deployment has to bring it"
            for place in wanted if not (app / "Contents" / place).exists()]


def bundle_problems(app, entitlements, with_qt):
    """All that is wrong with the application's bundle."""
    information_path = app / "Contents/Info.plist"
    information = property_list(information_path)
    identifier = information.get("CFBundleIdentifier", "")
    problems = information_problems(information_path, information)
    problems += main_program_problems(app, information)
    problems += icon_problems(app, information)
    problems += agent_problems(app, identifier)
    problems += embedded_extension_problems(app, identifier)
    problems += entitlement_problems(entitlements, identifier)
    return problems + (qt_problems(app) if with_qt else [])


def problems_of(arguments):
    """What the command line asks for; a problem a line."""
    command, *rest = arguments or [""]
    if command == "lint" and rest:
        for path in rest:
            property_list(path)
        return []
    if command == "extension" and len(rest) == 2:
        return extension_problems(pathlib.Path(rest[0]), rest[1])
    if command == "check" and len(rest) in (2, 3) and rest[2:] in ([], ["--qt"]):
        return bundle_problems(pathlib.Path(rest[0]), rest[1], with_qt=len(rest) == 3)
    return [__doc__]


def exit_status(problems_of_arguments):
    """Prints, a line each, the problems that a command's arguments lead to."""
    try:
        problems = problems_of_arguments(sys.argv[1:])
    except Problem as problem:
        problems = [str(problem)]
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(exit_status(problems_of))
