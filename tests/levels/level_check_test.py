"""Tests of level_check.py on small trees of its own."""
import pathlib
import tempfile
import unittest

from level_check import circles, faults, read_includes, read_levels

LEVELS = """# the lowest first
low:    keys/rules helpers
middle: undo
high:   timeline
"""


class LevelCheck(unittest.TestCase):
    def faults(self, files):
        levels = read_levels(LEVELS)
        sources = {f"{folder}/Any.h": "" for folder in levels} | files
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in sources.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            return list(faults(read_includes(root), levels))

    def test_each_folder_of_a_line_is_of_its_level(self):
        self.assertEqual(read_levels(LEVELS), {"keys/rules": 0, "helpers": 0, "undo": 1, "timeline": 2})

    def test_an_include_of_a_higher_level_is_told(self):
        self.assertEqual(self.faults({"undo/Action.cpp": '#include "timeline/Any.h"\n'}),
                         ["goes up: undo/Action.cpp includes timeline/Any.h"])

    def test_the_own_level_and_lower_ones_may_be_included(self):
        text = '#include "undo/Any.h"\n#include "keys/rules/Any.h"\n#include <vector>\n'
        self.assertEqual(self.faults({"undo/Action.h": text}), [])

    def test_folders_of_a_level_may_include_one_another_in_one_direction(self):
        self.assertEqual(self.faults({"keys/rules/Rule.h": '#include "helpers/Any.h"\n'}), [])

    def test_a_circle_within_a_level_is_told(self):
        there = {"keys/rules/Rule.h": '#include "helpers/Any.h"\n'}
        back = {"helpers/Math.h": '#include "keys/rules/Any.h"\n'}
        self.assertEqual(self.faults(there | back), ["in a circle: helpers", "in a circle: keys/rules"])

    def test_a_circle_over_three_folders_is_found(self):
        self.assertEqual(circles({("a", "b"), ("b", "c"), ("c", "b"), ("d", "a")}), ["b", "c"])

    def test_a_folder_without_a_level_is_told(self):
        self.assertEqual(self.faults({"plugin/parts/New.cpp": ""}), ["plugin/parts is in no level"])

    def test_a_level_without_its_folder_is_told(self):
        self.assertEqual(list(faults({"undo/Action.h": []}, {"undo": 0, "files": 1})),
                         ["files is in a level, and not there"])


if __name__ == "__main__":
    unittest.main()
