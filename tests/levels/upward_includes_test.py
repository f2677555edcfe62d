"""Tests of upward_includes.py on small trees of its own."""
import pathlib
import tempfile
import unittest

from upward_includes import level_of, read_levels, upward_includes

LEVELS = [("low", ["keys/Low*"]), ("middle", ["keys/LowButNamed", "undo/*"]), ("high", ["timeline/*"])]


class UpwardIncludes(unittest.TestCase):
    def includes(self, files):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in files.items():
                (root / name).parent.mkdir(exist_ok=True)
                (root / name).write_text(text)
            return upward_includes(root, LEVELS)

    def test_an_include_of_a_higher_level_is_told(self):
        upward, _ = self.includes({"keys/Low.h": "", "undo/Action.cpp": '#include "timeline/Row.h"\n'})
        self.assertEqual(upward, ["middle -> high: undo/Action.cpp: timeline/Row.h"])

    def test_its_own_level_and_lower_ones_may_be_included(self):
        text = '#include "undo/Other.h"\n#include "keys/Low.h"\n#include <vector>\n'
        self.assertEqual(self.includes({"undo/Action.h": text}), ([], []))

    def test_a_name_counts_before_a_pattern(self):
        self.assertEqual(level_of("keys/LowButNamed.h", LEVELS), 1)
        self.assertEqual(level_of("keys/LowOther.h", LEVELS), 0)

    def test_a_file_of_no_level_is_told(self):
        _, homeless = self.includes({"plugin/New.cpp": ""})
        self.assertEqual(homeless, ["plugin/New.cpp"])

    def test_the_levels_file_has_each_level_once(self):
        names = [name for name, _ in read_levels()]
        self.assertEqual(len(names), len(set(names)))
        self.assertIn("rules", names)


if __name__ == "__main__":
    unittest.main()
