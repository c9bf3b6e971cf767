"""Findings of check in mesh files, with their lines, and its repairs."""
import json
import random
import re
import unittest

from obj_case import ObjTest, dome, wall
from tool_case import WALL

SOUP_SIZE = 2000


def soup(count):
    """Triangles anywhere, each of which overlaps a large part of the others in UV."""
    rng = random.Random(1)
    lines = []
    for index in range(count):
        for _ in range(3):
            lines.append(f"v {index} {rng.random():.6f} {rng.random():.6f}")
            lines.append(f"vt {rng.random():.6f} {rng.random():.6f}")
    lines.append("vn 0 -1 0")
    lines += ["f " + " ".join(f"{3 * index + k}/{3 * index + k}/1" for k in (1, 2, 3)) for index in range(count)]
    return "\n".join(lines) + "\n"


def changed(text, **lines):
    """A text with other lines, given by their numbers as in L50."""
    result = text.split("\n")
    for number, line in lines.items():
        result[int(number[1:]) - 1] = line
    return "\n".join(result)


class Check(ObjTest):
    def check_file(self, text, *arguments):
        """Findings by their names, and the lines for people."""
        self.file("a.obj", text)
        result = self.run_tool("check", "a.obj", "--json", *arguments)
        document = json.loads(result.stdout)
        self.assertEqual(result.returncode, 1 if document["problems"] else 0)
        lines = self.run_tool("check", "a.obj", *arguments).stdout.decode().splitlines()
        self.assertEqual(len(lines), len(document["findings"]) + 1)
        return {finding["name"]: finding for finding in document["findings"]}, lines

    def places(self, finding):
        return [(place["triangle"], place["line"]) for place in finding["places"]]

    def test_a_good_wall_has_no_findings(self):
        self.file("a.obj", wall())
        self.assertEqual(self.text_of("check", "a.obj"), "no findings in 24 triangles\n")
        self.assertEqual(json.loads(self.text_of("check", "a.obj", "--json")),
                         {"command": "check", "screen": "a.obj", "unit": "m", "triangles": 24, "problems": 0, "findings": []})

    def test_meshes_that_the_tool_makes_have_no_findings(self):
        for shape in (["flat", "--width", "4m", "--height", "3m"], ["cylinder", "--radius", "3m", "--arc", "200deg", "--height", "2.5m"],
                      ["dome", "--radius", "6m", "--angle", "180deg"]):
            self.run_tool("make", *shape, "--grid", "20x30", "-o", "made.obj").check_returncode()
            with self.subTest(shape):
                self.assertRegex(self.text_of("check", "made.obj"), r"\Ano findings in \d+ triangles\n\Z")

    def test_what_was_found_ends_with_exit_code_1_and_an_error_line(self):
        self.file("a.obj", wall() + "f 1/1/1 1/1/1 2/2/1\n")
        result = self.run_tool("check", "a.obj")
        self.assertEqual((result.returncode, result.stderr), (1, b"error: a.obj: 1 finding, expected none\n"))
        self.assertRegex(result.stdout.decode(), r"\Aa\.obj:54: 1 triangle with zero area: .*: triangle 25 \(.*\)\n1 finding in 25 triangles\n\Z")

    def test_a_flipped_quad_is_reported_with_its_line(self):
        findings, _ = self.check_file(changed(wall(), L45="f 4/4/1 5/5/1 10/10/1 9/9/1"))
        self.assertEqual(list(findings), ["flipped-triangle"])
        self.assertEqual(self.places(findings["flipped-triangle"]), [(7, 45), (8, 45)])

    def test_a_missing_quad_is_a_hole(self):
        findings, lines = self.check_file(changed(wall(6, 5), L99="# gone"), "--unit", "ft")
        self.assertEqual(list(findings), ["hole"])
        self.assertIn("1 hole, the longest with 4 edges and 2.533 ft around", lines[0])

    def test_values_beyond_floats_are_a_finding(self):
        findings, lines = self.check_file(changed(wall(), L1="v 1e40 0 0"))
        self.assertEqual(list(findings), ["not-finite"])
        self.assertEqual(findings["not-finite"]["count"], 2)
        self.assertTrue(lines[0].startswith("a.obj:42: 2 triangles with a position or UV that is not finite"))

    def test_the_scale_and_the_unit_count(self):
        self.assertEqual(list(self.check_file(wall(), "--scale", "1000")[0]), ["implausible-size"])
        self.assertEqual(self.check_file(wall(), "--scale", "1000", "--unit", "mm")[0], {})
        self.assertIn("a scale of 1000", self.check_file(wall(), "--unit", "mm")[1][0])

    def test_positions_that_single_precision_rounds(self):
        self.file("a.obj", re.sub(r"(?m)^v (\S+)", lambda match: f"v {float(match[1]) + 540000}", wall()))
        result = self.run_tool("check", "a.obj", "--unit", "mm", "--json")
        rounded = {finding["name"]: finding for finding in json.loads(result.stdout)["findings"]}["rounded-positions"]
        self.assertRegex(rounded["text"], r"\Apositions are rounded to multiples of 0\.\d+ mm, because coordinates reach \d+ mm in a mesh of \S+ mm\Z")
        self.assertEqual(rounded["hint"], "move the origin to the mesh: quarnscreen convert a.obj --origin auto -o moved.obj")

    def test_a_map_that_is_mirrored_for_the_viewer(self):
        self.assertEqual(list(self.check_file(dome())[0]), ["mirrored-map"])
        # Seen from the other side it is right.
        self.assertEqual(list(self.check_file(wall(), "--forward", "-Y")[0]), ["mirrored-map"])

    def test_repairs_are_findings_with_their_lines(self):
        findings, lines = self.check_file(wall(corner="{0}/{0}")[:-1])
        self.assertEqual(list(findings), ["final-line-feed", "missing-normal"])
        self.assertTrue(lines[0].startswith("a.obj:53: "))
        self.assertTrue(lines[1].startswith("a.obj:42: "))
        self.assertIn("quarnscreen convert a.obj -o repaired.obj", lines[0])

    def test_fix_writes_a_text_that_loads_and_has_no_findings(self):
        self.file("a.obj", wall(corner="{0}/{0}")[:-1])
        report = self.text_of("check", "a.obj", "--fix", "-o", "b.obj")
        self.assertIn("a.obj:53: note: repaired ", report)
        self.assertTrue(report.endswith("no findings in 24 triangles\n"))
        self.assertEqual(self.text_of("check", "b.obj"), "no findings in 24 triangles\n")
        self.assertEqual(self.info("b.obj")["status"], "good; everything works")

    def test_fix_leaves_a_good_file_as_it_is(self):
        self.file("a.obj", wall())
        self.text_of("check", "a.obj", "--fix", "-o", "b.obj")
        self.assertEqual((self.folder / "b.obj").read_text(), wall())

    def test_fix_and_its_output_need_each_other_and_never_replace_the_input(self):
        self.file("a.obj", wall())
        self.assertIn("--fix requires --output", self.error_line("check", "a.obj", "--fix"))
        self.assertIn("--output requires --fix", self.error_line("check", "a.obj", "-o", "b.obj"))
        self.assertIn("a.obj", self.error_line("check", "a.obj", "--fix", "-o", "a.obj"))
        self.assertEqual((self.folder / "a.obj").read_text(), wall())

    def test_an_obj_screen_in_xml_is_checked_too(self):
        self.xml("mesh.xml", wall(corner="{0}/{0}"))
        result = self.run_tool("check", "mesh.xml")
        self.assertEqual(result.returncode, 1)
        self.assertIn("mesh.xml:42: 48 corners without a normal", result.stdout.decode())

    def test_what_is_no_mesh_is_refused(self):
        self.assertIn("found a screen without triangles, expected a mesh", self.error_line("check", WALL))
        self.file("a.obj", "# nothing\n")
        self.error_line("check", "a.obj")

    def test_a_uv_map_that_cannot_be_indexed_is_refused_by_all_but_check(self):
        self.file("a.obj", soup(SOUP_SIZE))
        for command, *arguments in (["info"], ["map", "--to", "3d"]):
            self.assertRegex(self.error_line(command, "a.obj", *arguments),
                             r"a\.obj: found a mesh whose UV index would take too long to build: (at least )?\d+ of 2000 triangles overlap "
                             r"others in UV, expected a UV map without overlaps; try: quarnscreen check a\.obj")
        self.assertIn("cannot be indexed", self.run_tool("check", "a.obj").stdout.decode())
        self.assertIn("UV index", self.error_line("info", self.xml("mesh.xml", soup(SOUP_SIZE))))

    def test_the_index_by_uv_counts_for_the_memory(self):
        self.file("a.obj", soup(200))
        self.assertRegex(self.error_line("info", "a.obj", "--max-memory", "1M"), r"UV index would need \d+\.\d MiB of memory and not 1\.0 MiB")


if __name__ == "__main__":
    unittest.main()
