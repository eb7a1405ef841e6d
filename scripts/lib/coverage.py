"""coverage.py FILE...: reads what llvm-cov exports, and prints lines and branches of each of these
files and in all. Fails if less than 95 % is reached of either.

A branch is one way that a condition can go. A template counts as reached where any use of it is.
"""

import json
import os
import sys


def lines_of(segments):
    """Line numbers with code, and how often the best of each was run."""
    counts = {}
    for (line, _, count, has_count, _, is_gap), following in zip(segments, segments[1:]):
        if not has_count or is_gap:
            continue
        for each in range(line, max(line, following[0] - (following[1] == 1)) + 1):
            counts[each] = max(counts.get(each, 0), count)
    return counts


def ways_of(branches):
    """Each way of each condition, by place, and how often it was taken."""
    ways = {}
    for line, column, end_line, end_column, taken, not_taken, *_ in branches:
        for way, count in ((True, taken), (False, not_taken)):
            place = (line, column, end_line, end_column, way)
            ways[place] = ways.get(place, 0) + count
    return ways


# Of all lines, and of all branches.
GOAL = 95


def percent(part, whole):
    return 100 * part / whole if whole else 100


def row(name, lines, ways, missing=""):
    reached = [sum(count > 0 for count in each) for each in (lines, ways)]
    return (
        f"{name:45}{reached[0]:5} of {len(lines):5} {percent(reached[0], len(lines)):6.1f} %"
        f"{reached[1]:6} of {len(ways):5} {percent(reached[1], len(ways)):6.1f} %  {missing}"
    ).rstrip()


def reached_files(export, wanted):
    """Lines and ways of each wanted file, which may have been compiled under several names."""
    found = {}
    for file in export["data"][0]["files"]:
        name = os.path.relpath(os.path.abspath(file["filename"]))
        if name not in wanted:
            continue
        lines, ways = found.setdefault(name, ({}, {}))
        for line, count in lines_of(file["segments"]).items():
            lines[line] = max(lines.get(line, 0), count)
        for place, count in ways_of(file["branches"]).items():
            ways[place] = ways.get(place, 0) + count
    return found


def main():
    all_lines, all_ways = [], []
    print(f"{'':45}{'lines':>21}{'branches':>23}  not reached, by line")
    files = reached_files(json.load(sys.stdin), set(sys.argv[1:]))
    # A header may be without code; a source that no test links has all of it unreached.
    absent = [name for name in sys.argv[1:] if name.endswith(".cpp") and name not in files]
    if absent:
        sys.exit("in no test: " + " ".join(absent))
    for name, (lines, ways) in sorted(files.items()):
        if not lines:
            continue
        missing = sorted(
            {line for line, count in lines.items() if not count}
            | {place[0] for place, count in ways.items() if not count}
        )
        print(row(name, lines.values(), ways.values(), " ".join(map(str, missing))))
        all_lines += lines.values()
        all_ways += ways.values()
    print(row("in all", all_lines, all_ways))
    return all(
        percent(sum(count > 0 for count in each), len(each)) >= GOAL
        for each in (all_lines, all_ways)
    )


if __name__ == "__main__":
    sys.exit(0 if main() else 1)
