"""Compares what the README of each folder says with the folder.

    readme_check.py ROOT        prints what is wrong and ends with 1 if anything is

A README speaks for its folder and for those below that have none of their own. It names, in backticks,

- every source of these folders: `Stem` or `folder/Stem` for a pair, `Name.py` for a script, or a pattern as `*Test`;
- no file that isn't there: names with an ending, paths, patterns, and whatever stands in the first column of a table
  that is headed "File", "Files" or "Folder", or in the last of one that is headed "Topic";
- in the paragraph that begins with "May include", the folders and files of the tree that its sources include besides
  its own: all of them, and none that is not needed. "May include nothing of the tree" names none, "May include
  everything" stands for itself.
"""
import fnmatch
import pathlib
import re
import sys

TOP = ["processor", "framework", "host", "plugin", "helpers", "timeline", "keys", "undo", "files", "tools", "tests",
       "bench", "fuzz"]
MADE = {"build", "out"}  # folders of what builds and runs leave
PAIR = {".h", ".cpp"}
SOURCES = PAIR | {".py", ".sh"}
ENDINGS = SOURCES | {".md", ".txt", ".rc", ".cmake", ".level", ".fkd"}
LISTINGS = {"File": 1, "Files": 1, "Folder": 1, "Topic": -2}  # first cell of the head: cell with the names
INCLUDE = re.compile(r'^\s*#\s*include "([^"]+)"', re.MULTILINE)
MAY_INCLUDE = re.compile(r"^May include(.*?)(?:\n\s*\n|\Z)", re.MULTILINE | re.DOTALL)


def prose(text):
    """The text without its blocks of code."""
    lines, fenced = [], False
    for line in text.splitlines():
        if line.startswith("```"):
            fenced = not fenced
        elif not fenced and not line.startswith("    "):
            lines.append(line)
    return "\n".join(lines)


def names_in(text):
    """What stands in backticks, without arguments."""
    found = (name.split()[0] for name in re.findall(r"`([^`\n]+)`", text) if name.strip())
    return [name for name in found if re.fullmatch(r"[\w./*-]+", name)]


def listed_in(text):
    """The names in tables of files."""
    names, cell = [], None
    for line in text.splitlines():
        cells = line.split("|")
        if not line.startswith("|"):
            cell = None
        elif cell is None:
            cell = LISTINGS.get(cells[1].strip(), 0)
        elif cell:
            names += names_in(cells[cell])
    return names


class Folder:
    """A folder with a README."""

    def __init__(self, root, path):
        self.root, self.path = root, path
        self.text = prose((path / "README.md").read_text())
        self.names = names_in(self.text)
        self.files = list(self.own_files(path))
        self.sources = [file for file in self.files if file.suffix in SOURCES]

    def own_files(self, path):
        for inner in sorted(path.iterdir()):
            if not inner.is_dir():
                yield inner
            elif not (inner / "README.md").exists():
                yield from self.own_files(inner)

    def has(self, name):
        """Whether a name, which may be a pattern or lack its ending, is that of something here or in the tree."""
        name = name.rstrip("/")
        return (any(any(place.glob(form)) for place in (self.path, self.root) for form in (name, name + ".*")) or
                any(fnmatch.fnmatchcase(own, name) for file in self.files for own in (file.name, file.stem)))

    def is_file_like(self, name):
        if "/" in name:
            first = name.split("/")[0]
            return first not in MADE and ((self.path / first).is_dir() or (self.root / first).is_dir())
        return "*" in name or pathlib.PurePath(name).suffix in ENDINGS

    def is_named(self, source):
        stem = source.with_suffix("")
        for name in self.names:
            ending = pathlib.PurePath(name).suffix
            if ending in SOURCES and ending != source.suffix and not {ending, source.suffix} <= PAIR:
                continue
            if ending not in SOURCES and source.suffix not in PAIR:
                continue
            pattern = name[:-len(ending)] if ending in SOURCES else name
            if (fnmatch.fnmatchcase(stem.name, pattern) or
                    fnmatch.fnmatchcase(stem.relative_to(self.path).as_posix(), pattern)):
                return True
        return False

    def faults(self):
        for name in sorted(set(self.names)):
            if self.is_file_like(name) and not self.has(name):
                yield f"names {name}, which is not there"
        for name in listed_in(self.text):
            if not self.is_file_like(name) and not self.has(name):
                yield f"lists {name}, which is not there"
        told = set()
        for source in self.sources:
            stem = source.with_suffix("") if source.suffix in PAIR else source
            if stem not in told and not self.is_named(source):
                yield f"does not name {source.relative_to(self.path)}"
            told.add(stem)
        yield from self.include_faults()

    def include_faults(self):
        paragraph = MAY_INCLUDE.search(self.text)
        if not paragraph:
            yield 'has no paragraph "May include"'
            return
        if paragraph[1].split(".")[0].strip() == "everything":
            return
        allowed = [name.rstrip("/") for name in names_in(paragraph[1]) if (self.root / name).exists()]
        used = set()
        for source in self.sources:
            for header in INCLUDE.findall(source.read_text(errors="replace")):
                if not (self.root / header).exists() or self.root / header in self.files:
                    continue
                fitting = [name for name in allowed if header == name or header.startswith(name + "/")]
                used.update([max(fitting, key=len)] if fitting else [])
                if not fitting:
                    yield f"may not include {header}: {source.relative_to(self.path)}"
        for name in sorted(set(allowed) - used):
            yield f"may include {name}, which nothing needs"


def faults(root, top):
    """Lines "README: what is wrong"."""
    for name in top:
        spoken_for = set()
        for path in [root / name] + sorted(path for path in (root / name).rglob("*") if path.is_dir()):
            place = path.relative_to(root).as_posix()
            if (path / "README.md").exists():
                folder = Folder(root, path)
                spoken_for.update(folder.sources)
                for fault in folder.faults():
                    yield f"{place}/README.md {fault}"
            elif any(file.suffix in SOURCES and file not in spoken_for for file in path.iterdir()):
                yield f"{place} has no README.md"


def main(root):
    found = list(faults(root, TOP))
    print("".join(line + "\n" for line in found) + f"{len(found)} faults in READMEs")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
