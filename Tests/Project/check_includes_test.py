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
                            f"{POINT} includes QuarnScreen/FlatScreen.h: values may not depend on analytic screens")

    def test_an_upward_include_by_a_relative_path_is_found(self):
        self.expect_problem({"Source/QuarnScreen/Point.cpp": '#include "FlatScreen.h"\n', FLAT: ""},
                            "values may not depend on analytic screens")

    def test_a_shape_may_not_know_a_format(self):
        self.expect_problem({FLAT: "#include <QuarnScreen/OBJScreen.h>\n", "Source/QuarnScreen/OBJScreen.h": ""},
                            "analytic screens may not depend on formats")

    def test_the_library_may_not_know_the_tool(self):
        self.expect_problem({FLAT: '#include "Rows/Csv.h"\n', "Tools/Rows/Csv.h": ""}, "may not depend on tool rows")

    def test_the_library_may_not_know_the_kit(self):
        self.expect_problem({FLAT: "#include <QuarnKit/Base/Error.h>\n", "Source/QuarnKit/Base/Error.h": ""},
                            "may not depend on kit base")

    def test_the_kit_may_not_know_the_tool(self):
        self.expect_problem({"Source/QuarnKit/Mesh/Edges.cpp": '#include "Base/ErrorReport.h"\n', "Tools/Base/ErrorReport.h": ""},
                            "kit mesh may not depend on tool base")

    def test_a_folder_of_the_kit_may_not_know_a_higher_one(self):
        self.expect_problem({"Source/QuarnKit/Base/Units.h": "#include <QuarnKit/Mesh/Edges.h>\n",
                             "Source/QuarnKit/Mesh/Edges.h": ""}, "kit base may not depend on kit mesh")

    def test_the_kit_may_include_shared_folders_alone(self):
        parser = "Source/QuarnScreen/Detail/Obj/ObjParser.h"
        scene = "Source/QuarnScreen/Detail/Mesh/RayScene.h"
        kit = "Source/QuarnKit/Formats/Obj/ObjLoader.cpp"
        self.assertEqual(check({kit: "#include <QuarnScreen/Detail/Obj/ObjParser.h>\n", parser: ""})[0], 0)
        self.expect_problem({kit: "#include <QuarnScreen/Detail/Mesh/RayScene.h>\n", scene: ""}, "Detail is the library's own")

    def test_foreign_headers_outside_of_their_files_are_found(self):
        for header in ("embree3/rtcore.h", "xercesc/dom/DOM.hpp", "log4cxx/logger.h", "openssl/sha.h", "utf8.h", "CLI/CLI.hpp",
                       "nlohmann/json.hpp"):
            with self.subTest(header):
                self.expect_problem({POINT: f"#include <{header}>\n"}, "is not for this file")

    def test_a_public_header_may_not_include_an_internal_one(self):
        self.expect_problem({FLAT: '#include "Detail/Platform/Sign.h"\n', "Source/QuarnScreen/Detail/Platform/Sign.h": ""},
                            "a public header may not include an internal one")

    def test_the_tool_may_not_include_a_detail(self):
        self.expect_problem({"Tools/Rows/Info.cpp": "#include <QuarnScreen/Detail/Platform/Sign.h>\n",
                             "Source/QuarnScreen/Detail/Platform/Sign.h": ""}, "Detail is the library's own")

    def test_a_cycle_is_found(self):
        self.expect_problem({POINT: "#include <QuarnScreen/Ray.h>\n",
                             "Source/QuarnScreen/Ray.h": "#include <QuarnScreen/Point.h>\n"}, "a cycle of includes")

    def test_a_file_without_a_layer_is_found(self):
        self.expect_problem({"Source/QuarnScreen/Unheard.h": ""}, "is in no layer")

    def test_an_include_of_nothing_is_found(self):
        self.expect_problem({FLAT: "#include <QuarnScreen/Gone.h>\n"}, "no such file")


if __name__ == "__main__":
    unittest.main()
