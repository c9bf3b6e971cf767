"""--repair: each command reads a mesh as convert would, and states what it repaired."""
import json
import unittest

from obj_case import ObjTest, wall
from stl_test import REFUSED, binary, text
from tool_case import WALL

BARE = wall(corner="{0}/{0}")
REPAIR = "repaired 48 corners without a normal"
POINTS = b"0.1,0,0.2\n"

# Each command that has --repair, with what goes in.
COMMANDS = {"info": ([], b""), "map": (["--to", "3d"], b"0.5,0.25\n"), "intersect": ([], b"0.1,-3,0.2,0.1,-2,0.2\n"),
            "nearest": ([], b"0.1,-3,0.2,0,1,0\n"), "closest": ([], POINTS), "normal": ([], POINTS), "channel": (["-"], b"0.1,-3,0.2,0.1,-2,0.2\n"),
            "grid": ([], b""), "boundary": ([], b""), "points": ([], b""), "plot": ([], b""), "check": ([], b""),
            "refine": (["--max-edge", "0.3"], b""), "transform": (["--flip-u"], b"")}


class Repair(ObjTest):
    def setUp(self):
        super().setUp()
        self.file("a.obj", BARE)

    def test_every_command_answers_as_of_the_converted_file(self):
        (self.folder / "converted").mkdir()
        self.run_tool("convert", "a.obj", "-o", "converted/a.obj").check_returncode()
        for command, (arguments, stdin) in COMMANDS.items():
            with self.subTest(command):
                repaired = self.run_tool(command, "a.obj", *arguments, "--repair", stdin=stdin)
                self.assertEqual(repaired.returncode, 0, repaired.stderr.decode())
                self.assertIn(f"note: a.obj:42: {REPAIR}\n", repaired.stderr.decode())
                converted = self.run_tool(command, "converted/a.obj", *arguments, stdin=stdin)
                answer = repaired.stdout.decode()
                if command == "check":
                    answer = "".join(line for line in answer.splitlines(keepends=True) if REPAIR not in line)
                self.assertEqual(answer, converted.stdout.decode().replace("converted/a.obj", "a.obj"))

    def test_without_it_every_command_refuses_and_names_it(self):
        for command, (arguments, stdin) in COMMANDS.items():
            if command == "check":
                continue
            with self.subTest(command):
                line = self.error_line(command, "a.obj", *arguments, stdin=stdin)
                self.assertTrue(line.endswith("; use --repair, or try: quarnscreen convert a.obj -o repaired.obj\n"), line)

    def test_compare_repairs_both_files(self):
        self.file("b.obj", BARE)
        self.assertIn("--repair", self.error_line("compare", "a.obj", "b.obj"))
        result = self.run_tool("compare", "a.obj", "b.obj", "--repair")
        self.assertEqual(result.stderr.decode(), f"note: a.obj:42: {REPAIR}\nnote: b.obj:42: {REPAIR}\n")
        self.assertIn("digest,same,", result.stdout.decode())

    def test_check_lists_the_repairs_as_notes(self):
        self.assertEqual(self.run_tool("check", "a.obj").returncode, 1)
        self.assertEqual(self.run_tool("check", "a.obj", "--repair").stdout.decode(),
                         f"a.obj:42: note: {REPAIR} (geometry, order and UVs stay)\nno findings in 24 triangles\n")

    def test_json_lists_the_repairs(self):
        document = json.loads(self.run_tool("info", "a.obj", "--repair", "--json").stdout)
        self.assertEqual(document["mesh"]["repairs"], [{"name": "missing-normal", "count": 48, "line": 42, "text": "48 corners without a normal"}])

    def test_a_good_mesh_and_other_screens_stay(self):
        self.file("good.obj", wall())
        for screen in ("good.obj", self.xml("good.xml"), WALL):
            with self.subTest(screen):
                self.assertEqual(self.text_of("info", screen, "--repair"), self.text_of("info", screen))

    def test_a_mesh_in_xml_is_repaired(self):
        result = self.run_tool("info", self.xml("a.xml", BARE), "--repair")
        self.assertEqual((result.returncode, result.stderr.decode()), (0, f"note: a.xml (OBJ text):42: {REPAIR}\n"))

    def test_stl_files_of_any_form_are_read(self):
        for name, (content, _) in REFUSED.items():
            with self.subTest(name):
                self.file("a.stl", content)
                self.assertIn("; use --repair, or try: quarnscreen convert a.stl", self.error_line("info", "a.stl"))
                result = self.run_tool("info", "a.stl", "--repair")
                self.assertIn("note: a.stl: repaired ", result.stderr.decode())
                self.assertIn("triangles:       2\n", result.stdout.decode())
        self.file("a.stl", text())
        result = self.run_tool("normal", "a.stl", "--repair", "--scale", "10", stdin=b"-5,0,-3\n")
        self.assertEqual(result.stdout.decode().splitlines()[1], "-5,0,-3,found,0,-1,0")
        self.file("a.stl", binary())
        self.assertIn("class OBJScreen", self.text_of("info", "a.stl", "--repair"))

    def test_what_cannot_be_repaired_is_refused_with_the_line_of_the_file(self):
        self.file("a.obj", BARE.replace("f 1/1", "f 1/1 99/1", 1))
        line = self.error_line("info", "a.obj", "--repair")
        self.assertRegex(line, r'\Aerror: a\.obj:42: found "99/1" as a corner of a face, expected the number of a vertex from 1 to 20\n')
        self.file("a.obj", "v 0 0 0\nv 1 0 0\nv 0 0 1\nf 1 2 3 # x\nv 1e38 0 0\n")
        self.assertRegex(self.error_line("info", "a.obj", "--repair"), r'\Aerror: a\.obj:5: found "1e38"')

    def test_a_status_names_the_line_of_the_file(self):
        self.file("a.obj", BARE + "# x\nf 1/1 2/2 7/7 # one\nf 1 7 2\n")
        result = self.run_tool("info", "a.obj", "--repair")
        self.assertIn("a face has a corner without UV at line 56;", result.stdout.decode())
        result = self.run_tool("convert", "a.obj", "-o", "b.obj")
        number, = (number for number, line in enumerate((self.folder / "b.obj").read_text().splitlines(), 1) if line.startswith("f 1//"))
        self.assertGreater(number, 56)
        self.assertIn(f"b.obj: a face has a corner without UV at line {number};", result.stderr.decode())


if __name__ == "__main__":
    unittest.main()
