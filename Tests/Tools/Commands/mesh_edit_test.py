"""Meshes that the tool cuts, moves and turns round."""
import itertools
import math
import re
import unittest

from obj_case import ObjTest, dome, wall
from tool_case import WALL, Case, add_cases


def mesh_of(text):
    """The triangles of an OBJ text that the tool wrote: three corners, each a position and a UV or None."""
    lines = [line.split() for line in text.splitlines()]
    positions = [tuple(map(float, line[1:])) for line in lines if line[0] == "v"]
    uvs = [tuple(map(float, line[1:])) for line in lines if line[0] == "vt"]
    triangles = []
    for line in lines:
        if line[0] == "f":
            corners = [corner.split("/") for corner in line[1:]]
            triangles.append([(positions[int(v) - 1], uvs[int(t) - 1] if t else None) for v, t, _ in corners])
    return triangles


def edges_of(triangles):
    for triangle in triangles:
        for (a, _), (b, _) in itertools.combinations(triangle, 2):
            yield math.dist(a, b)


def area_of(triangles):
    total = 0
    for (a, _), (b, _), (c, _) in triangles:
        u, v = [[q - p for p, q in zip(a, end)] for end in (b, c)]
        total += math.hypot(u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]) / 2
    return total


class Refine(ObjTest):
    def refined(self, text, length, *arguments):
        self.file("in.obj", text)
        return mesh_of(self.text_of("refine", "in.obj", "--max-edge", length, *arguments))

    def test_no_edge_is_longer(self):
        for length in ("0.7", "70cm", "700mm"):
            mesh = self.refined(wall(), length)
            self.assertGreater(len(mesh), 24)
            self.assertLessEqual(max(edges_of(mesh)), 0.7 * (1 + 1e-6))
            self.assertAlmostEqual(area_of(mesh), 12, places=5)

    def test_lengths_are_in_the_unit_of_the_file(self):
        self.assertEqual(self.refined(wall(), "70cm"), self.refined(wall(), "0.7"))
        self.assertEqual(self.refined(wall(), "0.7", "--unit", "mm"), self.refined(wall(), "0.0007m", "--unit", "mm"))

    def test_uv_follows_the_positions(self):
        for triangle in self.refined(wall(), "0.3"):
            for (x, _, z), (u, v) in triangle:
                self.assertAlmostEqual(u, (x + 2) / 4, delta=1e-6)
                self.assertAlmostEqual(v, (1.5 - z) / 3, delta=1e-6)

    def test_parts_share_their_corners_so_that_the_boundary_stays_one(self):
        self.file("in.obj", dome())
        self.assertEqual(self.text_of("refine", "in.obj", "--max-edge", "0.5", "-o", "out.obj"), "")
        self.assertEqual(self.info("out.obj")["status"], "good; everything works")
        self.assertLess(len(re.findall("^v ", (self.folder / "out.obj").read_text(), re.MULTILINE)), self.info_triangles("out.obj") * 0.6)

    def info_triangles(self, name):
        return int(self.info(name)["triangles"])

    def test_a_bound_above_all_edges_leaves_the_mesh_and_says_so(self):
        self.file("in.obj", wall())
        result = self.run_tool("refine", "in.obj", "--max-edge", "10")
        self.assertEqual((result.returncode, result.stderr.decode()), (0, "note: in.obj: no edge is longer; the triangles are unchanged\n"))
        self.assertEqual(len(mesh_of(result.stdout.decode())), 24)

    def test_xml_holds_the_same_mesh(self):
        self.file("in.obj", wall())
        for name in ("out.obj", "out.xml"):
            self.text_of("refine", "in.obj", "--max-edge", "0.5", "-o", name)
        self.assertIn("class OBJScreen", (self.folder / "out.xml").read_text())
        self.assertEqual(self.info("out.xml")["digest"], self.info("out.obj")["digest"])
        self.text_of("refine", "out.xml", "--max-edge", "0.4", "-o", "finer.xml")
        self.assertGreater(self.info_triangles("finer.xml"), self.info_triangles("out.xml"))

    def test_the_frame_of_the_file_is_left_behind(self):
        moved = self.refined(wall(), "0.5", "--forward=-Z", "--up", "Y", "--scale", "0.5")
        self.assertAlmostEqual(max(abs(x) for triangle in moved for (x, _, _), _ in triangle), 1)
        self.assertLessEqual(max(edges_of(moved)), 0.5 * (1 + 1e-6))

    def test_a_mesh_without_uv_is_cut_too_and_noted(self):
        self.file("in.obj", wall(corner="{0}//1"))
        result = self.run_tool("refine", "in.obj", "--max-edge", "0.5")
        self.assertRegex(result.stderr.decode(), r"\Anote: standard output: the file has no vt line; .*\n\Z")
        self.assertEqual({uv for triangle in mesh_of(result.stdout.decode()) for _, uv in triangle}, {None})

    def test_what_would_not_end_or_fit_is_refused(self):
        self.file("in.obj", wall())
        for length, arguments, message in (("0", [], "a length above 0"), ("-1m", [], "a length above 0"), ("1e-17", [], "above the floating-point resolution"),
                                           ("1e-6", ["--max-memory", "100M"], "more than 41943 triangles and could need more than 100.0 MiB"),
                                           ("nan", [], "a number in m"), ("inf", [], "a number in m"), ("1nm", [], "a number in m"), ("", [], "a number in m")):
            with self.subTest(length):
                self.assertIn(message, self.error_line("refine", "in.obj", "--max-edge", length, *arguments))

    def test_the_input_is_not_overwritten(self):
        path = self.file("in.obj", wall())
        self.error_line("refine", "in.obj", "--max-edge", "1", "-o", "in.obj")
        self.assertEqual(path.read_text(), wall())


class Transform(ObjTest):
    def corners(self, *arguments):
        self.file("in.obj", wall())
        return [corner for triangle in mesh_of(self.text_of("transform", "in.obj", *arguments)) for corner in triangle]

    def original(self):
        """The corners of the wall. A factor of 2 is exact."""
        return [(tuple(number / 2 for number in position), uv) for position, uv in self.corners("--scale", "2")]

    def check_move(self, arguments, move):
        for (position, uv), (moved, moved_uv) in zip(self.original(), self.corners(*arguments), strict=True):
            for expected, actual in zip(move(*position), moved, strict=True):
                self.assertAlmostEqual(expected, actual, delta=2e-6)
            self.assertEqual(uv, moved_uv)

    def test_moves(self):
        for arguments, move in ((["--translate", "-1,2.5,300mm"], lambda x, y, z: (x - 1, y + 2.5, z + 0.3)),
                                (["--scale", "0.5"], lambda x, y, z: (x / 2, y / 2, z / 2)),
                                (["--scale", "-1"], lambda x, y, z: (-x, -y, -z)),
                                (["--translate", "1,0,0", "--scale", "3"], lambda x, y, z: (3 * x + 1, 3 * y, 3 * z))):
            with self.subTest(arguments):
                self.check_move(arguments, move)

    def test_turns_have_the_sense_that_the_help_states(self):
        self.check_move(["--rotate", "90,0,0"], lambda x, y, z: (y, -x, z))  # +Y goes to +X
        self.check_move(["--rotate", "0,90,0"], lambda x, y, z: (x, -z, y))  # +Y goes to +Z
        self.check_move(["--rotate", "0,0,90"], lambda x, y, z: (z, y, -x))  # +Z goes to +X

    def test_turns_are_done_about_y_then_x_then_z(self):
        about_y = lambda x, y, z: (z, y, -x)
        about_x = lambda x, y, z: (x, -z, y)
        about_z = lambda x, y, z: (y, -x, z)
        self.check_move(["--rotate", "90,90,90"], lambda *p: about_z(*about_x(*about_y(*p))))
        self.check_move(["--rotate", "90,90,90", "--translate", "0,0,5"], lambda *p: [q + d for q, d in zip(about_z(*about_x(*about_y(*p))), (0, 0, 5))])

    def test_angles_take_units(self):
        self.assertEqual(self.corners("--rotate", "30,0,-45"), self.corners("--rotate", "30deg,0,-45deg"))
        for (a, _), (b, _) in zip(self.corners("--rotate", "90,0,0"), self.corners("--rotate", f"{math.pi / 2}rad,0rad,0")):
            self.assertLess(math.dist(a, b), 1e-6)

    def test_flips_turn_uv_round(self):
        for arguments, flip in ((["--flip-u"], lambda u, v: (1 - u, v)), (["--flip-v"], lambda u, v: (u, 1 - v)),
                                (["--flip-u", "--flip-v"], lambda u, v: (1 - u, 1 - v))):
            for (position, uv), (moved, flipped) in zip(self.original(), self.corners(*arguments), strict=True):
                self.assertEqual(position, moved)
                for a, b in zip(flip(*uv), flipped):
                    self.assertAlmostEqual(a, b, delta=1e-6)

    def test_corners_stay_shared(self):
        self.file("in.obj", dome())
        self.assertEqual(self.text_of("transform", "in.obj", "--rotate", "12,34,56", "--translate", "1,2,3", "--scale", "0.7", "-o", "out.obj"), "")
        self.assertEqual(self.info("out.obj")["status"], "good; everything works")
        self.assertEqual(*(self.info(name)["boundary points"] for name in ("in.obj", "out.obj")))
        self.assertEqual(len(re.findall("^v ", (self.folder / "out.obj").read_text(), re.MULTILINE)), 1 + 8 * 24)

    def test_xml_goes_in_and_out(self):
        self.text_of("transform", self.xml("in.xml"), "--translate", "1,0,0", "-o", "out.xml")
        self.text_of("transform", "out.xml", "--translate=-1,0,0", "-o", "back.obj")
        self.assertEqual([corner for triangle in mesh_of((self.folder / "back.obj").read_text()) for corner in triangle], self.original())

    def test_flips_need_uv(self):
        self.file("in.obj", wall(corner="{0}//1"))
        self.assertIn("without usable UV", self.error_line("transform", "in.obj", "--flip-u"))
        result = self.run_tool("transform", "in.obj", "--translate", "1,0,0")
        self.assertEqual(result.returncode, 0)

    def test_coordinates_that_no_file_can_hold_are_refused(self):
        self.file("in.obj", wall())
        for arguments in (["--scale", "1e37"], ["--translate", "0,2e37,0"], ["--scale", "1e300", "--translate", "1e300,0,0"]):
            self.assertIn("lead to coordinates above 1e+37", self.error_line("transform", "in.obj", *arguments))

    def test_a_scale_that_leaves_a_point_is_refused(self):
        self.file("in.obj", wall())
        self.assertIn("found --scale that makes the mesh smaller than 1e-30", self.error_line("transform", "in.obj", "--scale", "1e-60"))


def refused(name, arguments, message):
    return Case("refused_" + name, ["transform", "in.obj", *arguments], err=f"error: {message}\n", exit=2)


NOTHING = "found options that change nothing, expected --translate, --rotate, --scale, --flip-u or --flip-v with an effect"
LENGTH = "a number in m, or a length such as 6m or 236in"
ANGLES = "three angles in degrees, or with their unit, such as 90,0,-0.5rad"

add_cases(Transform, [
    refused("without_options", [], NOTHING),
    refused("without_an_effect", ["--translate", "0,-0,0", "--rotate", "0,0deg,0", "--scale", "1"], NOTHING),
    refused("scale_of_zero", ["--scale", "0"], 'found --scale "0", expected a number that is not 0'),
    refused("scale_that_is_not_finite", ["--scale", "inf"], 'found --scale "inf", expected a number that is not 0'),
    refused("translation_that_is_not_finite", ["--translate", "0,nan,0"], f'found --translate "0,nan,0", expected {LENGTH}'),
    refused("translation_of_two", ["--translate", "1,2"], 'found --translate "1,2", expected three lengths such as 0,1.5m,-2m'),
    refused("translation_of_four", ["--translate", "1,2,3,4"], 'found --translate "1,2,3,4", expected .*'),
    refused("rotation_of_two", ["--rotate", "1,2"], f'found --rotate "1,2", expected {ANGLES}'),
    refused("rotation_that_is_not_finite", ["--rotate", "1,2,inf"], f'found --rotate "1,2,inf", expected {ANGLES}'),
    refused("rotation_in_metres", ["--rotate", "1,2,3m"], f'found --rotate "1,2,3m", expected {ANGLES}'),
    Case("a_shape_is_refused", ["transform", WALL, "--scale", "2"],
         err="error: .*flat-wall.xml: found an analytic screen, class FlatScreen, expected a mesh; try: quarnscreen convert .* -o mesh.obj\n", exit=2),
    Case("an_analytic_screen_is_not_refined", ["refine", WALL, "--max-edge", "2"], err="error: .* found an analytic screen, .*\n", exit=2),
    Case("refine_needs_a_bound", ["refine", WALL], err="error: --max-edge is required .*\n", exit=2),
])


if __name__ == "__main__":
    unittest.main()
