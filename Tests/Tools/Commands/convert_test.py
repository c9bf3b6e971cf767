"""quarnscreen convert: OBJ files from any program become files that load, and screens go from one format to another."""
import json
import os
import re
import shlex
import subprocess
import unittest

from obj_case import ObjTest, dome, wall
from obj_styles import REFUSED, STYLES, text_of
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
        for name, style in STYLES.items():
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

    def test_faces_without_area_stay(self):
        self.file("a.obj", wall() + "f 1/1/1 1/1/1 2/2/1\nf 3 3 3\n")
        self.convert("a.obj", "-o", "b.obj")
        self.assertEqual(json.loads(self.run_tool("info", "b.obj", "--json").stdout)["mesh"]["triangles"], 26)


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
                           ("v 1 x 2\n" + BARE, 'a.obj:1: found "x" as a coordinate, expected "v" and three numbers'),
                           ("v 1e38 0 0\n" + BARE, 'a.obj:1: found "1e38" as a coordinate, expected a number up to 1e+37'),
                           ("v 1e60 0 0\nv 0 1e60 0\nv 0 0 0\nf 1 2 3\n", 'a.obj:1: found "1e60" as a coordinate, expected a number up to 1e+37'),
                           (TRIANGLE, 'a.obj: found no face in the OBJ text, expected lines that begin with "f"')):
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
                match = re.search(r"; try: (quarnscreen .*)\n", line)
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
