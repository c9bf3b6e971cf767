"""--object and --list-objects: OBJ files with several objects and groups."""
import json
import unittest

from obj_case import ObjTest, wall
from repair_test import COMMANDS
from stl_test import binary
from tool_case import WALL

HEAD, FACES = wall(2, 1).split("f ", 1)
FACES = ["f " + line for line in FACES.replace("f ", "").splitlines()]
# The left half of the wall, its right half with a bad face, and a group over both. The data are lines 1 to 13.
BAD = "f 1/1/1 2/2/1 99/1/1"
TEXT = f"{HEAD}o Left half\ng walls\n{FACES[0]}\no Right\ng walls glass\n{FACES[1]}\no bad\n{BAD}\no empty\n"


class Objects(ObjTest):
    def setUp(self):
        super().setUp()
        self.file("a.obj", TEXT)

    def test_they_are_listed(self):
        self.assertEqual(self.text_of("info", "a.obj", "--list-objects"),
                         "kind    faces  vertices  line  name\n"
                         "object      1         4    14  Left half\n"
                         "group       2         6    15  walls\n"
                         "object      1         4    17  Right\n"
                         "group       1         4    18  glass\n"
                         "object      1         2    20  bad\n"
                         "object      0         0    22  empty\n")

    def test_they_are_listed_as_json(self):
        document = json.loads(self.text_of("info", "a.obj", "--list-objects", "--json"))
        self.assertEqual(document["objects"][0], {"kind": "object", "name": "Left half", "faces": 1, "vertices": 4, "line": 14})
        self.assertEqual([part["name"] for part in document["objects"]], ["Left half", "walls", "Right", "glass", "bad", "empty"])

    def test_the_list_of_a_mesh_in_xml_and_of_faces_before_any_name(self):
        self.assertEqual(self.text_of("info", self.xml("a.xml"), "--list-objects").splitlines()[1], "group     12        20    42  default")

    def test_names_reach_no_terminal_unescaped(self):
        self.file("a.obj", wall() + "o \x1b[31m\n")
        self.assertIn("  \\x1b[31m\n", self.text_of("info", "a.obj", "--list-objects"))

    def test_screens_of_other_types_have_none(self):
        self.file("a.stl", binary())
        for screen in (WALL, "a.stl"):
            self.assertIn("found a screen that is not an OBJ mesh", self.error_line("info", screen, "--list-objects"))
            self.assertIn("found the name of an object for a screen that is not an OBJ mesh", self.error_line("info", screen, "--object", "a"))
            self.assertIn("found the name of an object", self.error_line("check", screen, "--object", "a"))
        self.assertEqual(self.error_line("info", "a.obj", "--list-objects", "--object", "Right"),
                         "error: found --list-objects with --object, expected one of them\n")

    def test_one_object_is_read(self):
        self.assertIn('a.obj:21: found "99/1/1" as a corner', self.error_line("info", "a.obj"))
        info = self.info("a.obj", "--object", "Right")
        self.assertEqual((info["triangles"], info["bounds"]), ("2", "(0, 0, -1.5) to (2, 0, 1.5) m"))
        self.assertEqual(self.info("--object", "walls", "a.obj")["triangles"], "4")
        self.assertEqual(self.info("a.obj", "--object", "glass")["triangles"], "2")

    def test_several_objects_are_read(self):
        self.assertEqual(self.info("a.obj", "--object", "Left half", "--object=Right")["bounds"], "(-2, 0, -1.5) to (2, 0, 1.5) m")

    def test_every_command_that_reads_a_mesh_has_it(self):
        for command, (options, stdin) in COMMANDS.items():
            with self.subTest(command):
                result = self.run_tool(command, "a.obj", *options, "--object", "Right", stdin=stdin)
                self.assertEqual(result.returncode, 0, result.stderr.decode())

    def test_compare_has_it_for_each_file(self):
        rows = self.rows("compare", "a.obj", "a.obj", "--object", "Left half", "--object-b", "Right")
        self.assertEqual(rows[1]["max"], "2")

    def test_lines_are_those_of_the_file(self):
        self.assertIn('a.obj:21: found "99/1/1" as a corner', self.error_line("info", "a.obj", "--object", "bad"))
        self.file("b.obj", TEXT.replace(BAD, "f 1/1 2/2 4/4"))
        self.assertIn("b.obj:21: 3 corners without a normal", self.run_tool("check", "b.obj", "--object", "bad").stdout.decode())
        result = self.run_tool("info", "b.obj", "--object", "bad", "--repair")
        self.assertEqual(result.stderr.decode(), "note: b.obj:21: repaired 3 corners without a normal\n")

    def test_an_unknown_name_is_refused_with_the_nearest(self):
        self.assertEqual(self.error_line("info", "a.obj", "--object", "right"),
                         'error: a.obj: found no object or group "right", expected one of "Right", "bad", "empty", "glass", "walls" and 1 more\n')
        self.assertIn('found no face in the object or group "empty"', self.error_line("info", "a.obj", "--object", "empty"))

    def test_convert_writes_the_part_without_the_data_of_others(self):
        part = ("v 0.0 0 1.5\nv 2.0 0 1.5\nv 0.0 0 -1.5\nv 2.0 0 -1.5\nvt 0.5 0.0\nvt 1.0 0.0\nvt 0.5 1.0\nvt 1.0 1.0\nvn 0 -1 0\n"
                "o Right\ng walls glass\nf 1/1/1 3/3/1 4/4/1 2/2/1\n")
        self.text_of("convert", "a.obj", "--object", "Right", "-o", "part.obj")
        self.assertEqual((self.folder / "part.obj").read_text(), part)
        self.text_of("convert", "a.obj", "--object", "Right", "-o", "part.xml")
        self.text_of("convert", "part.xml", "-o", "again.obj")
        self.assertEqual((self.folder / "again.obj").read_text(), part)
        self.text_of("check", "a.obj", "--object", "Right", "--fix", "-o", "fixed.obj")
        self.assertEqual((self.folder / "fixed.obj").read_text(), part)
        whole, alone = (self.info(*arguments) for arguments in (["a.obj", "--object", "Right"], ["part.obj"]))
        for key in ("status", "triangles", "area", "bounds", "UV range"):
            self.assertEqual(whole[key], alone[key])


if __name__ == "__main__":
    unittest.main()
