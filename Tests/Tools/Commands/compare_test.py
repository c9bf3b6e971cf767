"""Distances between screens whose true distances are known."""
import json
import math
import time
import unittest

from obj_case import ObjTest, dome, wall
from tool_case import SAMPLES, WALL, Case, add_cases

DOME = str(SAMPLES / "dome.xml")


class Compare(ObjTest):
    def compared(self, *arguments):
        """The rows by what is compared, their numbers as numbers."""
        rows = {}
        for row in self.rows("compare", *arguments):
            rows[row["comparison"]] = {key: float(value) if key not in ("comparison", "status", "reason") and value else value for key, value in row.items()}
        has_verdict = "--max" in arguments or "--accuracy" in arguments
        self.assertEqual(list(rows), ["digest", "a_to_b", "b_to_a", "equal_uv"] + ["verdict"] * has_verdict)
        if has_verdict:
            self.assertEqual((rows["verdict"]["status"], rows["verdict"]["reason"]), ("yes", ""))
        return rows

    def verdict(self, *arguments):
        """The exit code, the verdict, its reason and the message."""
        result = self.run_tool("compare", *arguments)
        row = result.stdout.decode().splitlines()[-1].split(",")
        self.assertEqual(row[0], "verdict")
        return result.returncode, row[1], row[-1], result.stderr.decode()

    def make(self, name, *arguments):
        self.run_tool("make", *arguments, "-o", name)
        return name

    def assert_distance(self, row, maximum, mean=None):
        """The maximum distance is within the stated accuracy, which is at most a 10,000th of the size or a thousandth of the distance."""
        self.assertLess(row["accuracy"], max(20 * 1e-4, maximum * 2e-3))
        self.assertAlmostEqual(row["max"], maximum, delta=row["accuracy"] + 1e-6)
        if mean is not None:
            self.assertAlmostEqual(row["mean"], mean, delta=row["accuracy"] + 1e-6)

    def test_a_screen_is_not_apart_from_itself(self):
        self.file("wall.obj", wall())
        self.file("dome.obj", dome())
        for screen in (WALL, DOME, str(SAMPLES / "ruled.xml"), str(SAMPLES / "cylinder-200.xml"), "wall.obj", "dome.obj"):
            with self.subTest(screen):
                rows = self.compared(screen, screen, "--max", "1e-12", "--accuracy", "5mm")
                self.assertEqual(rows["digest"]["status"], "same")
                for name in ("a_to_b", "b_to_a", "equal_uv"):
                    self.assertLess(rows[name]["max"], 1e-14)

    def test_parallel_planes(self):
        self.file("wall.obj", wall())
        self.text_of("transform", "wall.obj", "--translate", "0,25cm,0", "-o", "behind.obj")
        for a, b in ((WALL, "behind.obj"), ("wall.obj", "behind.obj"), ("behind.obj", WALL)):
            rows = self.compared(a, b)
            self.assertEqual(rows["digest"]["status"], "different")
            for name in ("a_to_b", "b_to_a"):
                self.assert_distance(rows[name], 0.25, 0.25)
            self.assertAlmostEqual(rows["equal_uv"]["max"], 0.25, delta=1e-6)
            self.assertAlmostEqual(rows["equal_uv"]["mean"], 0.25, delta=1e-6)

    def test_a_wall_that_was_moved_along_itself_is_apart_at_its_side_and_in_uv(self):
        self.file("wall.obj", wall())
        self.text_of("transform", "wall.obj", "--translate", "1,0,0", "-o", "beside.obj")
        rows = self.compared("wall.obj", "beside.obj")
        # A quarter of the wall lies outside, 0.5 away in the mean.
        self.assert_distance(rows["a_to_b"], 1, 0.125)
        self.assertAlmostEqual(rows["a_to_b"]["x"], -2)
        self.assert_distance(rows["b_to_a"], 1, 0.125)
        self.assertAlmostEqual(rows["b_to_a"]["x"], 3)
        self.assertAlmostEqual(rows["equal_uv"]["max"], 1, delta=1e-6)

    def test_a_wall_with_other_uv_is_apart_in_uv_alone(self):
        self.file("wall.obj", wall())
        self.text_of("transform", "wall.obj", "--flip-u", "-o", "flipped.obj")
        rows = self.compared("wall.obj", "flipped.obj")
        self.assertLess(rows["a_to_b"]["max"], 1e-14)
        self.assertAlmostEqual(rows["equal_uv"]["max"], 4 * 127 / 128, delta=1e-6)
        self.assertAlmostEqual(rows["equal_uv"]["mean"], 2, delta=1e-6)
        self.assertEqual(rows["equal_uv"]["samples"], 128 * 128)

    def test_concentric_spheres_and_cylinders(self):
        sphere = ["--min-theta", "-60deg", "--max-theta", "60deg", "--min-phi", "-20deg", "--max-phi", "40deg"]
        cylinder = ["--arc", "150deg", "--height", "2"]
        for shape, arguments in (("sphere", sphere), ("cylinder", cylinder)):
            a = self.make("a.xml", shape, "--radius", "3", *arguments)
            b = self.make("b.xml", shape, "--radius", "3.05", *arguments)
            rows = self.compared(a, b)
            for name in ("a_to_b", "b_to_a"):
                self.assert_distance(rows[name], 0.05, 0.05)
            self.assertAlmostEqual(rows["equal_uv"]["max"], 0.05, delta=1e-9)

    def test_a_dome_that_was_raised(self):
        raised = self.make("raised.xml", "dome", "--radius", "6", "--angle", "180deg", "--center", "0,0,0.1")
        rows = self.compared(raised, DOME)
        self.assert_distance(rows["a_to_b"], 0.1)
        self.assertAlmostEqual(rows["a_to_b"]["z"], 6.1, delta=0.02)
        # By elevation: each position is off by 0.1 sin(phi), whose mean over half a sphere is half of it.
        self.assertAlmostEqual(rows["a_to_b"]["mean"], 0.05, delta=1e-3)
        self.assert_distance(rows["b_to_a"], 0.1)
        self.assertAlmostEqual(rows["equal_uv"]["mean"], 0.1, delta=1e-9)

    def test_a_mesh_of_a_shape_is_apart_by_what_its_triangles_cut_off(self):
        cut = self.make("cut.obj", "cylinder", "--radius", "3", "--arc", "120deg", "--height", "2", "--grid", "4x12")
        rows = self.compared(self.make("whole.xml", "cylinder", "--radius", "3", "--arc", "120deg", "--height", "2"), cut)
        self.assert_distance(rows["a_to_b"], 3 * (1 - math.cos(math.radians(5))))
        self.assert_distance(rows["b_to_a"], 3 * (1 - math.cos(math.radians(5))))

    def test_a_refined_mesh_is_the_same_surface(self):
        self.file("dome.obj", dome())
        self.text_of("refine", "dome.obj", "--max-edge", "0.4", "-o", "fine.obj")
        rows = self.compared("dome.obj", "fine.obj")
        for name in ("a_to_b", "b_to_a", "equal_uv"):
            self.assertLess(rows[name]["max"], 2e-6)
        self.assertLess(rows["a_to_b"]["accuracy"], 3e-4)

    def test_max_decides_the_exit_code(self):
        self.file("wall.obj", wall())
        self.text_of("transform", "wall.obj", "--translate", "0,0.25,0", "-o", "behind.obj")
        self.assertEqual(self.run_tool("compare", WALL, "behind.obj", "--max", "26cm").returncode, 0)
        result = self.run_tool("compare", WALL, "behind.obj", "--max", "240mm")
        self.assert_one_error_line(result, 1)
        self.assertEqual(result.stderr.decode(), "error: a distance of 0.25 m, expected no more than 0.24 m\n")
        self.assertEqual(len(result.stdout.decode().splitlines()), 6)
        self.assertEqual(self.verdict(WALL, "behind.obj", "--max", "240mm")[:3], (1, "no", ""))
        self.assertEqual(self.verdict(WALL, "behind.obj", "--max", "26cm"), (0, "yes", "", ""))

    def test_a_maximum_within_the_accuracy_is_undecided(self):
        a = self.make("a.xml", "cylinder", "--radius", "3", "--arc", "150deg", "--height", "2")
        b = self.make("b.xml", "cylinder", "--radius", "3.1", "--arc", "150deg", "--height", "2")
        code, verdict, reason, message = self.verdict(a, b, "--accuracy", "5cm", "--max", "0.1")
        self.assertEqual((code, verdict, reason), (1, "undecided", "accuracy"))
        self.assertRegex(message, r"\Aerror: undecided: the distance is between 0\.\d+ m and 0\.1\d+ m, expected no more than 0\.1 m; try --accuracy 0\.00\d+\n\Z")
        self.assertEqual(self.verdict(a, b, "--accuracy", "1mm", "--max", "0.11")[:3], (0, "yes", ""))

    def test_an_accuracy_that_is_not_reached_is_undecided(self):
        a = self.make("a.xml", "sphere", "--radius", "3", "--min-theta", "-60deg", "--max-theta", "60deg", "--min-phi", "-20deg", "--max-phi", "40deg")
        code, verdict, reason, message = self.verdict(a, WALL, "--accuracy", "1e-7")
        self.assertEqual((code, verdict), (1, "undecided"))
        self.assertIn(reason, ("work-limit", "grid-limit"))
        self.assertRegex(message, r"\Aerror: undecided: an accuracy of .* m, because .*, expected no more than 1e-07 m; try a coarser --accuracy.*\n\Z")

    def test_accuracy_replaces_the_thousandth_of_the_distance(self):
        for accuracy in (4e-3, 1e-3):
            for row in ("a_to_b", "b_to_a"):
                self.assertLessEqual(self.compared(WALL, DOME, "--accuracy", str(accuracy))[row]["accuracy"], accuracy)

    def test_far_surfaces_are_measured_in_seconds(self):
        rows = self.compared(WALL, DOME)
        self.assert_distance(rows["a_to_b"], math.hypot(6, 1.5))
        self.file("sheet.obj", wall(40, 40))
        self.text_of("transform", "sheet.obj", "--scale", "0.01", "-o", "small.obj")
        start = time.monotonic()
        rows = self.compared("small.obj", DOME)
        self.assert_distance(rows["a_to_b"], math.hypot(6, 0.015))
        self.assertLess(time.monotonic() - start, 30)
    def test_one_way_is_enough_for_max(self):
        small = self.make("small.xml", "flat", "--width", "2", "--height", "3")
        self.assertLess(self.compared(small, WALL)["a_to_b"]["max"], 1e-14)
        for files in ((small, WALL), (WALL, small)):
            self.assert_one_error_line(self.run_tool("compare", *files, "--max", "0.5"), 1)

    def test_axes_and_scale_of_each_file(self):
        self.file("wall.obj", wall())
        rows = self.compared("wall.obj", "wall.obj", "--scale-b", "0.5")
        self.assert_distance(rows["a_to_b"], math.hypot(1, 0.75))
        rows = self.compared("wall.obj", "wall.obj", "--forward=-Z", "--up", "Y", "--scale", "2", "--forward-b=-Z", "--up-b", "Y", "--scale-b", "2")
        self.assertLess(rows["a_to_b"]["max"], 1e-14)
        self.assertIn("for a screen that is not an OBJ file", self.error_line("compare", "wall.obj", WALL, "--scale-b", "2"))

    def test_without_uv_there_is_nothing_to_compare_at_equal_uv(self):
        self.file("bare.obj", wall(corner="{0}//1"))
        rows = self.compared(WALL, "bare.obj")
        self.assertEqual((rows["equal_uv"]["status"], rows["equal_uv"]["max"]), ("none", ""))
        self.assert_distance(rows["a_to_b"], 0, 0)

    def test_accuracy_is_as_specified(self):
        a = self.make("a.xml", "cylinder", "--radius", "3", "--arc", "150deg", "--height", "2")
        b = self.make("b.xml", "cylinder", "--radius", "3.001", "--arc", "150deg", "--height", "2")
        for accuracy in (1e-2, 1e-5):
            row = self.compared(a, b, "--accuracy", str(accuracy))["a_to_b"]
            self.assertLessEqual(row["accuracy"], accuracy)
            self.assertAlmostEqual(row["max"], 0.001, delta=accuracy)

    def test_answers_do_not_depend_on_the_threads(self):
        self.file("dome.obj", dome(40, 60))
        texts = {self.text_of("compare", DOME, "dome.obj", "--accuracy", "5mm", "--threads", threads) for threads in ("1", "2", "7")}
        self.assertEqual(len(texts), 1)

    def test_json_names_the_files(self):
        document = json.loads(self.text_of("compare", WALL, WALL, "--json", "--unit", "ft"))
        self.assertEqual((document["command"], document["a"], document["b"], document["unit"]), ("compare", WALL, WALL, "ft"))

    def test_a_screen_that_is_no_surface_is_refused(self):
        far = self.make("far.xml", "flat", "--width", "1e60", "--height", "1")
        self.assertIn("far.xml: found no surface, or positions that are not finite as floats", self.error_line("compare", far, WALL))


add_cases(Compare, [
    Case("refused_one_file", ["compare", WALL], err="error: B is required .*\n", exit=2),
    Case("refused_max_below_zero", ["compare", WALL, WALL, "--max", "-1"], err='error: found --max "-1", expected a length of 0 or above\n', exit=2),
    Case("refused_max_that_is_no_length", ["compare", WALL, WALL, "--max", "nan"], err='error: found --max "nan", expected a number in m, .*\n', exit=2),
    Case("refused_accuracy_of_zero", ["compare", WALL, WALL, "--accuracy", "0mm"], err='error: found --accuracy "0mm", expected a length above 0\n', exit=2),
    Case("refused_threads_of_zero", ["compare", WALL, WALL, "--threads", "0"], err="error: .*--threads .*\n", exit=2),
    Case("refused_file_that_is_not_there", ["compare", WALL, "none.xml"], err="error: none.xml: no such file, .*\n", exit=2),
])


if __name__ == "__main__":
    unittest.main()
