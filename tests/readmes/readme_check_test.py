"""Tests of readme_check.py on small trees of its own."""
import pathlib
import tempfile
import unittest

from readme_check import faults


class ReadmeCheck(unittest.TestCase):
    def faults(self, readme, files=()):
        """What is wrong with host/README.md in a tree with these files, a name or a pair of name and text each."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            tree = {"host/README.md": readme} if readme is not None else {}
            tree.update((file, "") if isinstance(file, str) else file for file in files)
            for name, text in tree.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            return [fault.replace("host/README.md ", "") for fault in faults(root, ["host"])]

    def told(self, readme, *files):
        """The same for a README that says what it may include."""
        return self.faults(readme + "\n\nMay include everything.\n", files)

    def test_a_folder_of_named_pairs_scripts_and_patterns_is_good(self):
        self.assertEqual(self.told("`View`, `run.py`, `*Test`, `app/Main.cpp`", "host/View.h", "host/View.cpp",
                                   "host/run.py", "host/ViewTest.cpp", "host/app/Main.cpp"), [])

    def test_a_source_without_a_name_is_told_once_a_pair(self):
        self.assertEqual(self.told("`View`", "host/View.h", "host/Tool.h", "host/Tool.cpp"), ["does not name Tool.cpp"])

    def test_a_name_in_plain_words_is_none(self):
        self.assertEqual(self.told("View", "host/View.h"), ["does not name View.h"])

    def test_a_script_needs_its_ending(self):
        self.assertEqual(self.told("`run`", "host/run.sh"), ["does not name run.sh"])
        self.assertEqual(self.told("`run.py`", "host/run.sh", "host/run.py"), ["does not name run.sh"])

    def test_names_that_are_not_there_are_told(self):
        self.assertEqual(self.told("`Gone.h`, `app/Gone`, `Gone*` and the class `Gone`", "host/app/data.txt"),
                         ["names Gone*, which is not there", "names Gone.h, which is not there",
                          "names app/Gone, which is not there"])

    def test_tables_of_files_list_files_alone(self):
        self.assertEqual(self.told("| File | What |\n|---|---|\n| `View`, `Gone` | `Words` |", "host/View.h"),
                         ["lists Gone, which is not there"])
        self.assertEqual(self.told("| Topic | Files |\n|---|---|\n| `Words` | `Gone` |"),
                         ["lists Gone, which is not there"])
        self.assertEqual(self.told("| Name | What |\n|---|---|\n| `Gone` | `Words` |"), [])

    def test_paths_from_the_root_count(self):
        self.assertEqual(self.told("`docs/GUIDE.md`", "docs/GUIDE.md"), [])
        self.assertEqual(self.told("`docs/GUIDE.md`", "docs/OTHER.md"), ["names docs/GUIDE.md, which is not there"])

    def test_code_and_what_is_made_are_no_names(self):
        self.assertEqual(self.told("    `Gone.h`\n\n```\n`Gone.h`\n```\n`build/bin/gone`, `out/gone`", "out/log",
                                   "build/log"), [])

    def test_a_folder_of_its_own_readme_speaks_for_itself(self):
        files = ["host/inner/Tool.h", ("host/inner/README.md", "May include everything.")]
        self.assertEqual(self.told("", *files), ["host/inner/README.md does not name Tool.h"])

    def test_a_folder_without_any_is_told(self):
        self.assertEqual(self.faults(None, ["host/Tool.h"]), ["host has no README.md"])
        self.assertEqual(self.faults(None, ["host/README.txt"]), [])

    def test_includes_are_those_that_it_says(self):
        files = [("host/View.h", '#include "host/Other.h"\n#include "base/File.h"\n#include <vector>\n'), "base/File.h",
                 "host/Other.h", "rules/Key.h"]
        names = "`View`, `Other`\n\n"
        self.assertEqual(self.faults(names + "May include `base`.", files), [])
        self.assertEqual(self.faults(names + "May include `base/File.h`\nand the toolkit.", files), [])
        self.assertEqual(self.faults(names + "May include `rules`.", files),
                         ["may not include base/File.h: View.h", "may include rules, which nothing needs"])
        self.assertEqual(self.faults(names + "May include nothing of the tree.", files),
                         ["may not include base/File.h: View.h"])
        self.assertEqual(self.faults(names, files), ['has no paragraph "May include"'])


if __name__ == "__main__":
    unittest.main()
