"""quarnscreen convert: OBJ files from any program become files that load, and screens go from one format to another."""
import json
import math
import os
import re
import shlex
import subprocess
import unittest

from obj_case import ObjTest, dome, wall
from obj_styles import REFUSED, STYLES, TRANSCODED, text_of
from tool_case import SCREENS, TOOL, WALL

TRIANGLE = "v 0 0 0\nv 1 0 0\nv 0 0 1\n"
RIGHT = TRIANGLE + "vn 0 -1 0\nf 1//1 2//1 3//1\n"
BARE = TRIANGLE + "f 1 2 3\n"
REPAIRED = TRIANGLE + "vn 0 -1 0\nf 1//1 2//1 3//1\n"


class ConvertTest(ObjTest):
    def convert(self, *arguments, stdin=b""):
        """Converts, and gives back what is said on standard error."""
        result = self.run_tool("convert", *arguments, stdin=stdin)
        self.assertEqual(result.returncode, 0, result.stderr.decode())
        return result.stderr.decode()

    def text(self, name):
        return (self.folder / name).read_bytes().decode()

    def json_info(self, *arguments):
        return json.loads(self.text_of("info", *arguments, "--json"))


class OtherPrograms(ConvertTest):
    def assert_is_wall(self, path, style):
        info = self.json_info(path)
        mesh = info["mesh"]
        self.assertEqual(mesh["triangles"], 24)
        self.assertAlmostEqual(mesh["area"], 12.0, places=5)
        for side, expected in (("min", (-2, 0, -1.5)), ("max", (2, 0, 1.5))):
            for number, right in zip(info["bounds"][side], expected, strict=True):
                self.assertAlmostEqual(number, right, places=5)
        self.assertEqual(mesh["status"], "ok" if style.has_uv else "no_uv")
        if style.has_uv:
            self.assertEqual(mesh["uvRange"], {"min": [0.0, 0.0], "max": [1.0, 1.0]})

    def test_there_are_more_than_a_hundred(self):
        self.assertGreater(len(STYLES), 100)
        self.assertEqual(len({text_of(style) for style in STYLES.values()}), len(STYLES))

    def test_the_files_of_all_come_through(self):
        for name, style in (STYLES | TRANSCODED).items():
            with self.subTest(name):
                self.file("in.obj", text_of(style))
                self.convert("in.obj", "-o", "out.obj")
                self.assert_is_wall("out.obj", style)

    def test_what_has_come_through_is_right(self):
        for name, style in STYLES.items():
            with self.subTest(name):
                self.file("in.obj", text_of(style))
                self.convert("in.obj", "-o", "once.obj")
                notes = self.convert("once.obj", "-o", "twice.obj")
                self.assertNotIn("repaired", notes)
                self.assertEqual((self.folder / "twice.obj").read_bytes(), (self.folder / "once.obj").read_bytes())

    def test_a_file_that_loads_comes_through_byte_for_byte(self):
        loaded = 0
        for name, style in STYLES.items():
            with self.subTest(name):
                self.file("in.obj", text_of(style))
                if self.run_tool("info", "in.obj").returncode == 0:
                    notes = self.convert("in.obj", "-o", "out.obj")
                    if "repaired" not in notes:
                        self.assertEqual((self.folder / "out.obj").read_bytes(), text_of(style))
                        loaded += 1
        self.assertGreater(loaded, 25)

    def test_what_is_refused_states_why(self):
        for name, (style, found) in REFUSED.items():
            with self.subTest(name):
                self.file("in.obj", text_of(style))
                self.assertIn(found, self.error_line("convert", "in.obj", "-o", "out.obj"))
                self.assertFalse((self.folder / "out.obj").exists())


class Convert(ConvertTest):
    def test_repairs_are_reported_with_lines(self):
        self.file("a.obj", TRIANGLE + "f -3 -2 -1\nf 1 2 -1 # last\n")
        self.assertEqual(self.convert("a.obj", "-o", "b.obj").splitlines()[:3],
                         ["note: a.obj:5: repaired 1 comment after a face",
                          "note: a.obj:4: repaired 4 corners that refer back by negative numbers",
                          "note: a.obj:4: repaired 6 corners without a normal"])
        self.assertEqual(self.text("b.obj"), TRIANGLE + "vn 0 -1 0\nf 1//1 2//1 3//1\n# last\nf 1//1 2//1 3//1\n")

    def test_a_mesh_without_uv_is_reported(self):
        self.file("a.obj", RIGHT)
        self.assertRegex(self.convert("a.obj", "-o", "b.obj"), r"\Anote: b\.obj: the file has no vt line; .*\n\Z")
        self.assertRegex(self.convert("a.obj", "-o", "-", "--to", "obj"), r"\Anote: standard output: the file has no vt line; .*\n\Z")

    def test_from_obj_to_xml_and_back_text_and_digest_stay(self):
        for name, text in (("wall", wall()), ("dome", dome()), ("windows", wall().replace("\n", "\r\n"))):
            with self.subTest(name):
                self.file("a.obj", text)
                self.assertEqual(self.convert("a.obj", "-o", "a.xml"), "")
                self.assertEqual(self.convert("a.xml", "-o", "b.obj"), "")
                self.assertEqual(self.text("b.obj"), text)
                digests = {self.json_info(path)["digest"] for path in ("a.obj", "a.xml", "b.obj")}
                self.assertEqual(len(digests), 1)

    def test_lines_that_go_on_stay_so(self):
        text = wall().replace("f 1/1/1 ", "f 1/1/1 \\\n").replace("v -2.0 0 1.5\n", "v -2.0 \\\n0 1.5\n")
        self.assertIn("\\\n", text)
        self.file("a.obj", text)
        self.convert("a.obj", "-o", "b.obj")
        self.assertEqual(self.text("b.obj"), text)
        self.assertEqual(self.json_info("a.obj")["digest"], self.json_info("b.obj")["digest"])

    def test_a_mesh_in_xml_is_repaired_too(self):
        self.xml("a.xml", BARE)
        self.assertIn("note: a.xml (OBJ text):4: repaired 3 corners without a normal\n", self.convert("a.xml", "-o", "b.xml"))
        self.assertEqual(self.json_info("b.xml")["mesh"]["triangles"], 1)

    def test_axes_and_scale_are_baked_into_obj(self):
        self.file("a.obj", wall())
        options = ["--forward", "-Z", "--up", "Y", "--scale", "0.001"]
        self.convert("a.obj", "-o", "b.obj", *options)
        queried, baked = self.json_info("a.obj", *options), self.json_info("b.obj")
        for key in ("bounds", "eyePoint", "size"):
            self.assertEqual(baked[key], queried[key])
        for key in ("triangles", "area", "status", "uvRange", "boundaryPoints"):
            self.assertEqual(baked["mesh"][key], queried["mesh"][key])

    def test_axes_and_scale_are_kept_in_xml(self):
        self.file("a.obj", wall())
        self.convert("a.obj", "-o", "a.xml", "--forward", "-Z", "--up", "Y", "--scale", "0.5")
        original, written = self.json_info("a.obj", "--forward", "-Z", "--up", "Y", "--scale", "0.5"), self.json_info("a.xml")
        for document in (original, written):
            del document["screen"]
        self.assertEqual(written, original)
        self.convert("a.xml", "-o", "b.obj")
        self.assertEqual(self.json_info("b.obj")["bounds"], original["bounds"])

    def test_shapes_become_meshes(self):
        uvs = b"0.31,0.62\n0.5,0.5\n0.03,0.98\n"
        for screen in SCREENS:
            with self.subTest(screen):
                self.assertEqual(self.convert(screen, "-o", "a.obj"), "")
                self.convert("a.obj", "-o", "a.xml")
                of_mesh, of_shape = (self.rows("map", path, "--to", "3d", stdin=uvs) for path in ("a.xml", screen))
                for row, expected in zip(of_mesh, of_shape, strict=True):
                    for axis in "xyz":
                        self.assertAlmostEqual(float(row[axis]), float(expected[axis]), delta=0.02)

    def test_a_shape_in_xml_stays_what_it_is(self):
        self.convert(WALL, "-o", "a.xml")
        self.assertEqual(self.json_info("a.xml")["digest"], self.json_info(WALL)["digest"])

    def test_the_format_is_set_by_name_or_option(self):
        self.file("a.obj", RIGHT)
        self.convert("a.obj", "-o", "B.OBJ")
        self.assertEqual(self.text("B.OBJ"), RIGHT)
        self.convert("a.obj", "-o", "b.dat", "--to", "obj")
        self.assertEqual(self.text("b.dat"), RIGHT)
        self.convert("a.obj", "-o", "c.obj", "--to", "xml")
        self.assertIn("<ScreenGeometry", self.text("c.obj"))
        for output in ("-", "b", "b.txt", "obj"):
            self.assertIn("expected a name that ends with .obj or .xml, or --to", self.error_line("convert", "a.obj", "-o", output))

    def test_the_standard_output_is_a_file(self):
        self.file("a.obj", BARE)
        result = self.run_tool("convert", "a.obj", "-o", "-", "--to", "obj")
        self.assertEqual(result.stdout.decode(), REPAIRED)
        self.assertIn(b"note: a.obj:4: repaired 3 corners without a normal\n", result.stderr)

    def test_uvs_that_do_not_exist_are_left_out_with_other_axes(self):
        self.file("a.obj", TRIANGLE + "vt 0 0\nvn 0 -1 0\nf 1/2147483648/1 2/2/1 3/1/1\n")
        self.convert("a.obj", "--forward=-X", "--up=Z", "-o", "b.obj")
        self.assertRegex(self.text("b.obj"), r"\nf 1//1 2//1 3/1/1\n\Z")

    def test_faces_without_area_stay(self):
        self.file("a.obj", wall() + "f 1/1/1 1/1/1 2/2/1\nf 3 3 3\n")
        self.convert("a.obj", "-o", "b.obj")
        self.assertEqual(json.loads(self.run_tool("info", "b.obj", "--json").stdout)["mesh"]["triangles"], 26)


FAR = ("v 512345.125 5403210.3333 312.75\nv 512355.25 5403210.25 312\nv 512345 5403215.5 322.5\n"
       "vt 0 0.25\nvt 1 0\nvt 0 1\nvn 0 -1 0\nf 1/1/1 2/2/1 3/3/1\n")
COMMENT = "# origin moved by quarnscreen: add (512350, 5403210, 320) to each position\n"


class Origin(ConvertTest):
    def positions(self, name):
        return [tuple(map(float, line.split()[1:])) for line in self.text(name).splitlines() if line.startswith("v ")]

    def test_a_mesh_far_from_its_origin_is_a_warning_with_a_remedy(self):
        self.file("a.obj", FAR)
        for command in (["info", "a.obj"], ["convert", "a.obj", "-o", "b.obj"], ["plot", "a.obj", "-o", "b.svg"]):
            with self.subTest(command):
                result = self.run_tool(*command)
                self.assertEqual(result.returncode, 0)
                self.assertIn(b"warning: a.obj: positions are rounded to multiples of 0.5, because coordinates reach 5403216 in a mesh of ", result.stderr)
                self.assertIn(b"; try: quarnscreen convert a.obj --origin auto -o moved.obj\n", result.stderr)

    def test_auto_moves_it_to_a_round_position(self):
        self.file("a.obj", FAR)
        self.assertEqual(self.convert("a.obj", "--origin", "auto", "-o", "b.obj"),
                         "note: a.obj: subtracted 512350, 5403210, 320 from the coordinates of the file; add them to positions on the screen to undo that\n")
        self.assertEqual(self.text("b.obj"), "v -4.875 0.3333 -7.25\nv 5.25 0.25 -8\nv -5 5.5 2.5\n" + FAR[FAR.index("vt"):] + COMMENT)
        self.assertEqual(self.run_tool("info", "b.obj").stderr, b"")

    def test_positions_that_are_added_back_are_those_of_the_file(self):
        self.file("a.obj", FAR)
        self.convert("a.obj", "--origin=512340,-7.5,0", "-o", "b.obj")
        moved, original = self.positions("b.obj"), ((512345.125, 5403210.3333, 312.75), (512355.25, 5403210.25, 312), (512345, 5403215.5, 322.5))
        for row, expected in zip(moved, original, strict=True):
            for number, offset, right in zip(row, (512340, -7.5, 0), expected, strict=True):
                self.assertAlmostEqual(number + offset, right, delta=0.25 if offset == -7.5 else 1e-6)

    def test_axes_and_scale_apply_to_the_origin_too(self):
        self.file("a.obj", FAR)
        options = ["--origin", "512340,5403210,310", "--forward=-Z", "--up", "Y", "--scale", "0.001"]
        notes = self.convert("a.obj", "-o", "b.obj", *options)
        self.assertIn("subtracted 512340, 5403210, 310 from the coordinates of the file; add 512.34, -0.31, 5403.21 to positions on the screen", notes)
        self.assertTrue(self.text("b.obj").endswith("# origin moved by quarnscreen: add (512.34, -0.31, 5403.21) to each position\n"))
        for number, right in zip(self.positions("b.obj")[0], (0.005125, -0.00275, 0.0003333), strict=True):
            self.assertAlmostEqual(number, right, places=9)
        self.convert("a.obj", "-o", "b.xml", *options)
        self.convert("b.xml", "-o", "c.obj")
        self.assertEqual(self.positions("c.obj"), self.positions("b.obj"))

    def test_a_mesh_at_its_origin_stays(self):
        self.file("a.obj", wall())
        self.assertEqual(self.convert("a.obj", "--origin", "auto", "-o", "b.obj"),
                         "note: a.obj: the origin was not moved\n")
        self.assertEqual(self.text("b.obj"), wall())

    def test_only_meshes_and_numbers_can_be_moved(self):
        self.assertIn("found --origin for an analytic screen, expected it with a mesh only", self.error_line("convert", WALL, "--origin", "auto", "-o", "b.obj"))
        for text in ("1,2", "1,2,3,4", "x", "1,2,nan", "1;2;3"):
            self.assertIn(f'found --origin "{text}", expected auto, or three numbers', self.error_line("convert", WALL, "--origin", text, "-o", "b.obj"))

    def test_normals_v_and_origin_in_one_run(self):
        self.file("a.obj", FAR.replace("vn 0 -1 0\n", "").replace("f 1/1/1 2/2/1 3/3/1", "f 1/1 2/2 3/3"))
        self.convert("a.obj", "--origin", "512340,5403210,310", "--v", "up", "-o", "b.obj")
        lines = self.text("b.obj").splitlines()
        self.assertEqual(lines[:6], ["v 5.125 0.3333 2.75", "v 15.25 0.25 2", "v 5 5.5 12.5", "vt 0 0.75", "vt 1 1", "vt 0 0"])
        self.assertEqual(lines[7:], ["f 1/1/1 2/2/1 3/3/1", COMMENT.replace("(512350, 5403210, 320)", "(512340, 5403210, 310)")[:-1]])
        # The normal is that of the exact positions.
        normal = [float(number) for number in lines[6].split()[1:]]
        for edge in ((10.125, -0.0833, -0.75), (-0.125, 5.1667, 9.75)):
            self.assertAlmostEqual(sum(a * b for a, b in zip(normal, edge, strict=True)), 0.0, places=5)


class VDirections(ConvertTest):
    def test_up_flips_v_in_a_mesh_that_is_read(self):
        self.file("a.obj", wall())
        self.convert("a.obj", "--v", "up", "-o", "b.obj")
        self.convert("b.obj", "--v", "up", "-o", "c.obj")
        before, after, again = (self.rows("map", name, "--to", "3d", stdin=b"0.3,0.2\n0.3,0.8\n") for name in ("a.obj", "b.obj", "c.obj"))
        for axis in "xyz":
            for i in range(2):
                self.assertAlmostEqual(float(before[i][axis]), float(after[1 - i][axis]), places=6)
                self.assertAlmostEqual(float(before[i][axis]), float(again[i][axis]), places=6)
        self.convert("a.obj", "--v", "down", "-o", "d.obj")
        self.assertEqual(self.text("d.obj"), wall())

    def test_up_flips_v_in_a_mesh_that_an_analytic_screen_becomes(self):
        self.convert(WALL, "--grid", "2x4", "-o", "a.obj")
        self.convert(WALL, "--grid", "2x4", "--v", "up", "-o", "b.obj")
        down, up = (self.rows("map", name, "--to", "3d", stdin=b"0.25,0\n") for name in ("a.obj", "b.obj"))
        self.assertEqual((down[0]["z"], up[0]["z"]), ("1.5", "-1.5"))
        self.assertEqual((down[0]["x"], up[0]["x"]), ("-1", "-1"))

    def test_make_writes_either_direction(self):
        shape = ["make", "dome", "--radius", "6m", "--angle", "180deg", "--grid", "8x16"]
        self.text_of(*shape, "--v", "up", "-o", "a.obj")
        self.text_of("make", "dome", "--radius", "6m", "--angle", "180deg", "-o", "a.xml")
        self.convert("a.xml", "--grid", "8x16", "--v", "up", "-o", "b.obj")
        self.assertEqual(self.text("a.obj"), self.text("b.obj"))
        self.assertAlmostEqual(float(self.rows("map", "a.obj", "--to", "3d", stdin=b"0.5,0.125\n")[0]["z"]), 6 * math.sin(math.pi / 16), places=5)

    def test_xml_of_analytic_screens_has_one_direction(self):
        self.assertIn("found --v up for the XML file of a screen", self.error_line("make", "flat", "--width", "4m", "--height", "3m", "--v", "up"))
        self.assertIn("found --v up for an analytic screen in XML", self.error_line("convert", WALL, "--v", "up", "-o", "b.xml"))
        self.assertIn("--v: left not in", self.error_line("convert", WALL, "--v", "left", "-o", "b.obj"))


class ConcaveFaces(ConvertTest):
    # A T whose first corner does not see all others: area 10, and 13 as a fan.
    T = ("v -1 0 0\nv 1 0 0\nv 1 0 3\nv 2 0 3\nv 2 0 4\nv -2 0 4\nv -2 0 3\nv -1 0 3\nvt 0.25 1\nvt 0.75 1\nvt 0.75 0.25\nvt 1 0.25\n"
         "vt 1 0\nvt 0 0\nvt 0 0.25\nvt 0.25 0.25\nvn 0 -1 0\nf " + " ".join(f"{k}/{k}/1" for k in (4, 5, 6, 7, 8, 1, 2, 3)) + "\n")

    def test_they_are_triangulated_without_overlap(self):
        self.file("a.obj", self.T)
        self.assertEqual(self.json_info("a.obj")["mesh"]["area"], 13.0)
        self.assertEqual(self.convert("a.obj", "-o", "b.obj"), "note: a.obj:18: repaired 1 concave face whose triangles overlap\n")
        mesh = self.json_info("b.obj")["mesh"]
        self.assertEqual((mesh["area"], mesh["triangles"], mesh["status"], mesh["boundaryPoints"]), (10.0, 6, "ok", 8))
        self.assertEqual(self.text_of("check", "b.obj"), "no findings in 6 triangles\n")
        rows = self.rows("map", "b.obj", "--to", "3d", stdin=b"0.5,0.9\n0.9,0.1\n0.1,0.9\n")
        self.assertEqual([row["status"] for row in rows], ["on_screen", "on_screen", "outside"])

    def test_check_names_face_and_line(self):
        self.file("a.obj", self.T)
        result = self.run_tool("check", "a.obj")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.decode(), "a.obj:18: 1 concave face whose triangles overlap: triangle 1 (try: quarnscreen convert a.obj -o repaired.obj)\n"
                         "1 finding in 6 triangles\n")
        self.assertIn("note: repaired 1 concave face", self.text_of("check", "a.obj", "--fix", "-o", "b.obj"))
        self.convert("a.obj", "-o", "c.obj")
        self.assertEqual(self.text("b.obj"), self.text("c.obj"))

    def test_crossed_faces_stay_and_are_stated(self):
        text = TRIANGLE + "v 1 0 1\nvn 0 -1 0\nf 1//1 2//1 3//1 4//1\n"
        self.file("a.obj", text)
        found = "1 face whose triangles overlap, because edges cross or there are more than 1000 corners"
        self.assertIn(f"warning: a.obj:6: found {found}\n", self.convert("a.obj", "-o", "b.obj"))
        self.assertEqual(self.text("b.obj"), text)
        for arguments in ([], ["--fix", "-o", "c.obj"]):
            result = self.run_tool("check", "a.obj", *arguments)
            self.assertEqual(result.returncode, 1)
            self.assertIn(f"a.obj:6: {found}: triangle 1 (divide them into triangles or quads, and export them again)\n", result.stdout.decode())


class Safety(ConvertTest):
    def test_the_input_is_never_the_output(self):
        self.file("a.obj", BARE)
        os.link(self.folder / "a.obj", self.folder / "hard.obj")
        os.symlink("a.obj", self.folder / "soft.obj")
        for name in ("a.obj", "./a.obj", "hard.obj", "soft.obj"):
            with self.subTest(name):
                self.assertIn("the output is also an input", self.error_line("convert", "a.obj", "-o", name))
                self.assertEqual(self.text("a.obj"), BARE)

    def test_a_conversion_that_fails_leaves_the_old_output_alone(self):
        for text in ("", "v 0 0 0\n", TRIANGLE + "f 1 2 9\n", "v 1e38 0 0\n" + BARE, "<a>"):
            with self.subTest(text):
                self.file("a.obj", text)
                self.file("b.obj", "old")
                self.error_line("convert", "a.obj", "-o", "b.obj")
                self.assertEqual(self.text("b.obj"), "old")
                self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["a.obj", "b.obj"])

    def test_errors_name_the_line(self):
        for text, line in ((TRIANGLE + "f 1 2 9\n", 'a.obj:4: found "9" as a corner of a face, expected the number of a vertex from 1 to 3'),
                           (TRIANGLE + "\rf 1 2 x\r", 'a.obj:5: found "x" as a corner of a face, expected a form such as 1/1/1, 1//1, 1/1 or 1'),
                           ("v 1 x 2\n" + BARE, 'a.obj:1: found "x" as a coordinate, expected a number such as 1.5 or -2e-3; correct the line, or export the file again'),
                           ("v 1 0 0\nv -1.#QNAN 2 2\n" + BARE, 'a.obj:2: found "-1.#QNAN" as a coordinate, expected a number such as 1.5 or -2e-3; correct the line, or export the file again'),
                           ("v 1 0,25 2\n" + BARE, 'a.obj:1: found "0,25" as a coordinate, expected a decimal point, as in 0.25; export the file again without decimal commas'),
                           ("v 1e38 0 0\n" + BARE, 'a.obj:1: found "1e38" as a coordinate, expected a number up to 1e+37'),
                           ("v 1e60 0 0\nv 0 1e60 0\nv 0 0 0\nf 1 2 3\n", 'a.obj:1: found "1e60" as a coordinate, expected a number up to 1e+37'),
                           (TRIANGLE, 'a.obj: found no face in the OBJ text, expected lines that begin with "f"; export the surface with its faces')):
            with self.subTest(text):
                self.file("a.obj", text)
                self.assertEqual(self.error_line("convert", "a.obj", "-o", "b.obj"), f"error: {line}\n")

    def test_what_needs_much_memory_is_refused(self):
        self.file("a.obj", wall(200, 200))
        self.assertIn("a larger --max-memory", self.error_line("convert", "a.obj", "-o", "b.obj", "--max-memory", "20M"))
        self.convert("a.obj", "-o", "b.obj", "--max-memory", "2G")
        self.assertIn("found a mesh of 33554432 triangles",
                      self.error_line("convert", WALL, "-o", "b.obj", "--grid", "4096x4096", "--max-memory", "1G"))

    def test_the_command_that_an_error_names_repairs(self):
        names = ["a.obj", "two words.obj", "it's.obj", "$HOME.obj", "a;b&c.obj", "-a.obj", "~.obj", "(1).obj", "Wände.obj", "*.obj", 'a"b`c`.obj']
        for name in names:
            with self.subTest(name):
                self.file(name, BARE)
                line = self.error_line("info", "./" + name if name.startswith("-") else name)
                match = re.search(r"; use --repair, or try: (quarnscreen .*)\n", line)
                self.assertIsNotNone(match, line)
                command = match[1].replace("quarnscreen", shlex.quote(TOOL), 1)
                subprocess.run(["sh", "-c", command], cwd=self.folder, check=True, capture_output=True, timeout=60)
                self.assertEqual(self.text("repaired.obj"), REPAIRED)
                (self.folder / "repaired.obj").unlink()

    def test_an_error_without_remedy_names_no_command(self):
        self.file("a.obj", TRIANGLE + "f 1 2 9\n")
        self.assertNotIn("try: ", self.error_line("info", "a.obj"))


class Make(ConvertTest):
    SHAPES = {
        "flat": (["--width", "4m", "--height", "3m"], "ok"),
        "cylinder": (["--radius", "3m", "--arc", "200deg", "--height", "2m"], "ok"),
        "dome": (["--radius", "6m", "--angle", "180deg"], "ok"),
        "ruled": (["--width", "4m", "--height", "2.5m", "--top-arc", "120deg", "--bottom-arc", "60deg"], "ok"),
    }

    def test_meshes_load_with_their_cells(self):
        for shape, (options, status) in self.SHAPES.items():
            with self.subTest(shape):
                self.assertEqual(self.text_of("make", shape, *options, "-o", "a.obj", "--grid", "8x24"), "")
                mesh = self.json_info("a.obj")["mesh"]
                self.assertEqual(mesh["status"], status)
                self.assertEqual(mesh["triangles"], 2 * 8 * 24 - (24 if shape == "dome" else 0))
                self.assertTrue(self.text("a.obj").endswith("\n"))

    def test_a_mesh_is_what_the_shape_converts_to(self):
        for shape, (options, _) in self.SHAPES.items():
            with self.subTest(shape):
                self.text_of("make", shape, *options, "-o", "a.xml")
                self.text_of("make", shape, *options, "-o", "a.obj", "--grid", "5x7")
                self.convert("a.xml", "-o", "b.obj", "--grid", "5x7")
                self.assertEqual(self.text("b.obj"), self.text("a.obj"))

    def test_a_grid_or_a_name_makes_a_mesh(self):
        options = ["make", *["flat"], *self.SHAPES["flat"][0]]
        self.assertIn("<ScreenGeometry", self.text_of(*options))
        self.assertRegex(self.text_of(*options, "--grid", "1x1"), r"\A# .*\n(v .*\n){4}(vt .*\n){4}vn .*\n(f .*\n){2}\Z")
        self.text_of(*options, "-o", "a.obj")
        self.assertEqual(self.json_info("a.obj")["mesh"]["triangles"], 2 * 32 * 64)

    def test_a_grid_is_two_numbers(self):
        for text in ("", "x", "8", "8x", "x8", "0x8", "8x0", "-1x8", "8x8x8", "4097x1", "8 x 8", "8X8", "99999999999x1"):
            with self.subTest(text):
                line = self.error_line("make", "flat", "--width", "4m", "--height", "3m", "--grid", text)
                self.assertIn("expected rows and columns from 1 to 4096, such as 32x64", line)


if __name__ == "__main__":
    unittest.main()
