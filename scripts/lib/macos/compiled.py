"""What the programs for macOS were compiled to use, against what the tree says: compiled.py BUILD

BUILD is the folder that scripts/check-macos built into. Two tables in tests/macos are compared with
it:

open-names.txt  the names that the linker left open and that are in none of Debian's libraries: what
                Qt has on macOS only. Any other open name is a misspelt one.
words.txt       for each adapter's object file the selectors that it sends, the methods that it has
                for the system to call, the classes and names of the system that it uses, and its
                texts, all of them; for other object files the texts that the outside knows, which
                must be among theirs.

With --print, prints words.txt as it would have to be, for the adapters.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).parents[3]
TABLES = ROOT / "tests/macos"
PROGRAMS = ("app/zorvane", "app/zorvane-update-agent", "tools/zorvane-inspect")
LIBRARIES = ("libQt6*.so.6", "libpng16.so.16", "libsimdjson.so.*")
# The compiler's own, in every object file.
RUNTIME = re.compile(
    r"_(_Z|__|objc_|OBJC_EHTYPE|OBJC_METACLASS|dispatch_|_dispatch|_Block|_NSConcrete|_os_log"
    r"|mem|str|bzero|Unwind|qt_version_tag)|__|dyld_")
# How a block's arguments are encoded, and what the standard library says of failures.
NOISE = re.compile(r"v\d+@\?|(basic_string|string_view::substr|vector|\(nullptr\)|bad_\w+)$")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def table(name):
    """The lines of a table without its comments, as {section: {line}}."""
    sections, current = {}, ""
    for line in (TABLES / name).read_text().splitlines():
        if line.startswith("["):
            current = line.strip("[]")
        elif line and not line.startswith("#"):
            sections.setdefault(current, set()).add(line)
    return sections


def differences(what, found, expected):
    """One line for each entry that is on one side only."""
    return [f"{what}: in the program, not in the table: {entry}" for entry in sorted(found - expected)
            ] + [f"{what}: in the table, not in the program: {entry}"
                 for entry in sorted(expected - found)]


def names_of_libraries():
    folder = pathlib.Path("/usr/lib/x86_64-linux-gnu")
    names = set()
    for pattern in LIBRARIES:
        for library in folder.glob(pattern):
            for line in output("llvm-nm-14", "-D", "--defined-only", library).splitlines():
                names.add("_" + line.split()[-1].split("@")[0])
    return names


def open_names(program):
    return {line.split()[2] for line in output("llvm-nm-14", "-m", program).splitlines()
            if line.endswith("(dynamically looked up)") and "(undefined)" in line}


def check_open_names(build):
    program_files = [path for name in PROGRAMS for path in found_programs(build, name)]
    names = set().union(*map(open_names, program_files)) - names_of_libraries()
    return differences("open names", names, table("open-names.txt").get("", set()))


def found_programs(build, name):
    """The program's file, in a bundle or not."""
    stem = pathlib.PurePath(name).name.lower()
    paths = [path for path in (build / name).parent.rglob("*")
             if path.is_file() and path.name.lower() == stem and path.read_bytes()[:4] == b"\xcf\xfa\xed\xfe"]
    if not paths:
        sys.exit(f"{name} was not built")
    return paths


def section(object_file, name):
    """The texts of a section of C strings, by address."""
    lines = output("llvm-objdump-14", "--macho", f"--section={name}", object_file).splitlines()
    return {int(line[:16], 16): line[16:].strip() for line in lines
            if re.match(r"[0-9a-f]{16}\s+\S", line)}


def selectors(object_file):
    """Those that are sent: the names that the code refers to, not those of whole protocols."""
    names = section(object_file, "__TEXT,__objc_methname")
    addresses = {line.split()[2]: int(line[:16], 16)
                 for line in output("llvm-nm-14", object_file).splitlines()
                 if "l_OBJC_METH_VAR_NAME_" in line}
    references = output("llvm-objdump-14", "-r", "--section=__objc_selrefs", object_file)
    return {names[addresses[line.split()[-1]]] for line in references.splitlines()
            if "l_OBJC_METH_VAR_NAME_" in line}


def methods(object_file):
    found = re.findall(r"[-+]\[\w+ [\w:]+\]", output("llvm-nm-14", object_file))
    return {f"method {method}" for method in found}


def wide_texts(object_file):
    with tempfile.NamedTemporaryFile() as dump:
        subprocess.run(["llvm-objcopy-14", f"--dump-section=__TEXT,__ustring={dump.name}",
                        object_file, "/dev/null"], stderr=subprocess.DEVNULL)
        texts = pathlib.Path(dump.name).read_bytes().decode("utf-16-le").split("\0")
    return {text for text in texts if text}


def words_of(object_file):
    """What an adapter's object file says to the system."""
    words = {f"selector {name}" for name in selectors(object_file)}
    words |= methods(object_file) | texts_of(object_file)
    for line in output("llvm-nm-14", "-u", "-j", object_file).splitlines():
        if line.startswith("_OBJC_CLASS_$_"):
            words.add("class " + line.removeprefix("_OBJC_CLASS_$_"))
        elif not RUNTIME.match(line):
            words.add("name " + line.removeprefix("_"))
    return words


def texts_of(object_file):
    """Its C strings, the framework's strings among them, and Qt's."""
    texts = wide_texts(object_file)
    for name in ("__TEXT,__cstring", "__TEXT,__oslogstring"):
        texts.update(section(object_file, name).values())
    return {f"text {text}" for text in texts if not NOISE.match(text)}


def object_files(build, suffix=".mm.o"):
    """The object files by the source's path in the tree."""
    for path in sorted(build.rglob(f"*{suffix}")):
        relative = path.relative_to(build).as_posix()
        yield re.sub(r"CMakeFiles/[^/]+\.dir/", "", relative).removesuffix(".o"), path


def check_words(build):
    expected = table("words.txt")
    problems = []
    adapters = {source: words_of(path) for source, path in object_files(build)}
    others = dict(object_files(build, ".cpp.o"))
    for source in sorted(adapters.keys() | {name for name in expected if name.endswith(".mm")}):
        problems += differences(source, adapters.get(source, set()), expected.get(source, set()))
    for source in sorted(name for name in expected if name.endswith(".cpp")):
        if source not in others:
            problems.append(f"{source} was not built")
            continue
        missing = expected[source] - texts_of(others[source])
        problems += [f"{source}: in the table, not in the program: {entry}"
                     for entry in sorted(missing)]
    return problems


def main():
    build = pathlib.Path(sys.argv[-1]).resolve()
    if "--print" in sys.argv:
        for source, path in object_files(build):
            print(f"\n[{source}]", *sorted(words_of(path)), sep="\n")
        return
    problems = check_open_names(build) + check_words(build)
    if problems:
        sys.exit("\n".join(problems))
    print("Each open name is Qt's, and each word of the adapters is in the table.")


if __name__ == "__main__":
    main()
