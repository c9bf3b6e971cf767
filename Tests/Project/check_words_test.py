#!/usr/bin/python3
"""Shows that Scripts/check-words finds old words where people read them, and nowhere else."""
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "Scripts" / "check-words"


def check(name, text):
    """Exit code and output of the script for a tree of one file."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / name
        path.parent.mkdir(parents=True)
        path.write_text(text, encoding="utf-8")
        result = subprocess.run([SCRIPT, folder], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout


class CheckWords(unittest.TestCase):
    def expect_found(self, text, word, name="Source/A.cpp"):
        code, output = check(name, text)
        self.assertEqual(code, 1, output)
        self.assertIn(f"{name}:1: {word}", output)

    def expect_clean(self, text, name="Source/A.cpp"):
        self.assertEqual(check(name, text), (0, "1 files, 0 old words\n"))

    def test_old_words_in_comments_and_texts_are_found(self):
        self.expect_found("// Tells the boundary.\n", '"Tells"')
        self.expect_found('return "mend it by";\n', '"mend"')
        self.expect_found("int a;  // of the outline\n", '"outline"')

    def test_old_words_in_pages_are_found(self):
        self.expect_found("The centre of the sphere.\n", '"centre"', "Docs/page.md")

    def test_old_identifiers_are_found(self):
        self.expect_found("constexpr int kMostLines = 3;\n", "kMostLines")

    def test_code_may_use_a_word_as_a_name(self):
        self.expect_clean("bool tell = ask(outline);\n")

    def test_fixed_names_are_allowed(self):
        self.expect_clean("// See isWithinOutline().\n")

    def test_longer_words_are_no_old_words(self):
        self.expect_clean("// A task of the satellite, trimmed and amended.\n")

    def test_an_empty_tree_is_a_problem(self):
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(subprocess.run([SCRIPT, folder], capture_output=True, check=False).returncode, 1)


if __name__ == "__main__":
    unittest.main()
