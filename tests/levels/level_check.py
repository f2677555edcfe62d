"""Compares the includes of the plug-in with its levels (plugin/levels.txt).

    level_check.py ROOT     prints what is wrong and ends with 1 if anything is: an include that goes up a level, folders
                            that include each other in a circle, a folder that no level has or that is not there
"""
import pathlib
import re
import sys

TOP = ["plugin", "helpers", "timeline", "keys", "undo", "files"]
INCLUDE = re.compile(r'^#include "((?:%s)/[^"]+)"' % "|".join(TOP), re.MULTILINE)


def read_levels(text):
    """The number of each folder's level, the lowest 0."""
    lines = [line for line in text.splitlines() if line.strip() and not line.startswith("#")]
    return {folder: number for number, line in enumerate(lines) for folder in line.partition(":")[2].split()}


def folder_of(name):
    return name.rpartition("/")[0]


def read_includes(root):
    """The headers of the plug-in that each of its sources includes."""
    includes = {}
    for top in TOP:
        for path in sorted((root / top).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                includes[path.relative_to(root).as_posix()] = INCLUDE.findall(path.read_text())
    return includes


def circles(edges):
    """The folders that reach themselves, of pairs of a folder and one that it includes."""
    reached = {}
    for start in {source for source, _ in edges}:
        seen, waiting = set(), [start]
        while waiting:
            here = waiting.pop()
            found = {target for source, target in edges if source == here} - seen
            seen |= found
            waiting += found
        reached[start] = seen
    return sorted(folder for folder, seen in reached.items() if folder in seen)


def faults(includes, levels):
    """Lines that say what is wrong."""
    folders = {folder_of(source) for source in includes}
    for folder in sorted(folders - set(levels)):
        yield f"{folder} is in no level"
    for folder in sorted(set(levels) - folders):
        yield f"{folder} is in a level, and not there"
    edges = set()
    for source, headers in sorted(includes.items()):
        own = folder_of(source)
        for header in headers:
            other = folder_of(header)
            if levels.get(other, -1) > levels.get(own, len(levels)):
                yield f"goes up: {source} includes {header}"
            if other != own:
                edges.add((own, other))
    for folder in circles(edges):
        yield f"in a circle: {folder}"


def main(root):
    found = list(faults(read_includes(root), read_levels((root / "plugin/levels.txt").read_text())))
    print("\n".join(found) or "no include goes up, no circle of folders")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
