#!/usr/bin/python3
"""Shows what Scripts/coverage complains of, without counting anything."""
import pathlib
import runpy
import unittest

SCRIPT = runpy.run_path(str(pathlib.Path(__file__).resolve().parents[2] / "Scripts" / "coverage"))

LINE = ("Source/QuarnScreen/A.cpp", "return a || b;")


class Coverage(unittest.TestCase):
    def faults(self, missed, share, named):
        return list(SCRIPT["faults_of"](missed, share, named))

    def test_named_lines_may_be_missed(self):
        self.assertEqual(self.faults({LINE}, 99.0, {LINE}), [])

    def test_other_lines_are_reported(self):
        self.assertEqual(self.faults({LINE}, 99.0, set()), ["not named in Docs/quality.md: Source/QuarnScreen/A.cpp: return a || b;"])

    def test_named_lines_that_are_reached_are_reported(self):
        fault, = self.faults(set(), 100.0, {LINE})
        self.assertIn("but reached or not there", fault)

    def test_too_few_lines_are_a_fault_even_where_all_are_named(self):
        self.assertEqual(len(self.faults({LINE}, 96.9, {LINE})), 1)
        self.assertEqual(self.faults({LINE}, 97.0, {LINE}), [])

    def test_lines_are_read_from_rows_of_the_page(self):
        rows = "| `Source/QuarnScreen/A.cpp` | `` return a || b; `` | a reason |\n| `kName` | 1 | 2 |\n"
        self.assertEqual(SCRIPT["ROW"].findall(rows), [LINE])


if __name__ == "__main__":
    unittest.main()
