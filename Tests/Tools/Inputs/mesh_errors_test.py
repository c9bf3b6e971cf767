"""OBJ files that cannot be read: one line states the error, its location, and a remedy."""
import re
import unittest

from obj_case import ObjTest, wall
from tool_case import WALL

HEAD = "v 0 0 0\nv 1 0 0\nv 0 0 1\nvn 0 -1 0\n"
FACE = "f 1//1 2//1 3//1\n"
VERTEX = "expected the number of a vertex from 1 to 3, as in 1/1/1"
NORMAL = "expected the number of a normal from 1 to 1, as in 1/1/1 or 1//1"

NUMBER = "expected a number such as 1.5 or -2e-3; correct the line, or export the file again"

# name: content of the file, and what follows "error: a.obj" in the line.
REFUSED = {
    "no_line_feed": (HEAD + FACE + FACE[:-1], ":6: found a face line that ends with the file, expected a line feed after it.*"),
    "no_line_feed_after_a_joined_line": (HEAD + "f 1//1 2//1 \\\n3//1", ":5: found a face line that ends .*"),
    "no_line_feed_behind_a_word_with_f": (HEAD + FACE + "fin", ":6: found a face line that ends .*"),
    "carriage_return_without_blank_alone": (HEAD + FACE[:-1] + "\r", ":5: found a face line that ends .*"),
    "nul_in_a_face": (HEAD + "f 1//1 2//1 3//1\0\n", ":5: found a NUL byte in a face line, .*"),
    "large_coordinate": ("v 0 0 0\n" + "v 0 1e400 0\n" + HEAD + FACE, ':2: found "1e400" as a coordinate, expected a number up to 1e\\+37'),
    "large_coordinate_of_digits": ("v 0 0 " + "9" * 40 + "\n" + HEAD + FACE, ':1: found "9{40}" as a coordinate, expected .*'),
    "coordinate_just_too_large": ("v -1.00001e37 0 0\n" + HEAD + FACE, ':1: found "-1.00001e37" as a coordinate, .*'),
    "large_exponent_that_wraps": ("v 1e4294967296123 0 0\n" + HEAD + FACE, ':1: found "1e4294967296123" as a coordinate, .*'),
    "large_uv": (HEAD + "\nvt 0 0\n vt 0.5 7e38\n" + FACE, ':7: found "7e38" as a UV, expected a number up to 1e\\+37'),
    "relative_reference": (HEAD + "\nf -3//-1 -2//-1 -1//-1\n", f':6: found "-3//-1" as a corner of a face, {VERTEX}'),
    "vertex_0": (HEAD + "f 1//1 0//1 3//1\n", f':5: found "0//1" as a corner of a face, {VERTEX}'),
    "vertex_beyond": (HEAD + FACE + "f 1//1 2//1 4//1\n", f':6: found "4//1" as a corner of a face, {VERTEX}'),
    "vertex_beyond_in_a_fan": (HEAD + "f 1//1 2//1 3//1 1//1 9//1 \n", f':5: found "9//1" as a corner of a face, {VERTEX}'),
    "vertex_that_wraps": (HEAD + "f 1//1 2//1 4294967295//1\n", f':5: found "4294967295//1" as a corner of a face, {VERTEX}'),
    "normal_beyond": (HEAD + "f 1//1 2//1 3//2\n", f':5: found "3//2" as a corner of a face, {NORMAL}'),
    "no_normal_in_the_face": (HEAD + "f 1 2 3\n", f':5: found "1" as a corner of a face, {NORMAL}'),
    "uv_without_normal": (HEAD + "vt 0 0\nf 1/1 2/1 3/1\n", f':6: found "1/1" as a corner of a face, {NORMAL}'),
    "two_corners": (HEAD + "f 1//1 2//1\n", f":5: found a face with fewer than three corners, {VERTEX}"),
    "comment_behind_a_face": (HEAD + FACE[:-1] + " # a face\n", f':5: found "#" as a corner of a face, {VERTEX}'),
    "line_counted_over_joined_lines": (HEAD + "vt 0 \\\n 0\nf 1//1 2//1 \\\n9//1\n", f':8: found "9//1" as a corner of a face, {VERTEX}'),
    "decimal_comma": ("v 0 1,5 0\n" + HEAD + FACE, ':1: found "1,5" as a coordinate, expected a decimal point, as in 1\\.5; export .*'),
    "not_a_number": (HEAD + "v 0 nan 0\n" + FACE, f':5: found "nan" as a coordinate, {NUMBER}'),
    "number_with_unit": (HEAD + "v 1.5mm 0 0\n" + FACE, f':5: found "1.5mm" as a coordinate, {NUMBER}'),
    "hexadecimal_number": (HEAD + "v 0x10 0 0\n" + FACE, f':5: found "0x10" as a coordinate, {NUMBER}'),
    "indefinite_number": (HEAD + "v 0 0 1.#IND\n" + FACE, f':5: found "1.#IND" as a coordinate, {NUMBER}'),
    "infinite_number": (HEAD + "v 0 0 1.#INF \n" + FACE, f':5: found "1.#INF" as a coordinate, {NUMBER}'),
    "uv_with_decimal_comma": (HEAD + "vt 0,5 1\nf 1/1/1 2/1/1 3/1/1\n", ':5: found "0,5" as a UV, expected a decimal point, as in 0\\.5; export .*'),
    "plus_sign": (HEAD + "v +1 2 3\nf 1//1 2//1 4//1\n", ':5: found "v \\+1 2 3", expected numbers without plus signs, separated by blanks'),
    "no_vertex": ("vn 0 0 1\n" + FACE, ': found no vertex in the OBJ text, expected lines that begin with "v" and a blank'),
    "tabs": ("v\t0\t0\t0\nvn 0 0 1\n" + FACE, ": found no vertex in the OBJ text, .*"),
    "no_normal": ("v 0 0 0\n" + FACE, ': found no normal in the OBJ text, expected at least one line that begins with "vn".*'),
    "no_face": (HEAD, ': found no face in the OBJ text, expected lines that begin with "f"; export the surface with its faces'),
    "only_a_comment": ("# Wall\n", ": found no vertex in the OBJ text, .*"),
}

# Those that quarnscreen convert repairs; the others refer to missing vertices, or contain numbers that are too large.
REPAIRED = {name for name in REFUSED if name.startswith("no_line_feed")} | {
    "relative_reference", "normal_beyond", "no_normal_in_the_face", "uv_without_normal", "comment_behind_a_face",
    "carriage_return_without_blank_alone", "nul_in_a_face", "uv_with_decimal_comma", "plus_sign"}
REMEDY = "; use --repair, or try: quarnscreen convert a.obj -o repaired.obj"

# Odd texts that are read.
ACCEPTED = {
    "no_line_feed_behind_a_vertex": HEAD + FACE + "v 9 9 9",
    "carriage_return_behind_a_blank_as_the_end": HEAD + FACE[:-1] + " \r",
    "largest_coordinate": HEAD + "v 1e37 0 0\n" + FACE,
    "exponent_that_wraps_to_1": HEAD + "v 1e4294967297 0 0\n" + FACE,
    "exponent_of_nothing": HEAD + "v 0e999999 0 0\n" + FACE,
    "tiny_numbers": HEAD + "v 1e-999999 0 0\n" + FACE,
    "nul_behind_a_vertex": HEAD + "v 1 1 1\0\n" + FACE,
    "blanks_in_front": HEAD + "   v 0 0 0\n  " + FACE,
    "byte_order_mark": "\ufeff# Wall\n" + HEAD + FACE,
    "uv_that_is_no_number_and_has_no_effect": HEAD + "vt nan 0\n" + FACE,
    "normal_that_is_no_number": HEAD + "vn 0 nan 1,5\n" + FACE,
    "color_that_is_no_number": HEAD + "v 1 2 3 nan 1,5\n" + FACE,
    "joined_lines": HEAD.replace("v 1 0", "v 1 \\\n0") + FACE,
}

COMMANDS = (["info"], ["info", "--json"], ["map", "--to", "2d"], ["intersect"], ["nearest"], ["closest"], ["normal"], ["grid"], ["boundary"],
            ["points"], ["plot"])


class MeshErrors(ObjTest):
    def test_a_text_that_cannot_be_loaded_is_refused_with_its_line(self):
        for name, (content, message) in REFUSED.items():
            with self.subTest(name):
                self.file("a.obj", content)
                line = self.error_line("info", "a.obj").removesuffix("\n")
                self.assertEqual(line.endswith(REMEDY), name in REPAIRED, line)
                self.assertRegex(line.removesuffix(REMEDY), r"\Aerror: a\.obj" + message + r"\Z")

    def test_a_text_that_is_odd_but_right_is_read(self):
        for name, content in ACCEPTED.items():
            with self.subTest(name):
                self.file("a.obj", content)
                self.assertEqual(self.info("a.obj")["triangles"], "1")

    def test_every_command_refuses_alike(self):
        self.file("a.obj", wall()[:-1])
        for command, *options in COMMANDS:
            with self.subTest(command):
                self.assertIn("a.obj:53: found a face line that ends with the file", self.error_line(command, "a.obj", *options))
        self.assertIn("a.obj:53: ", self.error_line("channel", "a.obj", "-"))
        self.file("a.obj", wall().replace("v -1.0 0 1.5", "v -1,0 0 1,5"))
        for command, *options in COMMANDS:
            with self.subTest(command):
                self.assertIn('a.obj:2: found "-1,0" as a coordinate, expected a decimal point, as in -1.0', self.error_line(command, "a.obj", *options))

    def test_the_scale_counts_for_coordinates(self):
        self.file("a.obj", HEAD + "vt 1e36 0\nv 0 0 1e30\n" + FACE)
        self.run_tool("info", "a.obj", "--scale", "1e6").check_returncode()
        for scale in ("1e8", "-1e8", "1e20"):
            self.assertRegex(self.error_line("info", "a.obj", "--scale", scale), r'a\.obj:6: found "1e30" as a coordinate, expected a number up to ')

    def test_scales_and_axes_that_no_mesh_can_have(self):
        self.file("a.obj", wall())
        for scale in ("0", "much", "nan", "inf", "1e39", "1e-50", ""):
            self.assertEqual(self.error_line("info", "a.obj", "--scale", scale),
                             f'error: found --scale "{scale}", expected a nonzero number within the range of a float, such as 0.001\n')
        for axes in (["--forward", "X", "--up", "-X"], ["--forward", "Z"], ["--up", "-Y"]):
            self.assertRegex(self.error_line("info", "a.obj", *axes), "found the axes .* expected two different ones of X, Y and Z")
        self.assertRegex(self.error_line("info", "a.obj", "--up", "y"), r"--up: y not in .* \(see --help\)")

    def test_options_for_obj_files_are_refused_for_others(self):
        mesh = self.xml("mesh.xml")
        for option in (["--forward", "Y"], ["--up", "Z"], ["--scale", "1"]):
            for screen in (WALL, mesh):
                self.assertIn(": found axes or a scale for a screen that is not an OBJ file, expected them with an OBJ file only\n",
                              self.error_line("info", screen, *option))

    def test_the_memory_limit_counts_text_and_triangles(self):
        self.file("a.obj", wall(40, 40))
        self.assertRegex(self.error_line("info", "a.obj", "--max-memory", "1M"),
                         r"a\.obj: found a mesh of 3200 triangles, which may need 4\.\d MiB of memory and not 1\.0 MiB, expected a smaller one, or a larger --max-memory")
        self.assertIn("a document that may need more than 1.0 KiB", self.error_line("info", "a.obj", "--max-memory", "1K"))
        self.text_of("info", "a.obj", "--max-memory", "5M")

    def test_errors_in_xml_name_the_line_of_the_text(self):
        self.assertEqual(self.error_line("info", self.xml("mesh.xml", HEAD + "f 1 2 3\n")),
                         f'error: mesh.xml (OBJ text):5: found "1" as a corner of a face, {NORMAL}; use --repair, or try: quarnscreen convert mesh.xml -o repaired.obj\n')
        self.assertIn("mesh.xml (OBJ text):6: found a face line that ends", self.error_line("info", self.xml("mesh.xml", HEAD + "\n" + FACE[:-1])))
        self.assertIn("mesh.xml:1: found no OBJ text", self.error_line("info", self.xml("mesh.xml", "")))
        for changes, message in (({"scale": "wide"}, 'mesh.xml:5: found Scale "wide"'), ({"scale": "0"}, 'mesh.xml:5: found Scale "0"'),
                                 ({"forward": "Q"}, 'mesh.xml:1: found the axes "Q" for forward and "Z" for up'), ({"up": "-Y"}, "mesh.xml:1: found the axes ")):
            self.assertIn(message, self.error_line("info", self.xml("mesh.xml", **changes)))

    def test_nothing_of_the_file_reaches_a_terminal_unescaped(self):
        self.file("a.obj", HEAD + "f 1//1 2//1 \x1b[31m\n")
        self.assertRegex(self.error_line("info", "a.obj"), re.escape(r'found "\x1b[31m" as a corner'))


if __name__ == "__main__":
    unittest.main()
