#!/usr/bin/python3
"""Shows that Scripts/check-layout finds each kind of problem."""
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "Scripts" / "check-layout"


def check(files):
    """Exit code and output of the script for a tree of these files."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in files.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text, encoding="utf-8")
        result = subprocess.run([SCRIPT, root], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout


class CheckLayout(unittest.TestCase):
    def expect_problem(self, files, text):
        code, output = check(files)
        self.assertEqual(code, 1, output)
        self.assertIn(text, output)

    def test_a_small_tree_is_clean(self):
        self.assertEqual(check({"Source/A.h": "struct A {};\n"}), (0, "1 files, 0 problems\n"))

    def test_a_large_folder_is_found(self):
        self.expect_problem({f"Source/Part/A{i}.cpp": "" for i in range(26)}, "Source/Part: 26 files")

    def test_two_files_of_one_name_are_found(self):
        self.expect_problem({"Source/A.h": "", "Tools/A.h": ""}, "A.h: the name of 2 files: Source/A.h, Tools/A.h")

    def test_a_list_of_sources_may_have_the_same_name_in_each_folder(self):
        self.assertEqual(check({"Source/CMakeLists.txt": "", "Tools/CMakeLists.txt": ""})[0], 0)

    def test_one_name_defined_twice_in_a_namespace_is_found(self):
        text = "namespace quarn {\nstruct Corner {\n};\n}\n"
        self.expect_problem({"Source/A.h": text, "Source/B.h": text}, "quarn::Corner is defined by Source/A.h, Source/B.h")

    def test_one_constant_defined_twice_is_found(self):
        text = "namespace quarn {\ninline constexpr double kRatio = 2.0;\n}\n"
        self.expect_problem({"Source/A.h": text, "Source/B.h": text}, "quarn::kRatio is defined by")

    def test_equal_names_in_two_namespaces_are_allowed(self):
        self.assertEqual(check({"Source/A.h": "namespace a {\nstruct C {\n};\n}\n",
                                "Source/B.h": "namespace b {\nstruct C {\n};\n}\n"})[0], 0)

    def test_a_declaration_is_no_definition(self):
        self.assertEqual(check({"Source/A.h": "struct C;\n", "Source/B.h": "struct C {\n};\n"})[0], 0)

    def test_a_wide_comment_is_found(self):
        self.expect_problem({"Source/A.h": "// a" + " b" * 60 + "\n"}, "Source/A.h:1: a comment of 124 columns")


if __name__ == "__main__":
    unittest.main()
