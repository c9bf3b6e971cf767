"""STL files as common programs write them: which load, which are refused with a command that helps, and what it makes of them."""
import base64
import json
import struct
import unittest

from tool_case import ToolTest

# A wall of 2 by 1 m in the plane y = 0 that faces the viewer, as two triangles.
WALL = [((-1, 0, 0.5), (-1, 0, -0.5), (1, 0, -0.5)), ((-1, 0, 0.5), (1, 0, -0.5), (1, 0, 0.5))]


def record(corners, normal=(0, 0, 0), attribute=0):
    return struct.pack("<12fH", *normal, *(number for corner in corners for number in corner), attribute)


def binary(header=b"made by a program", count=None, records=None):
    records = [record(corners) for corners in WALL] if records is None else records
    return header.ljust(80, b"\0") + struct.pack("<i", len(records) if count is None else count) + b"".join(records)


def text(name="wall"):
    facets = "".join("  facet normal 0 -1 0\n    outer loop\n" + "".join(f"      vertex {x:e} {y:e} {z:e}\n" for x, y, z in corners) +
                     "    endloop\n  endfacet\n" for corners in WALL)
    return f"solid {name}\n{facets}endsolid {name}\n".encode()


LOADS = {
    "plain": binary(),
    "a_header_that_begins_with_solid": binary(b"solid exported by a CAD program"),
    "ten_triangles_behind_solid": binary(b"solid", records=[record(WALL[0])] * 10),
    "a_count_that_is_a_line_feed_in_its_second_byte": binary(b"solid", records=[record(WALL[0])] * 266),
    "colors_in_the_attribute_word": binary(records=[record(corners, attribute=0xFFFF) for corners in WALL]),
    "normals_of_other_lengths": binary(records=[record(corners, (0, -25, 0)) for corners in WALL]),
    "bytes_behind_the_last_triangle": binary() + b"\0" * 17,
}
REFUSED = {
    "a_line_feed_in_a_header_with_solid": (binary(b"solid wall\nby a program"), "found a binary STL file whose header reads as the first line of a text one"),
    "text": (text(), "found an STL file in text form"),
    "a_count_above": (binary(count=3), "found 2 triangles and a header that declares 3"),
    "a_count_of_billions": (binary(count=2**31 - 1), "found 2 triangles and a header that declares 2147483647"),
    "a_count_of_nothing": (binary(count=0), "found a header that declares no triangles"),
    "a_negative_count": (binary(count=-1), "found a header that declares no triangles"),
    "a_normal_that_is_not_finite": (binary(records=[record(WALL[0]), record(WALL[1], (0, float("nan"), 0))]), "found a normal that is not finite in triangle 2"),
}


class Stl(ToolTest):
    def info(self, name):
        return {key: value.strip() for key, value in (line.split(":", 1) for line in self.text_of("info", name).splitlines())}

    def test_binary_files_load(self):
        for name, content in LOADS.items():
            with self.subTest(name):
                self.file("a.stl", content)
                count = struct.unpack_from("<i", content, 80)[0]
                self.assertEqual(self.info("a.stl")["triangles"], str(count))
                self.assertEqual(self.info("a.stl")["type"], "class STLScreen")
                self.assertNotIn("frame", self.info("a.stl"))

    def test_the_content_decides_the_format_and_not_the_name(self):
        self.file("wall.obj", binary())
        self.assertEqual(self.info("wall.obj")["type"], "class STLScreen")

    def test_other_files_are_rejected_with_a_command_that_repairs_them(self):
        for name, (content, message) in REFUSED.items():
            with self.subTest(name):
                self.file("a.stl", content)
                result = self.run_tool("info", "a.stl")
                self.assert_one_error_line(result, 2)
                line = result.stderr.decode()
                self.assertIn(f"error: a.stl: {message}, expected ", line)
                self.assertTrue(line.endswith("; use --repair, or try: quarnscreen convert a.stl -o repaired.obj\n"), line)
                self.run_tool("convert", "a.stl", "-o", "repaired.obj").check_returncode()
                self.assertEqual(self.info("repaired.obj")["triangles"], "2")
                self.assertEqual(self.info("repaired.obj")["bounds"], "(-1, 0, -0.5) to (1, 0, 0.5) m")

    def test_a_file_that_is_cut_anywhere_is_refused_or_loads_as_it_is(self):
        whole = binary()
        for length in [*range(1, 84, 9), *range(84, len(whole), 3)]:
            with self.subTest(length):
                self.file("a.stl", whole[:length])
                result = self.run_tool("info", "a.stl")
                self.assert_one_error_line(result, 2)
                converted = self.run_tool("convert", "a.stl", "-o", "cut.obj")
                self.assertEqual(converted.returncode, 0 if length >= 134 else 2)

    def test_numbers_that_are_not_finite_are_refused(self):
        for number in (float("nan"), float("inf")):
            bad = record(((number, 0, 0), *WALL[0][1:]))
            self.file("a.stl", binary(records=[record(WALL[0]), bad]))
            result = self.run_tool("info", "a.stl")
            self.assertEqual(result.stderr, b"error: a.stl: found a number that is not finite in triangle 2, expected finite ones\n")

    def test_rays_strike_it_and_uv_is_reported_as_missing(self):
        self.file("a.stl", binary())
        rows = self.text_of("intersect", "a.stl", "-", stdin=b"0.5,-3,0.25,0.5,-2,0.25").splitlines()
        self.assertRegex(rows[1], r"\A1,hit,0\.5,0,0\.25,,,-?1,1,3\Z")
        for command in (["map", "a.stl", "--to", "3d", "-"], ["grid", "a.stl"], ["points", "a.stl"]):
            result = self.run_tool(*command, stdin=b"0.5,0.5")
            self.assertEqual(result.returncode, 0)
            self.assertEqual(result.stderr, b"warning: a.stl: the mesh has no usable UV, see quarnscreen info\n")

    def test_axes_and_scale_are_for_the_conversion(self):
        self.file("a.stl", binary())
        self.assertIn(b"for a screen that is not an OBJ file", self.run_tool("info", "a.stl", "--scale", "0.001").stderr)
        self.run_tool("convert", "a.stl", "-o", "a.obj", "--scale", "1000").check_returncode()
        self.assertEqual(self.info("a.obj")["bounds"], "(-1000, 0, -500) to (1000, 0, 500) m")

    def test_a_screen_in_xml_becomes_the_mesh_of_its_text(self):
        self.file("a.stl", text())
        self.run_tool("convert", "a.stl", "-o", "a.xml").check_returncode()
        self.assertEqual(self.info("a.xml")["type"], "class OBJScreen")

    def test_an_stl_element_is_built_though_the_factory_does_not_know_it(self):
        low = bytes(byte if byte < 0x80 else 0 for byte in binary(records=[record(((0, 0, 0), (2, 0, 0), (0, 0, 2)))]))
        element = '<ScreenGeometry ClassType="class STLScreen">{}</ScreenGeometry>'
        self.file("a.xml", element.format(base64.b64encode(low).decode()))
        self.assertEqual(self.info("a.xml")["triangles"], "1")
        self.file("a.xml", element.format(base64.b64encode(text()).decode()))
        self.assertIn(b"a.xml (STL text): found an STL file in text form", self.run_tool("info", "a.xml").stderr)
        self.run_tool("convert", "a.xml", "-o", "b.obj").check_returncode()
        self.assertEqual(self.info("b.obj")["triangles"], "2")
        self.file("a.xml", element.format(""))
        self.assertIn(b"found no STL text in the ScreenGeometry element", self.run_tool("info", "a.xml").stderr)

    def findings(self, content, *arguments):
        self.file("a.stl", content)
        document = json.loads(self.run_tool("check", "a.stl", "--json", *arguments).stdout)
        return {finding["name"]: finding for finding in document["findings"]}

    def test_check_finds_missing_uvs_as_in_an_obj_file(self):
        self.file("a.stl", binary())
        self.run_tool("convert", "a.stl", "-o", "a.obj").check_returncode()
        for name in ("a.stl", "a.obj"):
            with self.subTest(name):
                result = self.run_tool("check", name)
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stdout.decode(), rf"\A{name}(:\d+)?: 2 triangles .*; if no UV is needed, add --without-uv\)\n1 finding in 2 triangles\n\Z")
                self.assertEqual(self.text_of("check", name, "--without-uv"), "no findings in 2 triangles\n")

    def test_check_finds_what_keeps_a_file_from_loading(self):
        names = {"a_line_feed_in_a_header_with_solid": "stl-header", "text": "stl-text-form", "a_normal_that_is_not_finite": "stl-normal"}
        for name, (content, message) in REFUSED.items():
            with self.subTest(name):
                findings = self.findings(content)
                self.assertEqual(list(findings), [names.get(name, "stl-count"), "missing-uv"])
                finding = findings[names.get(name, "stl-count")]
                self.assertIn(finding["text"].split(",")[0], message)
                self.assertEqual(finding["hint"], "try: quarnscreen convert a.stl -o repaired.obj")
                self.assertEqual(self.run_tool("check", "a.stl").returncode, 1)

    def test_check_reports_triangles_of_either_form_by_their_number(self):
        self.assertEqual(self.findings(binary(records=[record(WALL[0]), record(WALL[1]), record(WALL[1])]))["duplicate-triangle"]["places"], [{"triangle": 3, "line": None}])
        flipped = text().replace(b"outer loop\n      vertex -1", b"outer loop\n      vertex 3", 1)
        self.assertEqual(self.findings(flipped)["disconnected-components"]["places"], [{"triangle": 2, "line": None}])
        bad = record(((float("inf"), 0, 0), *WALL[0][1:]))
        findings = self.findings(binary(records=[record(WALL[0]), bad, bad]))
        self.assertEqual(list(findings), ["not-finite"])
        self.assertEqual(findings["not-finite"]["count"], 2)

    def test_check_reports_where_a_file_is_longer_or_shorter_than_it_says(self):
        self.assertIn("the header declares 1 triangles; the 2 present are used", self.findings(binary(count=1))["stl-count"]["text"])
        cut = self.findings(text()[:-30])
        self.assertEqual(list(cut), ["stl-text-form", "stl-cut-off", "missing-uv"])
        self.assertEqual(cut["stl-cut-off"]["places"], [{"triangle": None, "line": 14}])

    def test_check_applies_the_scale_and_repairs_to_obj(self):
        self.assertIn("implausible-size", self.findings(binary(), "--scale", "1000"))
        self.file("a.stl", text())
        self.assertIn("note: repaired an STL file in text form", self.text_of("check", "a.stl", "--fix", "-o", "b.obj", "--without-uv"))
        self.assertEqual(self.info("b.obj")["triangles"], "2")

    def test_check_reads_the_stl_text_in_xml(self):
        self.file("a.xml", f'<ScreenGeometry ClassType="class STLScreen">{base64.b64encode(text()).decode()}</ScreenGeometry>')
        result = self.run_tool("check", "a.xml")
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"a.xml: an STL file in text form, which the other commands reject (try: quarnscreen convert a.xml", result.stdout)
        self.file("a.stl", b"solid\nendsolid\n")
        self.assertIn("found no triangle in the STL file", self.run_tool("check", "a.stl").stderr.decode())


if __name__ == "__main__":
    unittest.main()
