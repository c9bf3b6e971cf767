"""An output whose name has the extension of another format is refused, by every command that writes files."""
import unittest

from obj_case import ObjTest, wall
from tool_case import WALL

FLAT = ["make", "flat", "--width", "4m", "--height", "3m"]
REFUSED = {
    "make": (FLAT, "x.stl", ".xml or .obj"),
    "make_of_a_mesh": ([*FLAT, "--grid", "2x2"], "x.xml", ".obj"),
    "plot": (["plot", WALL], "x.png", ".svg"),
    "plot_of_a_mesh": (["plot", "a.obj"], "x.PDF", ".svg"),
    "check": (["check", "a.obj", "--fix"], "x.xml", ".obj"),
    "transform": (["transform", "a.obj", "--scale", "2"], "x.stl", ".obj or .xml"),
    "refine": (["refine", "a.obj", "--max-edge", "1m"], "x.ply", ".obj or .xml"),
    "convert": (["convert", "a.obj"], "x.stl", ".obj or .xml, or --to"),
    "info": (["info", WALL], "x.json", ".txt, or --json"),
    "info_as_json": (["info", WALL, "--json"], "x.csv", ".json, or no --json"),
    "grid": (["grid", WALL], "x.json", ".csv, or --json"),
    "intersect": (["intersect", WALL, "-"], "x.xml", ".csv"),
    "boundary": (["boundary", WALL, "--json"], "x.csv", ".json, or no --json"),
    "grid_as_npy": (["grid", WALL, "--npy"], "x.csv", ".npy, or no --npy"),
    "intersect_as_json": (["intersect", WALL, "--json"], "x.npy", ".json, or no --json"),
    "info_as_npy": (["info", WALL], "x.npy", ".txt"),
    "compare": (["compare", WALL, WALL], "x.txt.gz", ".csv"),
}
ACCEPTED = {
    "make": (FLAT, "x.XML"),
    "make_of_a_mesh": ([*FLAT, "--grid", "2x2"], "x.obj"),
    "plot": (["plot", WALL], "x.svg"),
    "plot_without_extension": (["plot", WALL], "x"),
    "info": (["info", WALL], "x.txt"),
    "info_with_an_unknown_extension": (["info", WALL], "x.report"),
    "grid": (["grid", WALL, "--json"], "x.json"),
    "grid_as_npy": (["grid", WALL], "x.npy"),
    "boundary_as_npy": (["boundary", WALL, "--npy"], "x.NPY"),
}


class OutputNames(ObjTest):
    def test_names_of_other_formats_are_refused(self):
        self.file("a.obj", wall())
        for name, (arguments, output, expected) in REFUSED.items():
            with self.subTest(name):
                self.assertEqual(self.error_line(*arguments, "-o", output),
                                 f'error: found the output "{output}", expected a name that ends with {expected}\n')
                self.assertEqual([path.name for path in self.folder.iterdir()], ["a.obj"])

    def test_other_names_are_written(self):
        for name, (arguments, output) in ACCEPTED.items():
            with self.subTest(name):
                self.run_tool(*arguments, "-o", output).check_returncode()
                self.assertTrue((self.folder / output).exists())


if __name__ == "__main__":
    unittest.main()
