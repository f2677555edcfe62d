"""Compares the includes of the plug-in that go up a level with the list of those that are still there.

    upward_includes.py ROOT            ends with 1 if an include goes up that is not listed, or a listed one is gone
    upward_includes.py ROOT --write    writes the list anew
"""
import fnmatch
import pathlib
import re
import sys

FOLDERS = ["plugin", "helpers", "timeline", "keys", "undo", "files"]
HERE = pathlib.Path(__file__).parent
LEVELS = HERE.parent.parent / "plugin/levels.txt"
LISTED = HERE / "upward_includes.txt"
INCLUDE = re.compile(r'^#include "((?:%s)/[^"]+)"' % "|".join(FOLDERS), re.MULTILINE)


def read_levels():
    """Pairs of a level's name and its patterns, the lowest first."""
    levels = []
    for line in LEVELS.read_text().splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        name, colon, files = line.partition(":")
        if colon:
            levels.append((name, []))
        levels[-1][1].extend((files if colon else line).split())
    return levels


def level_of(path, levels):
    """The level that names the file, or whose pattern fits it; None for a file that no level has."""
    stem = path.rsplit(".", 1)[0]
    for number, (_, patterns) in enumerate(levels):
        if stem in patterns:
            return number
    for number, (_, patterns) in enumerate(levels):
        if any(fnmatch.fnmatchcase(stem, pattern) for pattern in patterns):
            return number
    return None


def sources(root):
    for folder in FOLDERS:
        yield from (path for path in sorted((root / folder).rglob("*")) if path.suffix in (".h", ".cpp"))


def upward_includes(root, levels):
    """Lines "level -> level: file: header", and the files that no level has."""
    upward, homeless = [], []
    for path in sources(root):
        name = path.relative_to(root).as_posix()
        own = level_of(name, levels)
        if own is None:
            homeless.append(name)
            continue
        for header in INCLUDE.findall(path.read_text()):
            above = level_of(header, levels)
            if above is not None and above > own:
                upward.append(f"{levels[own][0]} -> {levels[above][0]}: {name}: {header}")
    return sorted(upward), homeless


def main(root, write):
    levels = read_levels()
    upward, homeless = upward_includes(root, levels)
    for name in homeless:
        print(f"{name} is in no level of levels.txt")
    if write:
        LISTED.write_text("".join(line + "\n" for line in upward))
        return 0
    listed = LISTED.read_text().splitlines()
    for line in sorted(set(upward) - set(listed)):
        print(f"goes up: {line}")
    for line in sorted(set(listed) - set(upward)):
        print(f"is gone, take it out of {LISTED.name}: {line}")
    print(f"{len(upward)} includes go up, {len(listed)} are listed")
    return 1 if homeless or set(upward) != set(listed) else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), "--write" in sys.argv[2:]))
