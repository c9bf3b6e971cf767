#!/usr/bin/python3
"""Shows that Scripts/check-includes finds each kind of forbidden include."""
import pathlib
import subprocess
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "Scripts" / "check-includes"
POINT = "Source/QuarnScreen/Point.h"
FLAT = "Source/QuarnScreen/FlatScreen.h"


def check(files):
    """Answer of the script for a tree of these files: exit code and text."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in files.items():
            (root / name).parent.mkdir(parents=True, exist_ok=True)
            (root / name).write_text(text, encoding="utf-8")
        result = subprocess.run([SCRIPT, root], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout


class CheckIncludes(unittest.TestCase):
    def expect_problem(self, files, text):
        code, output = check(files)
        self.assertEqual(code, 1, output)
        self.assertIn(text, output)

    def test_downward_includes_are_clean(self):
        code, output = check({POINT: "#include <cmath>\n", FLAT: "#include <QuarnScreen/Point.h>\n"})
        self.assertEqual((code, output), (0, "2 files, 0 problems\n"))

    def test_an_empty_tree_is_a_problem(self):
        self.assertEqual(check({})[0], 1)

    def test_an_upward_include_is_found(self):
        self.expect_problem({POINT: "  #  include <QuarnScreen/FlatScreen.h>\n", FLAT: ""},
                            f"{POINT} includes QuarnScreen/FlatScreen.h: values may not depend on shapes")

    def test_an_upward_include_by_a_relative_path_is_found(self):
        self.expect_problem({"Source/QuarnScreen/Point.cpp": '#include "FlatScreen.h"\n', FLAT: ""},
                            "values may not depend on shapes")

    def test_a_shape_may_not_know_a_format(self):
        self.expect_problem({FLAT: "#include <QuarnScreen/OBJScreen.h>\n", "Source/QuarnScreen/OBJScreen.h": ""},
                            "shapes and mesh engine may not depend on formats")

    def test_the_library_may_not_know_the_tool(self):
        self.expect_problem({FLAT: '#include "Csv.h"\n', "Tools/Csv.h": ""}, "may not depend on applications")

    def test_foreign_headers_outside_of_their_files_are_found(self):
        for header in ("embree3/rtcore.h", "xercesc/dom/DOM.hpp", "log4cxx/logger.h", "openssl/sha.h", "utf8.h"):
            with self.subTest(header):
                self.expect_problem({POINT: f"#include <{header}>\n"}, "is not for this file")

    def test_a_public_header_may_not_include_an_internal_one(self):
        self.expect_problem({FLAT: '#include "Detail/Sign.h"\n', "Source/QuarnScreen/Detail/Sign.h": ""},
                            "a public header may not include an internal one")

    def test_the_tool_may_not_include_a_detail(self):
        self.expect_problem({"Tools/Info.cpp": "#include <QuarnScreen/Detail/Sign.h>\n",
                             "Source/QuarnScreen/Detail/Sign.h": ""}, "Detail is the library's own")

    def test_a_cycle_is_found(self):
        self.expect_problem({POINT: "#include <QuarnScreen/Ray.h>\n",
                             "Source/QuarnScreen/Ray.h": "#include <QuarnScreen/Point.h>\n"}, "a cycle of includes")

    def test_a_file_without_a_layer_is_found(self):
        self.expect_problem({"Source/QuarnScreen/Unheard.h": ""}, "is in no layer")

    def test_an_include_of_nothing_is_found(self):
        self.expect_problem({FLAT: "#include <QuarnScreen/Gone.h>\n"}, "no such file")


if __name__ == "__main__":
    unittest.main()
